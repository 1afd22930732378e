#include "FileWriting.h"

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Texts.h"
#include "zephyr/console/commands/Failure.h"

#include <QFile>
#include <QSaveFile>

#include <cstddef>
#include <string_view>
#include <system_error>

namespace zephyr::console::commands {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void refuse(const fs::path& path, const std::string& reason)
{
    fail("Can't write '" + path.string() + "': " + reason + ".");
}

/// Refuses what is neither a file nor a folder, since a pipe might block the program or be replaced by a file, and a link
/// that leads to itself, which would be replaced too.
void requireWritable(const fs::path& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::status_known(status)) {
        refuse(path, error.message());
    }
    if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status)) {
        refuse(path, "it is no regular file");
    }
}

/// Where a part of `bytes` fits, the rest fails with a reason.
bool writeAll(QSaveFile& file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const qint64 written = file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

void writeWhole(const fs::path& path, const std::string& bytes)
{
    requireWritable(path);
    QSaveFile file(QFile::decodeName(path.c_str()));
    // Without a buffer, since commit() takes no notice of what it can't write of that.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeAll(file, bytes) ||
        !file.commit()) {
        refuse(path, file.errorString().simplified().toStdString());
    }
}

fs::path consoleFileName(const fs::path& name)
{
    const std::string extension = StringUtil::toString(kConsoleFileExtension);
    const std::string text = name.string();
    return text.ends_with(extension) ? name : fs::path(text + extension);
}

Parameter fileArgument(const std::u32string& description)
{
    return argument(U"file", description)
        .check([](const fs::path& path) { return path.has_filename(); }, U"is no file");
}

} // namespace zephyr::console::commands
