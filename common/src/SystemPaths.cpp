#include "zephyr/common/SystemPaths.h"

#include "zephyr/common/StringUtil.h"

#include <QCoreApplication>
#include <QString>

#include <filesystem>
#include <system_error>

namespace zephyr {

namespace {

constexpr const char* kExecutableLink = "/proc/self/exe";

std::u32string codePoints(const std::filesystem::path& path)
{
    return StringUtil::toU32String(path.string());
}

} // namespace

std::u32string executableDir()
{
    // The system first: Qt needs an application object and can't read ill-formed names.
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink(kExecutableLink, error);
    if (!error) {
        return codePoints(executable.parent_path());
    }
    if (QCoreApplication::instance() == nullptr) {
        return {};
    }
    return QCoreApplication::applicationDirPath().toStdU32String();
}

std::u32string currentDir()
{
    std::error_code error;
    const std::filesystem::path current = std::filesystem::current_path(error);
    return error ? std::u32string() : codePoints(current);
}

} // namespace zephyr
