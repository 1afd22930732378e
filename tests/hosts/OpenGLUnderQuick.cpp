// A QQuickWindow with OpenGL by hand under its items, and the console over them.

#include "hosts/Triangle.h"
#include "zephyr/console/opengl/OpenGLConsole.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <memory>

using namespace zephyr;

class Window : public QQuickWindow
{
public:
    Window()
    {
        // The triangle ends on the render thread when the window is closed.
        setPersistentGraphics(false);
        setPersistentSceneGraph(false);
        connect(this, &QQuickWindow::sceneGraphInitialized, this, [this] { setUp(); }, Qt::DirectConnection);
        connect(
            this, &QQuickWindow::beforeRenderPassRecording, this, [this] { drawUnder(); },
            Qt::DirectConnection);
        connect(
            this, &QQuickWindow::afterRenderPassRecording, this, [this] { drawOver(); },
            Qt::DirectConnection);
        connect(
            this, &QQuickWindow::sceneGraphInvalidated, this, [this] { mTriangle.reset(); },
            Qt::DirectConnection);
    }

private:
    // These run on the render thread.

    void setUp()
    {
        beginExternalCommands();
        mTriangle = std::make_unique<test::Triangle>(); // on the thread that draws it
        mTriangle->setUp();
        endExternalCommands();
    }

    void drawUnder()
    {
        beginExternalCommands();
        const QSize pixels = size() * effectiveDevicePixelRatio();
        QOpenGLContext::currentContext()->functions()->glViewport(0, 0, pixels.width(), pixels.height());
        mTriangle->bind();
        test::Triangle::draw();
        endExternalCommands();
    }

    void drawOver()
    {
        beginExternalCommands();
        mConsole.paint(size() * effectiveDevicePixelRatio(), effectiveDevicePixelRatio());
        endExternalCommands();
    }

    std::unique_ptr<test::Triangle> mTriangle;
    console::opengl::OpenGLConsole mConsole{this};
};

int main(int argc, char** argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    const QGuiApplication application(argc, argv);
    Window window;
    window.resize(640, 400);
    window.show();
    return QGuiApplication::exec();
}
