#ifndef ZEPHYR_SANDBOX_PROGRAM_SCREENSHOT_H
#define ZEPHYR_SANDBOX_PROGRAM_SCREENSHOT_H

#include <QString>

class QImage;

namespace zephyr::sandbox {

/// Writes `picture` to the file `path` as PNG, whole or not at all. \return one line for the user that says why it
/// couldn't be written; empty if it was.
QString savePicture(const QImage& picture, const QString& path);

} // namespace zephyr::sandbox

#endif
