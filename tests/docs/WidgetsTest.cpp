#include "EditorWindow.h"

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

TEST(WidgetsGuide, ShowsAWindowThatHasAConsole)
{
    EditorWindow window;
    window.resize(400, 300);
    const QImage before = window.grab().toImage();
    window.overlay().host().setOpen(true);
    EXPECT_NE(before, window.grab().toImage());
    EXPECT_NE(nullptr, window.overlay().console()->lookupCommand(U"run"));
}

} // namespace
} // namespace zephyr::test
