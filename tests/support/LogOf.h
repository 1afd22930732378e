#ifndef ZEPHYR_TESTS_SUPPORT_LOGOF_H
#define ZEPHYR_TESTS_SUPPORT_LOGOF_H

#include "support/LogLine.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::test {

/// The lines that the log gains while `action` runs.
template <typename Action>
std::vector<LogLine> linesAddedBy(const Action& action, const console::Console& console)
{
    const std::size_t before = console.snapshot().lines().size();
    action();
    return logLines(console, before);
}

/// Executes `line`, and returns what the log gains: the echo of the line first.
inline std::vector<LogLine> logOf(const std::u32string& line, console::Console& console)
{
    return linesAddedBy([&] { console.execute(line); }, console);
}

inline std::vector<LogLine> logOf(const std::string& line, console::Console& console)
{
    return logOf(StringUtil::toU32String(line), console);
}

/// Executes `line`, and returns what it writes between its echo and the empty line that closes it.
inline std::vector<LogLine> answer(const std::u32string& line, console::Console& console)
{
    const std::vector<LogLine> lines = logOf(line, console);
    if (lines.size() < 2) {
        ADD_FAILURE() << "the line was not executed, or nothing closes its answer";
        return {};
    }
    EXPECT_EQ(lines.front(), echo(StringUtil::toString(line)));
    EXPECT_EQ(lines.back(), output(""));
    return {lines.begin() + 1, lines.end() - 1};
}

} // namespace zephyr::test

#endif
