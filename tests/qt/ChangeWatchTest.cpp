#include "ChangeWatch.h"

#include "zephyr/console/Console.h"

#include <Qt>

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

TEST(ChangeWatch, SeesAChangeAtTheFirstLook)
{
    const Console console;
    ChangeWatch watch;
    EXPECT_TRUE(watch.lookForChange(console));
    EXPECT_FALSE(watch.lookForChange(console));
}

TEST(ChangeWatch, SeesLogInputCursorAndScrollPositionChange)
{
    Console console;
    console.setWindowSize({640, 100});
    for (int i = 0; i < 20; ++i) {
        console.newline();
    }
    ChangeWatch watch;
    watch.lookForChange(console);
    console.open();
    EXPECT_FALSE(watch.lookForChange(console));
    console.keyPressed(0, Qt::NoModifier, U"a");
    EXPECT_TRUE(watch.lookForChange(console));
    console.keyPressed(Qt::Key_Left, Qt::NoModifier, {});
    EXPECT_TRUE(watch.lookForChange(console));
    console.write(U"a line", Output);
    EXPECT_TRUE(watch.lookForChange(console));
    console.keyPressed(Qt::Key_PageUp, Qt::NoModifier, {});
    ASSERT_NE(0u, console.snapshot().scrollOffset());
    EXPECT_TRUE(watch.lookForChange(console));
    EXPECT_FALSE(watch.lookForChange(console));
}

TEST(ChangeWatch, HoldsTheLogAsItWasAtTheLastLook)
{
    Console console;
    ChangeWatch watch;
    EXPECT_TRUE(watch.lines().empty());
    watch.lookForChange(console);
    const std::size_t size = watch.lines().size();
    console.write(U"a line", Output);
    EXPECT_EQ(size, watch.lines().size());
    watch.lookForChange(console);
    ASSERT_EQ(size + 1, watch.lines().size());
    EXPECT_EQ(U"a line", watch.lines().back().text);
}

TEST(ChangeWatch, LooksForTheFirstTimeAgainWhenItForgot)
{
    const Console console;
    ChangeWatch watch;
    watch.lookForChange(console);
    watch.forget();
    EXPECT_TRUE(watch.lines().empty());
    EXPECT_TRUE(watch.lookForChange(console));
}

} // namespace
} // namespace zephyr::console::qt
