#ifndef ZEPHYR_TESTS_DOCS_GUIDE_H
#define ZEPHYR_TESTS_DOCS_GUIDE_H

#include <filesystem>
#include <string>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::test {

using Lines = std::vector<std::string>;

/// The blocks of text, which is what isn't code, that a guide shows.
std::vector<Lines> textBlocks(const std::filesystem::path& guide);

/// Whether a block is a session: lines behind prompts, and what the log holds after each.
bool isSession(const Lines& block);

/// Runs a session's lines, and expects the log to be what the block shows.
void expectSession(console::Console& console, const Lines& block);

} // namespace zephyr::test

#endif
