#ifndef ZEPHYR_CONSOLE_PATHS_H
#define ZEPHYR_CONSOLE_PATHS_H

#include "zephyr/common/StringUtil.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace zephyr::console {

/// The code points of a path's name. Names in the file system are bytes: what is ill-formed in them becomes
/// U+FFFD.
inline std::u32string textOfPath(const std::filesystem::path& path)
{
    return StringUtil::toU32String(path.string());
}

/// The path that a text names.
inline std::filesystem::path pathOfText(const std::u32string& text)
{
    return StringUtil::toString(text);
}

/// Whether there is something at `path`. Throws `std::filesystem::filesystem_error` for the operation
/// "exists", on every platform, when that can't be told.
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
