#include "Guide.h"

#include "support/LogLine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <stdexcept>

namespace zephyr::test {

namespace {

const std::string kFence = "```";
const std::string kTextFence = "```text";
const std::string kPrompt = ">> ";

/// An entry as the guide shows it; spaces at the end of a line can't be seen there.
std::string shown(const LogLine& entry)
{
    const std::string text = (entry.type == console::Input ? kPrompt : "") + entry.text;
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

Lines logOf(console::Console& console, const std::string& line)
{
    const std::size_t before = console.snapshot().lines().size();
    console.execute(StringUtil::toU32String(line));
    Lines lines;
    for (const LogLine& entry : logLines(console, before)) {
        lines.push_back(shown(entry));
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

bool isSession(const Lines& block)
{
    return !block.empty() && block.front().starts_with(kPrompt);
}

void expectSession(console::Console& console, const Lines& block)
{
    // What a file or an alias runs is shown behind prompts too: it is part of the answer to the line that was typed.
    for (std::size_t next = 0; next < block.size();) {
        ASSERT_TRUE(block[next].starts_with(kPrompt)) << "no prompt, but a line too many: " << block[next];
        Lines answer = logOf(console, block[next].substr(kPrompt.size()));
        while (answer.size() > block.size() - next && answer.back().empty()) {
            answer.pop_back(); // a block needn't end with the empty lines
        }
        const auto begin = block.begin() + static_cast<std::ptrdiff_t>(next);
        const std::size_t count = std::min(answer.size(), block.size() - next);
        EXPECT_EQ(Lines(begin, begin + static_cast<std::ptrdiff_t>(count)), answer);
        next += answer.size();
    }
}

} // namespace zephyr::test
