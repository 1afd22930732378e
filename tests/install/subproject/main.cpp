// Pastes into a console and compares the text with the argument, which shows whose clipboard the console uses.

#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QRasterWindow>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const auto console = std::make_shared<zephyr::console::Console>();
    QRasterWindow window;
    zephyr::console::qt::ConsoleHost host(console, &window);
    host.setOpen(true);

    QGuiApplication::clipboard()->setText("system");
    console->keyPressed(Qt::Key_V, Qt::ControlModifier, U"");
    const QString pasted = QString::fromStdU32String(console->activeInput());
    std::printf("pasted: %s\n", qPrintable(pasted));
    return argc == 2 && pasted == argv[1] ? 0 : 1;
}
