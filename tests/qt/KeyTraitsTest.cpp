#include "zephyr/console/qt/KeyTraits.h"

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

QKeyEvent press(quint32 nativeModifiers, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return {QEvent::KeyPress, Qt::Key_Q, modifiers, 24, 0, nativeModifiers};
}

TEST(IsDeadKey, IsTrueFromTheFirstToTheLastOfThem)
{
    EXPECT_FALSE(isDeadKey(Qt::Key_Dead_Grave - 1));
    EXPECT_TRUE(isDeadKey(Qt::Key_Dead_Grave));
    EXPECT_TRUE(isDeadKey(Qt::Key_Dead_Circumflex));
    EXPECT_TRUE(isDeadKey(Qt::Key_Dead_Longsolidusoverlay));
    EXPECT_FALSE(isDeadKey(Qt::Key_Dead_Longsolidusoverlay + 1));
}

TEST(IsDeadKey, IsFalseForTheKeysThatTypeTheSameSigns)
{
    for (const int key : {int(Qt::Key_QuoteLeft), int(Qt::Key_AsciiCircum), int(Qt::Key_AsciiTilde), 0}) {
        EXPECT_FALSE(isDeadKey(key)) << key;
    }
}

TEST(HasAltGr, IsTrueWhereMod5IsAmongTheNativeModifiers)
{
    EXPECT_TRUE(hasAltGr(press(0x80)));
    EXPECT_TRUE(hasAltGr(press(0x80 | 0x01)));
}

TEST(HasAltGr, IsFalseForTheModifiersThatQtTranslates)
{
    EXPECT_FALSE(hasAltGr(press(0)));
    EXPECT_FALSE(hasAltGr(press(0x7F, Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)));
}

} // namespace
} // namespace zephyr::console::qt
