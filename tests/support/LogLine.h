#ifndef ZEPHYR_TESTS_SUPPORT_LOGLINE_H
#define ZEPHYR_TESTS_SUPPORT_LOGLINE_H

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace zephyr::test {

/// One entry of the log, with its text in UTF-8.
struct LogLine
{
    std::string text;
    console::ConsoleMessageType type;
    unsigned indent;

    friend bool operator==(const LogLine& left, const LogLine& right)
    {
        return left.text == right.text && left.type == right.type && left.indent == right.indent;
    }

    friend std::ostream& operator<<(std::ostream& stream, const LogLine& line)
    {
        return stream << '"' << line.text << "\" type " << static_cast<unsigned>(line.type) << " indent "
                      << line.indent;
    }
};

/// The echo of a line that is executed.
inline LogLine echo(const std::string& text) { return {text, console::Input, 0}; }

/// A line of ordinary output: `indent` spaces, then `text`.
inline LogLine output(const std::string& text, unsigned indent = 0)
{
    return {std::string(indent, ' ') + text, console::Output, indent};
}

/// The log from entry `first` on. The default leaves out the two lines of the start.
inline std::vector<LogLine> logLines(const console::Console& console, std::size_t first = 2)
{
    const console::ConsoleSnapshot snapshot = console.snapshot();
    std::vector<LogLine> lines;
    for (std::size_t i = first; i < snapshot.lines().size(); ++i) {
        const console::LogEntry& entry = snapshot.lines()[i];
        lines.push_back({StringUtil::toString(entry.text), entry.type, entry.indent});
    }
    return lines;
}

/// The texts of `lines`.
inline std::vector<std::string> textsOf(const std::vector<LogLine>& lines)
{
    std::vector<std::string> texts;
    for (const LogLine& line : lines) {
        texts.push_back(line.text);
    }
    return texts;
}

/// What the console writes when `word` is neither a command nor an alias.
inline std::string notRecognized(const std::string& word)
{
    return "'" + word + "' is not a recognized command.  Type 'help' to list available commands.";
}

} // namespace zephyr::test

#endif
