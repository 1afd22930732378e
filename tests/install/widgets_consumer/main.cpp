// A host that puts a console over a widget, with the installed headers and libraries and nothing else of this tree.

#include <zephyr/console/widgets/ConsoleOverlay.h>

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(320, 200);
    auto* overlay = new zephyr::console::widgets::ConsoleOverlay(&window);
    const QImage before = window.grab().toImage();
    overlay->host().setOpen(true);
    return window.grab().toImage() != before ? 0 : 1;
}
