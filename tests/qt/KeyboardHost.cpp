// A small host for tests with real key events: a window, a widget or an item that has the keyboard, with a console on it.
// Standard output tells what a user would see: one line whenever it changes.

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRasterWindow>
#include <QWidget>

#include <iostream>
#include <memory>
#include <string>

namespace {

using zephyr::StringUtil;
using zephyr::console::Console;
using zephyr::console::qt::ConsoleHost;

/// Says what changed, and which keys the host itself got.
class Reporter : public QObject
{
public:
    explicit Reporter(const Console& console) : mConsole(console) {}

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn) {
            std::cout << "ready" << std::endl;
        }
        if (event->type() == QEvent::KeyPress && !static_cast<QKeyEvent*>(event)->text().isEmpty()) {
            std::cout << "host got " << static_cast<QKeyEvent*>(event)->text().toStdString() << std::endl;
        }
        return false;
    }

    void tell()
    {
        const std::string state =
            mConsole.isOpen() ? "open: " + StringUtil::toString(mConsole.activeInput()) : "closed";
        if (state != mTold) {
            std::cout << state << std::endl;
            mTold = state;
        }
    }

private:
    const Console& mConsole;
    std::string mTold;
};

/// A host's window: `place` is the object that gets the key events, `window` what is shown.
struct Place
{
    std::unique_ptr<QObject> window;
    QObject* events = nullptr;
};

Place makePlace(const std::string& kind)
{
    if (kind == "widget") {
        auto widget = std::make_unique<QWidget>();
        widget->setFocusPolicy(Qt::StrongFocus);
        widget->show();
        widget->activateWindow();
        QObject* const events = widget.get();
        return {std::move(widget), events};
    }
    if (kind == "item") {
        auto window = std::make_unique<QQuickWindow>();
        window->resize(400, 300);
        auto* item = new QQuickItem(window->contentItem());
        item->setSize(QSizeF(400, 300));
        item->setFocus(true);
        window->show();
        window->requestActivate();
        return {std::move(window), item};
    }
    auto window = std::make_unique<QRasterWindow>();
    window->resize(400, 300);
    window->show();
    window->requestActivate(); // as no window manager is there to do
    QObject* const events = window.get();
    return {std::move(window), events};
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const std::string kind = argc > 1 ? argv[1] : "window";
    const auto console = std::make_shared<Console>();
    Reporter reporter(*console);
    const Place place = makePlace(kind);
    place.events->installEventFilter(&reporter); // asked after the kit
    ConsoleHost host(console, place.events);
    QObject::connect(&host, &ConsoleHost::repaintNeeded, &reporter, [&] { reporter.tell(); });
    return QApplication::exec();
}
