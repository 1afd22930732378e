#ifndef ZEPHYR_CONSOLE_CONSOLEFILE_H
#define ZEPHYR_CONSOLE_CONSOLEFILE_H

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace zephyr::console {

/// Reads a console file, line by line.
class ConsoleFile
{
public:
    /// Opens the file at `path`. A directory isn't opened.
    explicit ConsoleFile(const std::filesystem::path& path);

    /// Whether the file could be opened.
    bool isOpen() const { return mStream.is_open(); }

    /// The next line to run, trimmed; nothing at the end of the file. Empty lines and comments are skipped, but a line
    /// of blanks runs as an empty line (oddity 16).
    std::optional<std::u32string> nextLine();

private:
    std::ifstream mStream;
    std::string mLine; // a member, so that all lines share its memory
};

} // namespace zephyr::console

#endif
