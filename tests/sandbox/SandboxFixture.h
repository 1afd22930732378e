#ifndef ZEPHYR_TESTS_SANDBOX_SANDBOXFIXTURE_H
#define ZEPHYR_TESTS_SANDBOX_SANDBOXFIXTURE_H

#include "sandbox/program/Sandbox.h"
#include "support/ConsoleDriver.h"
#include "support/LogOf.h"
#include "zephyr/common/StringUtil.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace zephyr::test {

using Lines = std::vector<std::string>;

/// A command's words, and what is wrong with them.
struct Mistake
{
    std::string words;
    std::string error;
};

/// A sandbox without a window, whose console can be asked.
class SandboxFixture : public testing::Test
{
protected:
    /// The lines that `line` writes to the log between its echo and the empty line at the end.
    Lines answerTo(std::string_view line)
    {
        return textsOf(answer(StringUtil::toU32String(line), sandbox.console()));
    }

    /// Expects `command` to answer each mistake with its error and the usage.
    void expectErrors(const std::string& command, const std::vector<Mistake>& mistakes,
                      const std::string& usage)
    {
        for (const Mistake& mistake : mistakes) {
            EXPECT_EQ(Lines({"    " + mistake.error, "    Usage: " + usage}),
                      answerTo(command + " " + mistake.words))
                << mistake.words;
        }
    }

    /// The lines that Tab offers for a typed line, in order: the input after each press, until the first comes
    /// again.
    Lines completionsOf(std::string_view line)
    {
        sandbox.console().open();
        driver.type(line);
        Lines completed;
        for (;;) {
            driver.press(Qt::Key_Tab);
            const std::string input = driver.input();
            if (input == line || (!completed.empty() && input == completed.front())) {
                return completed;
            }
            completed.push_back(input);
        }
    }

    sandbox::Sandbox sandbox;
    ConsoleDriver driver{sandbox.console()};
};

} // namespace zephyr::test

#endif
