// A window that a thread of its own draws all the time, with a context of its own.

#include "hosts/Triangle.h"
#include "zephyr/console/opengl/OpenGLConsole.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QThread>
#include <QWindow>

#include <atomic>
#include <memory>

using namespace zephyr;

class Window : public QWindow
{
public:
    Window() { setSurfaceType(QSurface::OpenGLSurface); }

    ~Window() override { end(); }

protected:
    void exposeEvent(QExposeEvent*) override
    {
        if (isExposed() && !mThread) {
            mThread.reset(QThread::create([this] { draw(); }));
            mThread->start();
        }
    }

    void resizeEvent(QResizeEvent*) override { mPixels = size() * devicePixelRatio(); }

    void closeEvent(QCloseEvent*) override { end(); } // while there is a surface to draw on

private:
    void end()
    {
        mIsRunning = false;
        if (mThread) {
            mThread->wait();
        }
    }

    void draw()
    {
        QOpenGLContext context;
        context.create();
        context.makeCurrent(this);
        test::Triangle triangle;
        triangle.setUp();
        while (mIsRunning) {
            const QSize pixels = mPixels;
            context.functions()->glViewport(0, 0, pixels.width(), pixels.height());
            test::Triangle::draw();
            mConsole.paint();
            context.swapBuffers(this);
        }
    }

    std::atomic<bool> mIsRunning{true};
    std::atomic<QSize> mPixels;
    std::unique_ptr<QThread> mThread;
    console::opengl::OpenGLConsole mConsole{this};
};

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    Window window;
    window.resize(640, 400);
    window.show();
    return QGuiApplication::exec();
}
