// A console host in programs without windows: without an application object, and with a QCoreApplication.

#include "support/ConsoleDriver.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QObject>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace zephyr::test {
namespace {

using console::Console;
using console::qt::ConsoleHost;

/// Opens the console, types "ab" by events that `events` gets, and copies the log.
void use(ConsoleHost& host, QObject& events)
{
    host.setOpen(true);
    for (const char* const text : {"a", "b"}) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&events, &event);
    }
    host.copyLog();
}

TEST(ConsoleHostWithoutAnApplication, OpensAndCloses)
{
    const auto console = std::make_shared<Console>();
    QObject events;
    ConsoleHost host(console, &events);
    host.setOpen(true);
    EXPECT_TRUE(console->isOpen());
    host.copyLog();
    host.setOpen(false);
    EXPECT_FALSE(console->isOpen());
}

TEST(ConsoleHostWithoutWindows, TakesTheKeysOfAnyObject)
{
    int count = 1;
    std::string name = "program";
    char* arguments[] = {name.data(), nullptr};
    const QCoreApplication application(count, arguments);
    const auto console = std::make_shared<Console>();
    QObject events;
    ConsoleHost host(console, &events);
    use(host, events);
    EXPECT_EQ(ConsoleDriver(*console).input(), "ab");
}

} // namespace
} // namespace zephyr::test
