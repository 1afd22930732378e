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

/// A console with a page and more lines than that.
void fill(Console& console)
{
    console.setWindowSize({640, 100});
    for (int i = 0; i < 20; ++i) {
        console.newline();
    }
}

TEST(ChangeWatch, SeesLogInputAndCursorChange)
{
    Console console;
    fill(console);
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
    EXPECT_FALSE(watch.lookForChange(console));
}

TEST(ChangeWatch, SeesTheScrollPositionChangeOnlyWhereItIsAskedFor)
{
    Console console;
    fill(console);
    console.open();
    ChangeWatch watch;
    watch.lookForChange(console);
    console.keyPressed(Qt::Key_PageUp, Qt::NoModifier, {});
    ASSERT_NE(0u, console.snapshot().scrollOffset());
    EXPECT_FALSE(watch.lookForChange(console));
    EXPECT_TRUE(watch.lookForChangeOrScroll(console));
    EXPECT_FALSE(watch.lookForChangeOrScroll(console));
}

TEST(ChangeWatch, LooksForTheFirstTimeAgainWhenItForgot)
{
    const Console console;
    ChangeWatch watch;
    watch.lookForChange(console);
    watch.forget();
    EXPECT_TRUE(watch.lookForChange(console));
}

} // namespace
} // namespace zephyr::console::qt
