// A console in a QOpenGLWindow, on top of what OpenGL draws by hand.

#include "zephyr/console/opengl/OpenGLConsole.h"

#include <QGuiApplication>
#include <QOpenGLFunctions>
#include <QOpenGLWindow>

#include <memory>
#include <string>

using namespace zephyr::console;

class GreetCommand : public ConsoleCommand
{
public:
    std::u32string name() const override { return U"greet"; } // greet NAME

    void execute(const ConsoleArgs& args, Console& console) override
    {
        console.writeIndented(U"Hello, " + args.subCmd() + U".", 4);
    }
};

class Window : public QOpenGLWindow
{
public:
    Window() { mConsole.console()->registerCommand(std::make_unique<GreetCommand>()); }

protected:
    void paintGL() override
    {
        context()->functions()->glClearColor(0.16f, 0.31f, 0.47f, 1.0f);
        context()->functions()->glClear(GL_COLOR_BUFFER_BIT);
        mConsole.paint();
    }

private:
    opengl::OpenGLConsole mConsole{this};
};

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    Window window;
    window.resize(640, 400);
    window.show();
    return QGuiApplication::exec();
}
