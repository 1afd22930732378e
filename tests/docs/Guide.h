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

/// The blocks of plain text in a guide.
std::vector<Lines> textBlocks(const std::filesystem::path& guide);

/// Whether a block is a session: lines after prompts, and what the log gains after each.
bool isSession(const Lines& block);

/// Runs the lines of a session, and expects the log to gain what the block shows.
void expectSession(console::Console& console, const Lines& block);

} // namespace zephyr::test

#endif
