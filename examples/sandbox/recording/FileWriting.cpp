#include "sandbox/recording/FileWriting.h"

#include <QFile>
#include <QSaveFile>

#include <system_error>

namespace zephyr::sandbox {

namespace {

constexpr char kNotRegular[] = "it is no regular file";

/// Where a part of `bytes` fits, the rest fails with a reason.
bool writeAll(QSaveFile& file, QByteArray bytes)
{
    while (!bytes.isEmpty()) {
        const qint64 written = file.write(bytes);
        if (written <= 0) {
            return false;
        }
        bytes.remove(0, static_cast<qsizetype>(written)); // of `bytes`, so it fits
    }
    return true;
}

} // namespace

std::optional<std::string> reasonNotToWrite(const std::filesystem::path& path, Devices devices)
{
    using std::filesystem::file_type;
    std::error_code error;
    const file_type type = std::filesystem::status(path, error).type();
    const bool isSpecial = type == file_type::fifo || type == file_type::socket || type == file_type::block ||
                           (type == file_type::character && devices == Devices::Refused);
    return isSpecial ? std::optional<std::string>(kNotRegular) : std::nullopt;
}

std::optional<std::string> writeWhole(const QString& path, const QByteArray& bytes)
{
    std::optional<std::string> reason =
        reasonNotToWrite(QFile::encodeName(path).toStdString(), Devices::Refused);
    if (reason) {
        return reason;
    }
    QSaveFile file(path);
    // Without a buffer, since commit() takes no notice of what it can't write of that.
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, bytes) && file.commit()) {
        return std::nullopt;
    }
    return file.errorString().simplified().toStdString();
}

std::string cantWrite(const std::string& path, const std::string& reason)
{
    return "Can't write '" + path + "': " + reason + ".";
}

} // namespace zephyr::sandbox
