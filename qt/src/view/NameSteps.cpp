#include "NameSteps.h"

#include "zephyr/console/Console.h"
#include "zephyr/console/InputWords.h"

#include <Qt>

#include <algorithm>
#include <string_view>

namespace zephyr::console::qt {

namespace {

void pressTimes(const PressKey& press, Qt::Key key, std::size_t times)
{
    for (std::size_t i = 0; i < times; ++i) {
        press(key, Qt::NoModifier, {});
    }
}

void moveCursor(std::size_t from, std::size_t to, const PressKey& press)
{
    if (from == to) {
        return;
    }
    press(Qt::Key_Home, Qt::NoModifier, {});
    pressTimes(press, Qt::Key_Right, to);
}

/// Replaces the first word of the line by `name`, and puts the cursor behind it.
void replaceFirstWord(const Console& console, const std::u32string& name, const PressKey& press)
{
    const ConsoleInput input = console.readInput();
    const std::u32string_view word = firstWord(input.text);
    const auto [wordRest, nameRest] = std::mismatch(word.begin(), word.end(), name.begin(), name.end());
    const auto kept = static_cast<std::size_t>(nameRest - name.begin());
    moveCursor(input.cursor, kept, press);
    // Inserted before others, code points win the console's buffer the places that erasing costs it.
    for (const char32_t c : std::u32string_view(name).substr(kept)) {
        press(0, Qt::NoModifier, std::u32string(1, c));
    }
    pressTimes(press, Qt::Key_Delete, word.size() - kept);
}

} // namespace

bool NameSteps::isAt(const Console& console) const
{
    if (mNames.empty()) {
        return false;
    }
    const ConsoleInput input = console.readInput();
    return console.isOpen() && input.text == mLine && input.cursor == mCursor;
}

void NameSteps::begin(const Console& console, const SharedTexts& names, bool addsSpace)
{
    const ConsoleInput input = console.readInput();
    mNames = names;
    mAddsSpace = addsSpace;
    mLine = input.text;
    mCursor = input.cursor;
    const auto found = std::find(names.begin(), names.end(), firstWord(input.text));
    mIndex =
        found == names.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - names.begin()));
}

bool NameSteps::step(Console& console, bool backwards, const PressKey& press)
{
    const std::size_t count = mNames.size();
    const std::size_t from = mIndex.value_or(backwards ? 0 : count - 1);
    return goTo(console, (from + (backwards ? count - 1 : 1)) % count, press);
}

bool NameSteps::goTo(Console& console, std::size_t index, const PressKey& press)
{
    const std::u32string name = mNames[index];
    replaceFirstWord(console, name, press);
    ConsoleInput input = console.readInput();
    const bool getsSpace = mNames.size() == 1 && mAddsSpace && input.text == name;
    if (getsSpace) {
        press(0, Qt::NoModifier, U" ");
    }
    if (mNames.size() == 1 || firstWord(input.text) != name) { // a full line takes no more
        end();
        return getsSpace;
    }
    mIndex = index;
    mLine = std::move(input.text);
    mCursor = input.cursor;
    return false;
}

} // namespace zephyr::console::qt
