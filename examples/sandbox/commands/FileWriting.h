#ifndef ZEPHYR_SANDBOX_COMMANDS_FILEWRITING_H
#define ZEPHYR_SANDBOX_COMMANDS_FILEWRITING_H

#include <QByteArray>
#include <QString>

#include <filesystem>

namespace zephyr::sandbox {

/// What becomes of a device such as `/dev/null`.
enum class Devices
{
    Refused, ///< As it would be replaced by a file.
    Taken,   ///< As it is written like a file.
};

/// Why there is no writing to `path`, in words that end a sentence; empty if nothing is there yet, or a regular file.
/// A pipe would keep the program waiting, or be replaced by a file. Also empty for a directory, which the system
/// refuses in its own words.
QString reasonNotToWrite(const std::filesystem::path& path, Devices devices);

/// Makes `bytes` the content of the file `path`. \return why that failed, in words that end a sentence, with the file as
/// it was; empty if it didn't.
QString writeWhole(const QString& path, const QByteArray& bytes);

} // namespace zephyr::sandbox

#endif
