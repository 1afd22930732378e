#include "KeyText.h"

#include <QKeyEvent>
#include <QString>

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

constexpr quint32 kAltGr = 0x80; // Mod5, in X11's state

std::u32string typedWith(Qt::KeyboardModifiers modifiers, quint32 nativeModifiers = 0)
{
    return typedText(QKeyEvent(QEvent::KeyPress, Qt::Key_At, modifiers, 24, 0, nativeModifiers, "@"));
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

TEST(TypedText, IsWhatAKeyTypesWithShiftOrAltGr)
{
    EXPECT_EQ(U"@", typedWith(Qt::NoModifier));
    EXPECT_EQ(U"@", typedWith(Qt::ShiftModifier));
    EXPECT_EQ(U"@", typedWith(Qt::NoModifier, kAltGr));
    EXPECT_EQ(U"@", typedWith(Qt::AltModifier, kAltGr));
    EXPECT_EQ(U"@", typedWith(Qt::ControlModifier | Qt::AltModifier)); // AltGr on some platforms
}

TEST(TypedText, WithAltIsTheHostsMenusButForTheOptionKeyThatTypesAccents)
{
#ifdef Q_OS_MACOS
    const std::u32string typed = U"@";
#else
    const std::u32string typed;
#endif
    EXPECT_EQ(typed, typedWith(Qt::AltModifier));
    EXPECT_EQ(typed, typedWith(Qt::AltModifier | Qt::ShiftModifier));
}

} // namespace
} // namespace zephyr::console::qt
