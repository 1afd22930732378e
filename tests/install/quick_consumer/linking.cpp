// Hands a console over to QML, whose commands it then runs.

#include <zephyr/console/Console.h>
#include <zephyr/console/quick/ConsoleHandle.h>

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QUrl>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const auto console = std::make_shared<zephyr::console::Console>();
    zephyr::console::quick::ConsoleHandle handle(console);
    QQmlEngine engine;
    engine.rootContext()->setContextProperty("appConsole", &handle);
    QQmlComponent component(&engine, QUrl::fromLocalFile(argv[1]));
    const std::unique_ptr<QObject> root(component.create());
    std::printf("%s\n", qPrintable(component.errorString()));
    return root != nullptr && console->lookupCommand(U"pause") != nullptr ? 0 : 1;
}
