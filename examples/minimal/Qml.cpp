// Shows Qml.qml, which has a console in it. The program is linked with Zephyr::ConsoleQuick, and that is all it needs.

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QQmlApplicationEngine engine(QStringLiteral("qrc:/Qml.qml"));
    return QGuiApplication::exec();
}
