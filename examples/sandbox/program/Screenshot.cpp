#include "sandbox/program/Screenshot.h"

#include "sandbox/recording/FileWriting.h"

#include <QBuffer>
#include <QImage>

#include <string>

namespace zephyr::sandbox {

namespace {

constexpr char kCantWrite[] = "can't write '%1': %2.";
constexpr char kNoPicture[] = "there is no picture of the window";
constexpr char kFormat[] = "PNG";

} // namespace

std::optional<QString> saveScreenshot(const QImage& picture, const QString& path)
{
    QBuffer buffer;
    const std::optional<std::string> error =
        picture.save(&buffer, kFormat) ? writeWhole(path, buffer.data()) : kNoPicture;
    return error ? std::optional(QString(kCantWrite).arg(path, QString::fromStdString(*error)))
                 : std::nullopt;
}

} // namespace zephyr::sandbox
