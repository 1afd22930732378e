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

/// An event of the window system at a time in milliseconds.
class At : public QKeyEvent
{
public:
    At(quint64 time, QEvent::Type type, quint32 scanCode)
        : QKeyEvent(type, Qt::Key_A, Qt::NoModifier, scanCode, 0, 0)
    {
        setTimestamp(time);
    }
};

TEST(HeldKeys, TakeAReleaseAndAPressOfTheSameTimeForARepeat)
{
    HeldKeys keys;
    keys.press(At(10, QEvent::KeyPress, kSlashPlace), Taker::Console);
    keys.markAsToggle(At(10, QEvent::KeyPress, kSlashPlace));
    for (quint64 time = 20; time < 30; ++time) {
        keys.release(At(time, QEvent::KeyRelease, kSlashPlace));
        const At again(time, QEvent::KeyPress, kSlashPlace);
        EXPECT_TRUE(keys.isRepeat(again));
        EXPECT_TRUE(keys.isRepeat(again)) << "asked twice, for a shortcut and for the press";
        EXPECT_EQ(Taker::Console, keys.takerOfPress(again, Taker::Host));
        EXPECT_TRUE(keys.isHeldToggle(again));
        keys.press(again, Taker::Console);
    }
    keys.release(At(40, QEvent::KeyRelease, kSlashPlace));
    EXPECT_FALSE(keys.isRepeat(At(41, QEvent::KeyPress, kSlashPlace)));
    EXPECT_FALSE(keys.isToggleHeld());
}

TEST(HeldKeys, TakeNoOtherPressForARepeat)
{
    HeldKeys keys;
    EXPECT_FALSE(keys.isRepeat(At(10, QEvent::KeyPress, kSlashPlace)));
    keys.press(At(10, QEvent::KeyPress, kSlashPlace), Taker::Console);
    keys.release(At(20, QEvent::KeyRelease, kSlashPlace));
    EXPECT_FALSE(keys.isRepeat(At(20, QEvent::KeyPress, kOtherPlace)));
    keys.clear();
    EXPECT_FALSE(keys.isRepeat(At(20, QEvent::KeyPress, kSlashPlace)));
    keys.press(At(30, QEvent::KeyPress, 0), Taker::Console);
    keys.release(At(30, QEvent::KeyRelease, 0));
    EXPECT_FALSE(keys.isRepeat(At(30, QEvent::KeyPress, 0))) << "made up by a program";
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
