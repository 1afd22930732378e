#include "sandbox/commands/FileWriting.h"

#include <QFile>
#include <QSaveFile>

#include <system_error>

namespace zephyr::sandbox {

namespace {

constexpr char kNoRegularFile[] = "it is no regular file";

} // namespace

QString reasonNotToWrite(const std::filesystem::path& path, Devices devices)
{
    using std::filesystem::file_type;
    std::error_code error;
    const file_type type = std::filesystem::status(path, error).type();
    const bool isSpecial = type == file_type::fifo || type == file_type::socket || type == file_type::block ||
                           (type == file_type::character && devices == Devices::Refused);
    return isSpecial ? kNoRegularFile : QString();
}

QString writeWhole(const QString& path, const QByteArray& bytes)
{
    QString reason = reasonNotToWrite(QFile::encodeName(path).toStdString(), Devices::Refused);
    if (!reason.isEmpty()) {
        return reason;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) {
        return {};
    }
    return file.errorString().simplified();
}

} // namespace zephyr::sandbox
