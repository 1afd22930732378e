// A small program for tests with real key events: a window, a widget or an item that has the keyboard, with a console
// on it. Each time that what a user would see changes, it prints one line. A second argument is the text of X11's
// primary selection.

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QApplication>
#include <QClipboard>
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

/// Prints what changed, and which keys reached the window, widget or item.
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

/// Where the console is put: `events` gets the key events, and `window` is shown.
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
    window->requestActivate(); // since there is no window manager to do it
    QObject* const events = window.get();
    return {std::move(window), events};
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const std::string kind = argc > 1 ? argv[1] : "window";
    if (argc > 2) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(argv[2]), QClipboard::Selection);
    }
    const auto console = std::make_shared<Console>();
    Reporter reporter(*console);
    const Place place = makePlace(kind);
    place.events->installEventFilter(&reporter); // the console host, installed later, is asked first
    ConsoleHost host(console, place.events);
    QObject::connect(&host, &ConsoleHost::repaintNeeded, &reporter, [&] { reporter.tell(); });
    return QApplication::exec();
}
