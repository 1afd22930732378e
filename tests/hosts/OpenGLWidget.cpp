// A QOpenGLWidget that binds its vertices once, in initializeGL().

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
    void initializeGL() override { mTriangle.emplace().setUp(); }

    void paintGL() override
    {
        mTriangle->bindProgram();
        test::Triangle::draw();
        mConsole.paint();
    }

private:
    std::optional<test::Triangle> mTriangle;
    console::opengl::OpenGLConsole mConsole{this};
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    Widget widget;
    widget.resize(640, 400);
    widget.show();
    return QApplication::exec();
}
