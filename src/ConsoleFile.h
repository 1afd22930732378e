#ifndef ZEPHYR_CONSOLE_CONSOLEFILE_H
#define ZEPHYR_CONSOLE_CONSOLEFILE_H

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <system_error>

namespace zephyr::console {

/// Reads a console file, line by line.
class ConsoleFile
{
public:
    /// Opens the file at `path`. A directory isn't opened.
    explicit ConsoleFile(std::filesystem::path path);

    /// The path that was opened.
    const std::filesystem::path& path() const { return mPath; }

    /// Whether the file could be opened.
    bool isOpen() const { return mStream.is_open(); }

    /// The next line to run, trimmed; nothing at the end of the file, and where it can't be read any further. Empty
    /// lines and comments are skipped, but a line of blanks runs as an empty line (oddity 16). Throws `std::bad_alloc`
    /// when a line doesn't fit into memory.
    std::optional<std::u32string> nextLine();

    /// Why the file couldn't be read to its end; no error if it could, so far.
    const std::error_code& readError() const { return mReadError; }

private:
    bool readLine();

    std::filesystem::path mPath; // a copy, as lines that run may change where the caller has it from
    std::ifstream mStream;
    std::string mLine; // a member, so that all lines share its memory
    std::error_code mReadError;
};

} // namespace zephyr::console

#endif
