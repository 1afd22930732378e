#include "console/UnknownNames.h"

#include "zephyr/console/Console.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace zephyr::console::remote {

namespace {

constexpr std::u32string_view kBegin = U"'";
constexpr std::u32string_view kEnd =
    U"' is not a recognized command.  Type 'help' to list available commands.";
constexpr std::size_t kEntriesLookedAt = 256;

/// The first word of a line as the console reads it when the line runs: a space inside double quotes belongs to it.
std::u32string_view firstWordToRun(std::u32string_view line)
{
    bool isQuoted = false;
    const auto end = std::find_if(line.begin(), line.end(), [&](char32_t c) {
        isQuoted = isQuoted != (c == U'"');
        return c == U' ' && !isQuoted;
    });
    return line.substr(0, static_cast<std::size_t>(end - line.begin()));
}

/// Whether `text` is the console's answer to `line`, that it names nothing.
bool isAnswerTo(std::u32string_view line, std::u32string_view text)
{
    if (!text.starts_with(kBegin) || !text.ends_with(kEnd) || text.size() < kBegin.size() + kEnd.size()) {
        return false;
    }
    return text.substr(kBegin.size(), text.size() - kBegin.size() - kEnd.size()) == firstWordToRun(line);
}

} // namespace

std::optional<std::u32string> unknownNameIn(const Console& console, std::size_t begin, std::size_t end)
{
    std::optional<std::u32string> found;
    std::u32string line;
    std::vector<LogEntry> entries;
    for (; begin < end; begin += kEntriesLookedAt) {
        console.readLog(begin, std::min(kEntriesLookedAt, end - begin), entries);
        for (const LogEntry& entry : entries) {
            if (entry.type == Input) {
                line = entry.text;
            } else if (isAnswerTo(line, entry.text)) {
                found = entry.text;
            }
        }
    }
    return found;
}

} // namespace zephyr::console::remote
