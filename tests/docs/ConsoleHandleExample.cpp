#include "zephyr/console/quick/ConsoleHandle.h"

#include <QQmlApplicationEngine>
#include <QQmlComponent>

#include <gtest/gtest.h>

namespace zephyr::console::quick {
namespace {

TEST(ConsoleHandleExample, HandsTheConsoleToQml)
{
    QQmlApplicationEngine engine;
#include "ConsoleHandle.inc"
    engine.loadData("import QtQml; import Zephyr.Console\n"
                    "QtObject { id: root; required property ConsoleHandle appConsole\n"
                    "property Command command: Command { name: 'pause'; handle: root.appConsole } }");
    ASSERT_EQ(1, engine.rootObjects().size());
    EXPECT_NE(nullptr, console->lookupCommand(U"pause"));
}

} // namespace
} // namespace zephyr::console::quick
