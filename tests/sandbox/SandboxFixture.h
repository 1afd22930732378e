#ifndef ZEPHYR_TESTS_SANDBOX_SANDBOXFIXTURE_H
#define ZEPHYR_TESTS_SANDBOX_SANDBOXFIXTURE_H

#include "sandbox/Sandbox.h"
#include "support/ConsoleDriver.h"
#include "support/LogOf.h"
#include "zephyr/common/StringUtil.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace zephyr::test {

using Lines = std::vector<std::string>;

/// A sandbox without a window, and what its console answers.
class SandboxFixture : public testing::Test
{
protected:
    /// What `line` writes between its echo and the empty line that closes it.
    Lines answerTo(std::string_view line)
    {
        return textsOf(answer(StringUtil::toU32String(line), sandbox.console()));
    }

    /// What Tab offers, in order, for a line that is typed up to its end: the line after each press until the
    /// first comes again.
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
