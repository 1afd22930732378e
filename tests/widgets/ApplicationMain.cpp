#include "support/VirtualDisplay.h"

#include <QApplication>
#include <QProcess>

#include <gtest/gtest.h>

#include <optional>

// On the platform "xcb" the tests run on a display of their own with a window manager.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    std::optional<zephyr::test::VirtualDisplay> display;
    QProcess windowManager;
    if (qgetenv("QT_QPA_PLATFORM") == "xcb") {
        display.emplace();
        qputenv("DISPLAY", display->environment().value("DISPLAY").toLatin1());
        windowManager.setProcessEnvironment(display->environment());
        windowManager.start(OPENBOX_PROGRAM, {});
        while (display->answerOf(XDOTOOL_PROGRAM, {"get_num_desktops"}).toInt() == 0) {
            // the window manager isn't ready yet
        }
    }
    const QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0); // so that two pictures of one editor are equal
    const int result = RUN_ALL_TESTS();
    windowManager.kill();
    windowManager.waitForFinished();
    return result;
}
