#include "zephyr/common/Clipboard.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

using zephyr::Clipboard;

TEST(ClipboardWithoutApplication, IsEmptyWithoutAnyApplicationObject)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_EQ(Clipboard::text(), U"");
}

TEST(ClipboardWithoutApplication, IsEmptyWithAnApplicationObjectThatHasNoClipboard)
{
    int argumentCount = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    const QCoreApplication application(argumentCount, arguments);
    EXPECT_EQ(Clipboard::text(), U"");
}

} // namespace
