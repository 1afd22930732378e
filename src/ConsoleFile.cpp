#include "ConsoleFile.h"

#include "zephyr/common/StringUtil.h"

#include <ios>
#include <string_view>
#include <utility>

namespace zephyr::console {

namespace {

constexpr std::string_view kComment = "//";

} // namespace

ConsoleFile::ConsoleFile(std::filesystem::path path) : mPath(std::move(path))
{
    // Otherwise a line that doesn't fit into memory would look like the end of the file.
    mStream.exceptions(std::ios::badbit);
    std::error_code error;
    if (!std::filesystem::is_directory(mPath, error)) { // some platforms open a directory
        mStream.open(mPath);
    }
}

std::optional<std::u32string> ConsoleFile::nextLine()
{
    while (readLine()) {
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

bool ConsoleFile::readLine()
{
    try {
        return static_cast<bool>(std::getline(mStream, mLine));
    } catch (const std::ios_base::failure& failure) {
        mReadError = failure.code();
        return false;
    }
}

} // namespace zephyr::console
