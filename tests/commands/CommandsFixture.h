#ifndef ZEPHYR_TESTS_COMMANDS_COMMANDSFIXTURE_H
#define ZEPHYR_TESTS_COMMANDS_COMMANDSFIXTURE_H

#include "support/ConsoleDriver.h"
#include "support/ConsoleFixture.h"
#include "zephyr/console/commands/Command.h"

#include <optional>
#include <string>
#include <vector>

namespace zephyr::test {

namespace commands = console::commands;

/// A console, and what its log says, without indents.
class CommandsFixture : public ConsoleFixture
{
protected:
    using Texts = std::vector<std::string>;

    /// What `line` writes between its echo and the empty line that closes it.
    Texts textsOfAnswer(const std::string& line) { return textsOf(answer(StringUtil::toU32String(line))); }

    /// The lines that Tab makes of `line`, in the order in which further presses go through them.
    Texts completionsOf(const std::string& line)
    {
        ConsoleDriver driver(mConsole);
        mConsole.open();
        driver.type(line);
        driver.press(Qt::Key_Tab);
        Texts lines;
        while (driver.input() != line && (lines.empty() || driver.input() != lines.front())) {
            lines.push_back(driver.input());
            driver.press(Qt::Key_Tab);
        }
        return lines;
    }
};

} // namespace zephyr::test

#endif
