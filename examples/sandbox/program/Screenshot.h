#ifndef ZEPHYR_SANDBOX_PROGRAM_SCREENSHOT_H
#define ZEPHYR_SANDBOX_PROGRAM_SCREENSHOT_H

#include <QString>

#include <optional>

class QImage;

namespace zephyr::sandbox {

/// Writes `picture` to the file `path` as PNG, whole or not at all. \return why that failed, in one line for the user;
/// nothing on success.
std::optional<QString> saveScreenshot(const QImage& picture, const QString& path);

} // namespace zephyr::sandbox

#endif
