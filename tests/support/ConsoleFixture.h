#ifndef ZEPHYR_TESTS_SUPPORT_CONSOLEFIXTURE_H
#define ZEPHYR_TESTS_SUPPORT_CONSOLEFIXTURE_H

#include "support/LogLine.h"
#include "support/LogOf.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zephyr::test {

/// A console, and what its log says.
class ConsoleFixture : public testing::Test
{
protected:
    using Lines = std::vector<LogLine>;

    /// The log without the two lines of the start.
    Lines log() const { return logLines(mConsole); }

    /// What the log gains when `line` is executed: the echo of the line first.
    Lines logOf(const std::u32string& line) { return test::logOf(line, mConsole); }
    Lines logOf(const std::string& line) { return test::logOf(line, mConsole); }

    /// What `line` writes between its echo and the empty line that closes it.
    Lines answer(const std::u32string& line) { return test::answer(line, mConsole); }

    console::Console mConsole;
};

} // namespace zephyr::test

#endif
