#ifndef ZEPHYR_TESTS_QT_OFFERSFIXTURE_H
#define ZEPHYR_TESTS_QT_OFFERSFIXTURE_H

#include "KeyDelivery.h"
#include "support/ConsoleDriver.h"
#include "support/ScriptedCommand.h"
#include "view/Offers.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console::qt {

using Texts = std::vector<std::string>;

/// An open console whose keys go through the list of offers. Texts are UTF-8.
class OffersFixture : public testing::Test
{
protected:
    OffersFixture() { console.open(); }

    void press(int key, int modifiers = Qt::NoModifier, const std::u32string& text = {})
    {
        offers.pressKey(console, key, modifiers, text, pressKey);
    }

    void type(std::string_view text)
    {
        for (const char32_t c : StringUtil::toU32String(text)) {
            press(Qt::Key_unknown, Qt::NoModifier, std::u32string(1, c));
        }
    }

    void tab() { press(Qt::Key_Tab); }
    void backtab() { press(Qt::Key_Backtab); }
    void pick(std::size_t index) { offers.pick(console, index, pressKey); }

    std::string line() const { return StringUtil::toString(console.activeInput()); }

    /// The line with a bar at the cursor.
    std::string lineAndCursor() const
    {
        const ConsoleInput input = console.readInput();
        return StringUtil::toString(input.text.substr(0, input.cursor)) + "|" +
               StringUtil::toString(input.text.substr(input.cursor));
    }

    /// The texts of the list as it is shown.
    Texts list()
    {
        Texts texts;
        for (std::size_t i = 0; offers.isShown() && i < offers.count(); ++i) {
            texts.push_back(StringUtil::toString(offers.at(console, i).text));
        }
        return texts;
    }

    std::string description(std::size_t index)
    {
        return StringUtil::toString(offers.at(console, index).description);
    }

    /// The selected text; empty if there is none.
    std::string selected()
    {
        const std::optional<std::size_t> index = offers.selected();
        return index ? StringUtil::toString(offers.at(console, *index).text) : std::string();
    }

    Console console;
    std::chrono::steady_clock::time_point now;
    Offers offers{[this] { return now; }};
    QStringList caught; // lines about exceptions
    KeyDelivery keys{[this](const QString& line) { caught.push_back(line); }};
    PressKey pressKey = [this](int key, int modifiers, const std::u32string& text) {
        keys.press(console, key, modifiers, text);
    };
};

} // namespace zephyr::console::qt

#endif
