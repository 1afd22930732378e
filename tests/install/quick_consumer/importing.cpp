// Knows nothing of the console but the QML that imports it.

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QUrl>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine, QUrl::fromLocalFile(argv[1]));
    const std::unique_ptr<QObject> root(component.create());
    std::printf("%s\n", qPrintable(component.errorString()));
    return root != nullptr && root->property("answered").toBool() ? 0 : 1;
}
