#include "ConsoleFile.h"

#include "zephyr/common/StringUtil.h"

#include <string_view>
#include <system_error>

namespace zephyr::console {

namespace {

constexpr std::string_view kComment = "//";

} // namespace

ConsoleFile::ConsoleFile(const std::filesystem::path& path)
{
    std::error_code error;
    if (!std::filesystem::is_directory(path, error)) { // some platforms open a directory
        mStream.open(path);
    }
}

std::optional<std::u32string> ConsoleFile::nextLine()
{
    while (std::getline(mStream, mLine)) {
        if (mLine.empty()) {
            continue;
        }
        const std::string trimmed = StringUtil::trim(mLine);
        if (!trimmed.starts_with(kComment)) {
            return StringUtil::toU32String(trimmed);
        }
    }
    return std::nullopt;
}

} // namespace zephyr::console
