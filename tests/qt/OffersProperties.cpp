#include "KeyDelivery.h"
#include "support/ConsoleDriver.h"
#include "support/ScriptedCommand.h"
#include "view/Offers.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/InputWords.h"

#include <Qt>

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h> // needs the header above

#include <string>
#include <utility>
#include <vector>

namespace zephyr::console::qt {
namespace {

/// A key that types its text, if there is one.
struct Key
{
    int key;
    std::u32string text;
};

/// A console with a few commands and aliases, whose keys are delivered as the kit does.
struct Keyed
{
    Keyed()
    {
        // The line itself is among the candidates, so that different completions have different ones.
        test::addCommand(console, U"ab").onComplete = [](const ConsoleArgs& args) {
            const std::u32string last = args.arg(args.argCount() - 1);
            return std::vector<std::u32string>{U"a", last + U"b", U"a b", U"a", U""};
        };
        test::addCompletingCommand(console, U"abb", {U"b", U"ba"});
        test::addCommand(console, U"ba");
        console.execute(U"alias bb \"ab a\"");
        console.setDepthLimit(
            8); // Tab finds the command `alias`, with which a line may make one that leads to itself
        console.open();
    }

    void press(const Key& key) { keys.press(console, key.key, Qt::NoModifier, key.text); }

    Console console;
    KeyDelivery keys{[](const QString&) {}};
};

/// The same with the list of offers.
struct Offering : Keyed
{
    void press(const Key& key)
    {
        offers.pressKey(console, key.key, Qt::NoModifier, key.text,
                        [this](int pressed, int modifiers, const std::u32string& text) {
                            keys.press(console, pressed, modifiers, text);
                        });
    }

    Offers offers;
};

rc::Gen<std::vector<Key>> someKeys()
{
    const auto typed = rc::gen::map(rc::gen::elementOf(std::vector<std::u32string>{U"a", U"b", U" ", U"ab "}),
                                    [](const std::u32string& text) { return Key{0, text}; });
    const auto pressed = rc::gen::map(
        rc::gen::element<int>(Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home,
                              Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Up, Qt::Key_Down, Qt::Key_Return),
        [](int key) { return Key{key, {}}; });
    return rc::gen::container<std::vector<Key>>(rc::gen::weightedOneOf<Key>({{2, typed}, {3, pressed}}));
}

bool isTab(const Key& key) { return key.key == Qt::Key_Tab || key.key == Qt::Key_Backtab; }

/// Whether the kit may do more at a Tab than the console: the line is not empty, and its first word is no command or is
/// all of the line.
bool mayDoMore(Console& console)
{
    const std::u32string line = console.activeInput();
    const std::u32string word(firstWord(line));
    return !line.empty() && (word == line || console.lookupCommand(word) == nullptr);
}

RC_GTEST_PROP(OffersProperties, LeaveEachKeyWhatItIsInTheConsole, ())
{
    Keyed plain;
    Offering offering;
    for (const Key& key : *someKeys()) {
        if (isTab(key) && mayDoMore(plain.console)) {
            continue;
        }
        plain.press(key);
        offering.press(key);
        const ConsoleInput expected = plain.console.readInput();
        const ConsoleInput input = offering.console.readInput();
        RC_ASSERT(input.text == expected.text);
        RC_ASSERT(input.cursor == expected.cursor);
        RC_ASSERT(offering.console.logSize() == plain.console.logSize());
    }
}

RC_GTEST_PROP(OffersProperties, TheSelectedOfferStandsOnTheLine, ())
{
    Offering offering;
    for (const Key& key : *someKeys()) {
        const std::size_t picked = *rc::gen::inRange<std::size_t>(0, 12);
        const PressKey press = [&](int pressed, int modifiers, const std::u32string& text) {
            offering.keys.press(offering.console, pressed, modifiers, text);
        };
        if (picked < offering.offers.count()) {
            offering.offers.pick(offering.console, picked, press);
        }
        offering.press(key);
        if (offering.offers.selected()) {
            RC_ASSERT(*offering.offers.selected() < offering.offers.count());
            const std::u32string text =
                offering.offers.at(offering.console, *offering.offers.selected()).text;
            const std::u32string line = offering.console.activeInput();
            RC_ASSERT(line.ends_with(U" " + text) || firstWord(line) == text);
        }
    }
}

RC_GTEST_PROP(OffersProperties, APickedOfferIsTheOneThatTabStepsTo, ())
{
    Offering stepped;
    Offering picked;
    const std::u32string line = *rc::gen::elementOf(
        std::vector<std::u32string>{U"a", U"b", U"ab a", U"abb ", U"ba", U"xb", U"bba x"});
    stepped.press({0, line});
    picked.press({0, line});
    const std::size_t count = picked.offers.count();
    RC_PRE(count > 0);
    const auto index = *rc::gen::inRange<std::size_t>(0, count);
    for (std::size_t i = 0; i <= count && stepped.offers.selected() != index; ++i) {
        stepped.press({Qt::Key_Tab, {}});
    }
    picked.offers.pick(picked.console, index, [&](int key, int modifiers, const std::u32string& text) {
        picked.keys.press(picked.console, key, modifiers, text);
    });
    if (count > 1) {
        RC_ASSERT(picked.offers.selected() == index);
    }
    RC_ASSERT(picked.console.activeInput() == stepped.console.activeInput());
}

} // namespace
} // namespace zephyr::console::qt
