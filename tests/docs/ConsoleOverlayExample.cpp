#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <gtest/gtest.h>

namespace zephyr::console::widgets {
namespace {

TEST(ConsoleOverlayExample, PutsAConsoleOverAWindow)
{
    QWidget window;
#include "ConsoleOverlay.inc"
    auto* overlay = window.findChild<ConsoleOverlay*>();
    ASSERT_NE(nullptr, overlay);
    const QImage before = window.grab().toImage();
    overlay->host().setOpen(true);
    EXPECT_NE(before, window.grab().toImage());
}

} // namespace
} // namespace zephyr::console::widgets
