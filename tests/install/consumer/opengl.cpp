// Puts a console that is drawn with OpenGL into a window. Fails if the component is not whole.

#include <zephyr/console/opengl/OpenGLConsole.h>

#include <QGuiApplication>
#include <QWindow>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    QWindow window;
    zephyr::console::opengl::OpenGLConsole console(&window);
    console.setOpen(true);
    console.paint(); // warns that no context is current
    return console.isOpen() ? 0 : 1;
}
