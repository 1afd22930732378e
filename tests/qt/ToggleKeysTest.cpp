#include "zephyr/console/qt/ToggleKeys.h"

#include <QKeyEvent>

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

constexpr quint32 kKeyLeftOfOne = ToggleKeys::kKeyLeftOfOne;
constexpr quint32 kAnotherKey = 24;
constexpr quint32 kAltGr = 0x80; // Mod5, in X11's state

QKeyEvent press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, quint32 scanCode = kAnotherKey,
                quint32 nativeModifiers = 0)
{
    return {QEvent::KeyPress, key, modifiers, scanCode, 0, nativeModifiers};
}

TEST(ToggleKeys, TakeTheBackQuoteWhereverItIsByDefault)
{
    EXPECT_TRUE(ToggleKeys().matches(press(Qt::Key_QuoteLeft)));
    EXPECT_TRUE(ToggleKeys().matches(press(Qt::Key_QuoteLeft, Qt::ShiftModifier)));
    EXPECT_TRUE(ToggleKeys().matches(press(Qt::Key_QuoteLeft, Qt::NoModifier, kAnotherKey, kAltGr)));
    EXPECT_FALSE(ToggleKeys().matches(press(Qt::Key_A)));
    EXPECT_FALSE(ToggleKeys().matches(press(Qt::Key_Escape)));
}

TEST(ToggleKeys, LeaveShortcutsWithTheSameKeyToTheHost)
{
    for (const auto modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
        for (const quint32 place : {kKeyLeftOfOne, kAnotherKey}) {
            EXPECT_FALSE(ToggleKeys().matches(press(Qt::Key_QuoteLeft, modifier, place))) << modifier;
            EXPECT_FALSE(ToggleKeys().matches(press(Qt::Key_QuoteLeft, modifier | Qt::ShiftModifier, place)));
        }
        EXPECT_FALSE(ToggleKeys({Qt::Key_F4}, {}).matches(press(Qt::Key_F4, modifier))) << modifier;
    }
}

TEST(ToggleKeys, TakeWhateverTheKeyLeftOfOneSendsByDefault)
{
    for (const int key : {0x005E, int(Qt::Key_Dead_Circumflex), 0x00B2, 0x00BA, 0x0027, 0x00A7, 0}) {
        EXPECT_TRUE(ToggleKeys().matches(press(key, Qt::NoModifier, kKeyLeftOfOne))) << key;
    }
}

TEST(ToggleKeys, LeaveAloneWhatTheKeyLeftOfOneTypesWithAModifier)
{
    for (const auto modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
        EXPECT_FALSE(ToggleKeys().matches(press(Qt::Key_degree, modifier, kKeyLeftOfOne))) << modifier;
    }
    EXPECT_FALSE(ToggleKeys().matches(press(Qt::Key_paragraph, Qt::NoModifier, kKeyLeftOfOne, kAltGr)));
}

TEST(ToggleKeys, TakeADeadKeyElsewhereForAnAccent)
{
    EXPECT_FALSE(ToggleKeys().matches(press(Qt::Key_Dead_Circumflex)));
    EXPECT_FALSE(ToggleKeys().matches(press(Qt::Key_Dead_Grave)));
}

TEST(ToggleKeys, TypeWhileOpenWhatALineNeeds)
{
    const auto types = [](const QString& text, int key = 0) {
        return ToggleKeys().typesWhileOpen(
            QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, kKeyLeftOfOne, 0, 0, text));
    };
    for (const char* const needed : {"0", ";", "ё", "a", "ϊ"}) {
        EXPECT_TRUE(types(QString::fromUtf8(needed))) << needed;
    }
    for (const char* const other : {"", "^", "²", "º", "'", "§", "½", "\x1b"}) {
        EXPECT_FALSE(types(QString::fromUtf8(other))) << other;
    }
    EXPECT_FALSE(types("`", Qt::Key_QuoteLeft));
    EXPECT_FALSE(
        ToggleKeys({Qt::Key_A}, {})
            .typesWhileOpen(QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, kKeyLeftOfOne, 0, 0, "a")))
        << "a key that the host chose";
    EXPECT_FALSE(ToggleKeys().typesWhileOpen(
        QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::ShiftModifier, kKeyLeftOfOne, 0, 0, "0")));
}

TEST(ToggleKeys, AreTheHostsToChoose)
{
    const ToggleKeys keys({Qt::Key_F12}, {kAnotherKey});
    EXPECT_TRUE(keys.matches(press(Qt::Key_F12, Qt::NoModifier, 96)));
    EXPECT_TRUE(keys.matches(press(Qt::Key_F12, Qt::ShiftModifier, 96)));
    EXPECT_TRUE(keys.matches(press(Qt::Key_Q, Qt::NoModifier, kAnotherKey)));
    EXPECT_FALSE(keys.matches(press(Qt::Key_Q, Qt::ShiftModifier, kAnotherKey)));
    EXPECT_FALSE(keys.matches(press(Qt::Key_QuoteLeft, Qt::NoModifier, kKeyLeftOfOne)));
}

TEST(ToggleKeys, AlwaysTakeShiftEscape)
{
    for (const ToggleKeys& keys : {ToggleKeys(), ToggleKeys({}, {}), ToggleKeys({Qt::Key_F12}, {})}) {
        EXPECT_TRUE(keys.matches(press(Qt::Key_Escape, Qt::ShiftModifier)));
        EXPECT_FALSE(keys.matches(press(Qt::Key_Escape)));
        EXPECT_FALSE(keys.matches(press(Qt::Key_Escape, Qt::ShiftModifier | Qt::ControlModifier)));
    }
}

} // namespace
} // namespace zephyr::console::qt
