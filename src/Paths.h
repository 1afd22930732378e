#ifndef ZEPHYR_CONSOLE_PATHS_H
#define ZEPHYR_CONSOLE_PATHS_H

#include "zephyr/common/StringUtil.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace zephyr::console {

/// The path as text. File names are bytes: each ill-formed part becomes one U+FFFD.
inline std::u32string textOfPath(const std::filesystem::path& path)
{
    return StringUtil::toU32String(path.string());
}

/// The path that `text` names.
inline std::filesystem::path pathOfText(const std::u32string& text) { return StringUtil::toString(text); }

/// Whether there is a file or directory at `path`. Throws a `std::filesystem::filesystem_error` that names
/// the operation "exists", the same on every platform, when the file system can't tell.
inline bool pathExists(const std::filesystem::path& path)
{
    std::error_code error;
    const bool found = std::filesystem::exists(path, error);
    if (error) {
        throw std::filesystem::filesystem_error("exists", path, error);
    }
    return found;
}

} // namespace zephyr::console

#endif
