#include "support/VirtualDisplay.h"

#include <QApplication>

#include <gtest/gtest.h>

/// The tests run on a display of their own, since Qt's offscreen platform has no OpenGL without one.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const zephyr::test::VirtualDisplay display;
    qputenv("DISPLAY", display.environment().value("DISPLAY").toLatin1());
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
