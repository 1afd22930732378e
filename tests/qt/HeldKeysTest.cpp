#include "HeldKeys.h"

#include <QKeyEvent>

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

using Taker = HeldKeys::Taker;

constexpr quint32 kSlashPlace = 61;
constexpr quint32 kOtherPlace = 38;

QKeyEvent pressed(int key, quint32 scanCode = 0, bool isAutoRepeat = false)
{
    return {QEvent::KeyPress, key, Qt::NoModifier, scanCode, 0, 0, {}, isAutoRepeat};
}

TEST(HeldKeys, HaveNoTakerForAKeyThatIsNotHeld)
{
    EXPECT_EQ(std::nullopt, HeldKeys().takerOf(pressed(Qt::Key_A)));
}

TEST(HeldKeys, KnowWhomEachKeyWasPressedFor)
{
    HeldKeys keys;
    keys.press(pressed(Qt::Key_A), Taker::Console);
    keys.press(pressed(Qt::Key_B), Taker::Host);
    EXPECT_EQ(Taker::Console, keys.takerOf(pressed(Qt::Key_A)));
    EXPECT_EQ(Taker::Host, keys.takerOf(pressed(Qt::Key_B)));
    EXPECT_EQ(std::nullopt, keys.takerOf(pressed(Qt::Key_C)));
}

TEST(HeldKeys, TellKeysApartByTheirPlace)
{
    HeldKeys keys;
    keys.press(pressed(Qt::Key_Slash, kSlashPlace), Taker::Console);
    EXPECT_EQ(Taker::Console, keys.takerOf(pressed(Qt::Key_Question, kSlashPlace)));
    EXPECT_EQ(std::nullopt, keys.takerOf(pressed(Qt::Key_Slash, kOtherPlace)));
    EXPECT_EQ(std::nullopt, keys.takerOf(pressed(Qt::Key_Slash)));
}

TEST(HeldKeys, DoNotConfuseCodesWithPlaces)
{
    HeldKeys keys;
    keys.press(pressed(Qt::Key_Equal), Taker::Console); // whose code is kSlashPlace
    ASSERT_EQ(kSlashPlace, static_cast<quint32>(Qt::Key_Equal));
    EXPECT_EQ(std::nullopt, keys.takerOf(pressed(Qt::Key_Slash, kSlashPlace)));
}

TEST(HeldKeys, SendARepeatWhereThePressWent)
{
    HeldKeys keys;
    keys.press(pressed(Qt::Key_A), Taker::Host);
    EXPECT_EQ(Taker::Host, keys.takerOfPress(pressed(Qt::Key_A, 0, true), Taker::Console));
    EXPECT_EQ(Taker::Console, keys.takerOfPress(pressed(Qt::Key_A), Taker::Console)) << "a press of its own";
    EXPECT_EQ(Taker::Console, keys.takerOfPress(pressed(Qt::Key_B, 0, true), Taker::Console)) << "not held";
}

TEST(HeldKeys, ForgetReleasedKeys)
{
    HeldKeys keys;
    keys.press(pressed(Qt::Key_A), Taker::Console);
    keys.press(pressed(Qt::Key_B), Taker::Console);
    keys.release(pressed(Qt::Key_A));
    EXPECT_EQ(std::nullopt, keys.takerOf(pressed(Qt::Key_A)));
    EXPECT_EQ(Taker::Console, keys.takerOf(pressed(Qt::Key_B)));
    keys.clear();
    EXPECT_EQ(std::nullopt, keys.takerOf(pressed(Qt::Key_B)));
}

TEST(HeldKeys, HoldTheToggleKeyUntilItIsReleased)
{
    HeldKeys keys;
    EXPECT_FALSE(keys.isToggleHeld());
    keys.markAsToggle(pressed(Qt::Key_QuoteLeft));
    keys.release(pressed(Qt::Key_A));
    EXPECT_TRUE(keys.isToggleHeld());
    keys.release(pressed(Qt::Key_QuoteLeft));
    EXPECT_FALSE(keys.isToggleHeld());
}

TEST(HeldKeys, HoldNoToggleKeyOnceAllAreForgotten)
{
    HeldKeys keys;
    keys.markAsToggle(pressed(Qt::Key_QuoteLeft));
    keys.clear();
    EXPECT_FALSE(keys.isToggleHeld());
}

} // namespace
} // namespace zephyr::console::qt
