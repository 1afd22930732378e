#include "qt/VirtualKeyboard.h"

#include <gtest/gtest.h>

#include <ostream>

namespace zephyr::test {
namespace {

// Key codes. Each stands for a place on the keyboard.
const char* const kLeftOfOne = "49";
const char* const kS = "39"; // types s on each of these layouts
const char* const kShift = "50";
const char* const kRightAlt = "108";

/// A layout, the keys for an accented letter on it, and the letter.
struct Keyboard
{
    const char* name;
    QStringList layout; // for setxkbmap
    QStringList accent; // for xdotool
    const char* typed;
};

void PrintTo(const Keyboard& keyboard, std::ostream* stream) { *stream << keyboard.name; }

QStringList press(const QStringList& keys) { return QStringList("key") + keys; }

QStringList pressWith(const char* modifier, const char* key)
{
    return {"keydown", modifier, "key", key, "keyup", modifier};
}

class AKeyboard : public testing::TestWithParam<Keyboard>
{
protected:
    AKeyboard() { keyboard.setLayout(GetParam().layout); }

    VirtualKeyboard keyboard;
};

TEST_P(AKeyboard, OpensAndClosesWithTheKeyLeftOfOneAndTypesAccents)
{
    for (const char* const place : {"window", "widget", "item"}) {
        SCOPED_TRACE(place);
        KeyboardHost host(keyboard, place);
        keyboard.send(press({kS}));
        host.awaitLine("host got s");
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("open: ");
        keyboard.send(GetParam().accent);
        host.awaitLine(std::string("open: ") + GetParam().typed);
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("closed");
        keyboard.send(press({kS}));
        host.awaitLine("host got s");
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("open: ");
        keyboard.send(press({kS}));
        host.awaitLine("open: s");
        keyboard.send(press({"shift+Escape"}));
        host.awaitLine("closed");
        keyboard.send(press({"shift+Escape"}));
        host.awaitLine("open: ");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, AKeyboard,
    testing::Values(
        // A layout without dead keys needs a Compose key or AltGr for an accent.
        Keyboard{"us", {"-layout", "us", "-option", "compose:ralt"}, press({kRightAlt, "48", "26"}), "é"},
        Keyboard{"gb", {"-layout", "gb"}, pressWith(kRightAlt, "47") + press({"26"}), "é"},
        Keyboard{"de", {"-layout", "de"}, press({"21", "26"}), "é"},
        Keyboard{"fr", {"-layout", "fr"}, press({"34", "26"}), "ê"},
        Keyboard{"es", {"-layout", "es"}, press({"48", "26"}), "é"},
        Keyboard{"br", {"-layout", "br"}, press({"34", "26"}), "é"},
        Keyboard{"se", {"-layout", "se"}, press({"21", "26"}), "é"},
        Keyboard{"us_intl", {"-layout", "us", "-variant", "intl"}, press({"48", "26"}), "é"}),
    [](const testing::TestParamInfo<Keyboard>& tested) { return std::string(tested.param.name); });

TEST(GermanKeyboard, TypesWhatTheKeyLeftOfOneTypesWithShift)
{
    VirtualKeyboard keyboard;
    keyboard.setLayout({"-layout", "de"});
    KeyboardHost host(keyboard, "window");
    keyboard.send(press({kLeftOfOne}));
    host.awaitLine("open: ");
    keyboard.send(pressWith(kShift, kLeftOfOne));
    host.awaitLine("open: °");
}

TEST(SwedishKeyboard, TypesWhatTheKeyLeftOfOneTypesWithAltGr)
{
    VirtualKeyboard keyboard;
    keyboard.setLayout({"-layout", "se"});
    KeyboardHost host(keyboard, "window");
    keyboard.send(press({kLeftOfOne}));
    host.awaitLine("open: ");
    keyboard.send(pressWith(kRightAlt, kLeftOfOne));
    host.awaitLine("open: ¶");
}

/// A dead toggle key that closes the console leaves no accent behind for the next letter.
TEST(GermanKeyboard, ForgetsTheAccentOfTheKeyThatClosed)
{
    VirtualKeyboard keyboard;
    keyboard.setLayout({"-layout", "de"});
    KeyboardHost host(keyboard, "window");
    for (int i = 0; i < 3; ++i) {
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("open: ");
        keyboard.send(press({"26"}));
        host.awaitLine("open: e");
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("closed");
    }
}

TEST(GermanKeyboard, MayBeChosenWhileTheHostRuns)
{
    VirtualKeyboard keyboard;
    keyboard.setLayout({"-layout", "us"});
    KeyboardHost host(keyboard, "window");
    keyboard.setLayout({"-layout", "de"});
    keyboard.send(press({kLeftOfOne}));
    host.awaitLine("open: ");
    keyboard.send(press({"21", "26"}));
    host.awaitLine("open: é");
    keyboard.send(press({kLeftOfOne}));
    host.awaitLine("closed");
}

} // namespace
} // namespace zephyr::test
