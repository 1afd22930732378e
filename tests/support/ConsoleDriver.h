#ifndef ZEPHYR_TESTS_SUPPORT_CONSOLEDRIVER_H
#define ZEPHYR_TESTS_SUPPORT_CONSOLEDRIVER_H

#include "support/LogLine.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zephyr::test {

constexpr int kNoModifier = Qt::NoModifier;
constexpr int kCtrl = Qt::ControlModifier;

/// Types into a console as a person would, and reads what that person would see. Texts are UTF-8.
class ConsoleDriver
{
public:
    explicit ConsoleDriver(console::Console& console) : mConsole(console) {}

    /// Types `text`, one key for each code point. A line feed presses Enter.
    void type(std::string_view text)
    {
        for (const char32_t c : StringUtil::toU32String(text)) {
            if (c == U'\n') {
                press(Qt::Key_Return);
            } else {
                mConsole.keyPressed(Qt::Key_unknown, kNoModifier, std::u32string(1, c));
            }
        }
    }

    /// Presses a key that types nothing.
    bool press(int key, int modifiers = kNoModifier) { return mConsole.keyPressed(key, modifiers, {}); }

    /// The input line.
    std::string input() const { return StringUtil::toString(mConsole.activeInput()); }

    /// The texts of the log from entry `first` on. The default leaves out the two lines of the start.
    std::vector<std::string> log(std::size_t first = 2) const { return textsOf(logLines(mConsole, first)); }

private:
    console::Console& mConsole;
};

} // namespace zephyr::test

#endif
