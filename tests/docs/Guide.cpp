#include "Guide.h"

#include "support/LogLine.h"
#include "support/LogOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zephyr::test {

namespace {

const std::string kFence = "```";
const std::string kTextFence = "```text";
const std::string kPrompt = ">> ";

/// An entry as the guide shows it, line by line: further lines at the entry's indent, as a view draws them, and without
/// spaces at the ends, which a reader couldn't see.
Lines shown(const LogLine& entry)
{
    std::istringstream text((entry.type == console::Input ? kPrompt : "") + entry.text + "\n");
    Lines lines;
    for (std::string line; std::getline(text, line);) {
        line.insert(0, lines.empty() ? 0 : entry.indent, ' ');
        lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
    }
    return lines;
}

/// What the log gains when `line` is executed, as the guide shows it.
Lines shownAfter(const std::string& line, console::Console& console)
{
    Lines lines;
    for (const LogLine& entry : logOf(line, console)) {
        const Lines more = shown(entry);
        lines.insert(lines.end(), more.begin(), more.end());
    }
    return lines;
}

} // namespace

std::vector<Lines> textBlocks(const std::filesystem::path& guide)
{
    std::ifstream stream(guide);
    if (!stream.is_open()) {
        throw std::runtime_error("can't read " + guide.string());
    }
    std::vector<Lines> blocks;
    bool isInside = false;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(kFence)) {
            isInside = line == kTextFence;
            if (isInside) {
                blocks.emplace_back();
            }
        } else if (isInside) {
            blocks.back().push_back(line);
        }
    }
    return blocks;
}

bool isSession(const Lines& block) { return !block.empty() && block.front().starts_with(kPrompt); }

void expectSession(console::Console& console, const Lines& block)
{
    // Lines that a file or an alias runs have prompts too: they are part of the answer to the typed line.
    for (std::size_t next = 0; next < block.size();) {
        ASSERT_TRUE(block[next].starts_with(kPrompt)) << "no prompt, but a line too many: " << block[next];
        Lines answer = shownAfter(block[next].substr(kPrompt.size()), console);
        while (answer.size() > block.size() - next && answer.back().empty()) {
            answer.pop_back(); // a block may leave out the empty lines at its end
        }
        const auto begin = block.begin() + static_cast<std::ptrdiff_t>(next);
        const std::size_t count = std::min(answer.size(), block.size() - next);
        EXPECT_EQ(Lines(begin, begin + static_cast<std::ptrdiff_t>(count)), answer);
        next += answer.size();
    }
}

} // namespace zephyr::test
