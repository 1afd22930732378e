#include "support/VirtualDisplay.h"
#include "support/WindowManager.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <optional>

// On the platform "xcb" the tests run on a display of their own with a window manager.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    std::optional<zephyr::test::VirtualDisplay> display;
    std::optional<zephyr::test::WindowManager> windowManager;
    if (qgetenv("QT_QPA_PLATFORM") == "xcb") {
        display.emplace();
        qputenv("DISPLAY", display->environment().value("DISPLAY").toLatin1());
        windowManager.emplace(*display, OPENBOX_PROGRAM);
    }
    const QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0); // so that two pictures of one editor are equal
    return RUN_ALL_TESTS();
}
