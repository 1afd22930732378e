#include "KeyText.h"

#include <QKeyEvent>
#include <QString>

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

std::u32string typedWith(Qt::KeyboardModifiers modifiers)
{
    return typedText(QKeyEvent(QEvent::KeyPress, Qt::Key_At, modifiers, "@"));
}

TEST(TypedText, IsInCodePoints)
{
    EXPECT_EQ(U"a\u0301\U0001F600", typedText(QString::fromUtf8("a\u0301\U0001F600")));
    EXPECT_EQ(U"", typedText(QString()));
}

TEST(TypedText, LeavesOutControlCharacters)
{
    EXPECT_EQ(U"xy", typedText(QString("\x1bx\n\t\r\x7f") + QChar(0x9b) + "y"));
}

TEST(TypedText, IsEmptyForAKeyPressedWithControlOrMeta)
{
    EXPECT_EQ(U"", typedWith(Qt::ControlModifier));
    EXPECT_EQ(U"", typedWith(Qt::ControlModifier | Qt::ShiftModifier));
    EXPECT_EQ(U"", typedWith(Qt::MetaModifier));
    EXPECT_EQ(U"", typedWith(Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

TEST(TypedText, IsWhatAKeyTypesWithShiftAltOrAltGr)
{
    EXPECT_EQ(U"@", typedWith(Qt::NoModifier));
    EXPECT_EQ(U"@", typedWith(Qt::ShiftModifier));
    EXPECT_EQ(U"@", typedWith(Qt::AltModifier));
    EXPECT_EQ(U"@", typedWith(Qt::ControlModifier | Qt::AltModifier)); // AltGr on some platforms
}

} // namespace
} // namespace zephyr::console::qt
