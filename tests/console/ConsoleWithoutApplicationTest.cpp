// What a program without a QGuiApplication, such as a batch run, can do with a console.

#include "support/ConsoleDriver.h"

#include <gtest/gtest.h>

namespace zephyr::console {
namespace {

TEST(ConsoleWithoutApplication, RunsLinesAndScrollsWithoutAWindowSize)
{
    Console console;
    test::ConsoleDriver user(console);
    console.open();
    user.type("alias a help\na\n");
    EXPECT_EQ(user.log().back(), "");
    EXPECT_FALSE(console.lookupAlias(U"a") == nullptr);

    EXPECT_TRUE(console.mouseWheel(Angle(20), Angle(0)));
    EXPECT_EQ(console.snapshot().scrollOffset(), 2U);
    EXPECT_TRUE(user.press(Qt::Key_PageUp));
    EXPECT_EQ(console.snapshot().scrollOffset(), 2U); // a page of no lines
}

} // namespace
} // namespace zephyr::console
