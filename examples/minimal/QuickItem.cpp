// A console in a Qt Quick item, which paints on the scene graph's render thread.

#include "zephyr/console/qt/ConsoleHost.h"

#include <QGuiApplication>
#include <QPainter>
#include <QQuickPaintedItem>
#include <QQuickWindow>

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

class Item : public QQuickPaintedItem
{
public:
    explicit Item(QQuickItem* parent) : QQuickPaintedItem(parent)
    {
        setFillColor(QColor(40, 80, 120));
        setFocus(true);
        mConsole->registerCommand(std::make_unique<GreetCommand>());
        connect(&mHost, &qt::ConsoleHost::repaintNeeded, this, [this] { update(); });
    }

    // Called on the render thread while the GUI thread waits, so that the item and its host outlive the call.
    void paint(QPainter* painter) override { mHost.paint(*painter); }

private:
    std::shared_ptr<Console> mConsole = std::make_shared<Console>();
    qt::ConsoleHost mHost{mConsole, this};
};

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    QQuickWindow window;
    Item item(window.contentItem());
    const auto fill = [&] { item.setSize(window.size()); };
    QObject::connect(&window, &QQuickWindow::widthChanged, &item, fill);
    QObject::connect(&window, &QQuickWindow::heightChanged, &item, fill);
    window.resize(640, 400);
    window.show();
    return QGuiApplication::exec();
}
