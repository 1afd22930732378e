#ifndef ZEPHYR_CONSOLE_CONSOLEFILE_H
#define ZEPHYR_CONSOLE_CONSOLEFILE_H

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace zephyr::console {

/// A console file while it is read, line by line.
class ConsoleFile
{
public:
    /// Opens the file at `path`. A directory is no console file.
    explicit ConsoleFile(const std::filesystem::path& path);

    /// Whether the file could be opened.
    bool isOpen() const { return mStream.is_open(); }

    /// The next line to run, trimmed; nothing at the end. Empty lines and comments are passed over, but a line of blanks
    /// is run as an empty one (oddity 16).
    std::optional<std::u32string> nextLine();

private:
    std::ifstream mStream;
    std::string mLine; // its memory serves all lines
};

} // namespace zephyr::console

#endif
