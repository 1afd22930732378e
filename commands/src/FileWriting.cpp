#include "FileWriting.h"

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Texts.h"
#include "zephyr/console/commands/Failure.h"

#include <QFile>
#include <QSaveFile>

#include <system_error>

namespace zephyr::console::commands {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void refuse(const fs::path& path, const std::string& reason)
{
    fail("Can't write '" + path.string() + "': " + reason + ".");
}

/// Whether what is at `path` is neither a file nor a folder. A pipe might block the program or be replaced by a file.
bool isSpecial(const fs::path& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

} // namespace

void writeWhole(const fs::path& path, const std::string& bytes)
{
    if (isSpecial(path)) {
        refuse(path, "it is no regular file");
    }
    QSaveFile file(QFile::decodeName(path.c_str()));
    const auto size = static_cast<qint64>(bytes.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), size) != size || !file.commit()) {
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
