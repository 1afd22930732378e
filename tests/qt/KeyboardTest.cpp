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
    std::string s = "s"; // what the key s types
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
        host.awaitLine("host got " + GetParam().s);
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("open: ");
        keyboard.send(GetParam().accent);
        host.awaitLine(std::string("open: ") + GetParam().typed);
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("closed");
        keyboard.send(press({kS}));
        host.awaitLine("host got " + GetParam().s);
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("open: ");
        keyboard.send(press({kS}));
        host.awaitLine("open: " + GetParam().s);
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
        Keyboard{"gr", {"-layout", "gr"}, press({"47", "38"}), "ά", "σ"},
        Keyboard{"jp", {"-layout", "jp"}, press({"26"}), "e"}, // the key left of 1 types nothing

        Keyboard{"us_intl", {"-layout", "us", "-variant", "intl"}, press({"48", "26"}), "é"}),
    [](const testing::TestParamInfo<Keyboard>& tested) { return std::string(tested.param.name); });

/// A layout, what the key left of 1 types on it, and what the key s types.
struct TypingKeyboard
{
    const char* name;
    QStringList layout;
    const char* leftOfOne;
    const char* s;
};

void PrintTo(const TypingKeyboard& keyboard, std::ostream* stream) { *stream << keyboard.name; }

class ATypingKeyboard : public testing::TestWithParam<TypingKeyboard>
{};

/// Where the key left of 1 types what a line needs, it opens the console and then types.
TEST_P(ATypingKeyboard, OpensWithTheKeyLeftOfOneAndClosesWithShiftAndEscape)
{
    VirtualKeyboard keyboard;
    keyboard.setLayout(GetParam().layout);
    for (const char* const place : {"window", "widget", "item"}) {
        SCOPED_TRACE(place);
        const std::string typed = GetParam().leftOfOne;
        const std::string s = GetParam().s;
        KeyboardHost host(keyboard, place);
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("open: ");
        keyboard.send(press({kS}));
        host.awaitLine("open: " + s);
        keyboard.send(press({kLeftOfOne}));
        host.awaitLine("open: " + s + typed);
        keyboard.send(press({"shift+Escape"}));
        host.awaitLine("closed");
        keyboard.send(press({kS}));
        host.awaitLine("host got " + s);
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, ATypingKeyboard,
                         testing::Values(TypingKeyboard{"hu", {"-layout", "hu"}, "0", "s"},
                                         TypingKeyboard{"cz", {"-layout", "cz"}, ";", "s"},
                                         TypingKeyboard{"ru", {"-layout", "ru"}, "ё", "ы"}),
                         [](const testing::TestParamInfo<TypingKeyboard>& tested) {
                             return std::string(tested.param.name);
                         });

/// The X server repeats a held key by releases and presses, which Qt may not mark as repeats.
TEST(AHeldToggleKey, OpensOnce)
{
    VirtualKeyboard keyboard;
    keyboard.setLayout({"-layout", "us"});
    KeyboardHost host(keyboard, "window");
    keyboard.send({"keydown", kLeftOfOne, "sleep", "1.5", "keyup", kLeftOfOne});
    host.awaitLine("open: ");
    keyboard.send(press({kS}));
    host.awaitLine("open: s");
}

/// Keys that the program reads before it has opened the console are composed all the same.
TEST(AnAccent, IsNotLostInTheMomentOfOpening)
{
    VirtualKeyboard keyboard;
    keyboard.setLayout({"-layout", "de"});
    for (const char* const place : {"window", "widget", "item"}) {
        SCOPED_TRACE(place);
        KeyboardHost host(keyboard, place);
        keyboard.send({"key", "--delay", "0", kLeftOfOne, "21", "26"}); // the dead acute, and e
        host.awaitLine("open: ");
        host.awaitLine("open: é");
    }
}

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

TEST(TheMiddleButton, PastesThePrimarySelectionAsItIs)
{
    VirtualKeyboard keyboard;
    keyboard.setLayout({"-layout", "us"});
    KeyboardHost host(keyboard, "window", "one\ttwo\nthree");
    keyboard.send(press({kLeftOfOne}));
    host.awaitLine("open: ");
    keyboard.send({"mousemove", "100", "100", "click", "2"});
    host.awaitLine("open: one\ttwo"); // the text has a line feed, as a text pasted by a key has
    host.awaitLine("three");
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
