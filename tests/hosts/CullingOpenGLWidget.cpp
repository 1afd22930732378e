// A QOpenGLWidget in a core profile that leaves all its tests and masks on, as a renderer of three dimensions does.

#include "hosts/Triangle.h"
#include "zephyr/console/opengl/OpenGLConsole.h"

#include <QApplication>
#include <QOpenGLWidget>

#include <optional>

using namespace zephyr;

class Widget : public QOpenGLWidget
{
public:
    ~Widget() override
    {
        makeCurrent();
        mTriangle.reset();
        doneCurrent();
    }

protected:
    void initializeGL() override
    {
        mTriangle.emplace().setUp();
        QOpenGLFunctions& gl = *context()->functions();
        gl.glEnable(GL_CULL_FACE);
        gl.glFrontFace(GL_CW);
        gl.glEnable(GL_DEPTH_TEST);
        gl.glDepthFunc(GL_LESS);
        gl.glEnable(GL_SCISSOR_TEST);
    }

    void paintGL() override
    {
        const QSize pixels = size() * devicePixelRatio();
        QOpenGLFunctions& gl = *context()->functions();
        gl.glScissor(0, 0, pixels.width(), pixels.height());
        gl.glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        mTriangle->bindProgram();
        test::Triangle::draw();
        gl.glScissor(10, 10, 30, 20); // what the last object of a scene may leave
        gl.glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        mConsole.paint();
    }

private:
    std::optional<test::Triangle> mTriangle;
    console::opengl::OpenGLConsole mConsole{this};
};

int main(int argc, char** argv)
{
    QSurfaceFormat format;
    format.setVersion(3, 2);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    QSurfaceFormat::setDefaultFormat(format);
    const QApplication application(argc, argv);
    Widget widget;
    widget.resize(640, 400);
    widget.show();
    return QApplication::exec();
}
