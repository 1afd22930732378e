#ifndef ZEPHYR_SANDBOX_RECORDING_FILEWRITING_H
#define ZEPHYR_SANDBOX_RECORDING_FILEWRITING_H

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <optional>
#include <string>

namespace zephyr::sandbox {

/// Whether a device such as `/dev/null` may be written to.
enum class Devices
{
    Refused, ///< For a writer that would replace the device by a file.
    Allowed, ///< For a writer that writes into what is there.
};

/// Why `path` must not be written to, as the end of a sentence. Nothing if it is a regular file or does not exist, and
/// for a directory, which the system refuses in its own words. A pipe might block the program or be replaced.
std::optional<std::string> reasonNotToWrite(const std::filesystem::path& path, Devices devices);

/// Makes `bytes` the content of the file `path`. A failure leaves the file as it was. \return the reason of a failure,
/// as the end of a sentence; nothing on success.
std::optional<std::string> writeWhole(const QString& path, const QByteArray& bytes);

/// The answer of a command that could not write the file `path`.
std::string cantWrite(const std::string& path, const std::string& reason);

} // namespace zephyr::sandbox

#endif
