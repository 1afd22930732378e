#include "sandbox/program/Screenshot.h"

#include "sandbox/commands/FileWriting.h"

#include <QBuffer>
#include <QImage>

namespace zephyr::sandbox {

namespace {

constexpr char kCantWritePicture[] = "can't write '%1': %2.";
constexpr char kNoPicture[] = "there is no picture of the window";
constexpr char kFormat[] = "PNG";

} // namespace

QString savePicture(const QImage& picture, const QString& path)
{
    QBuffer buffer;
    const QString error =
        picture.save(&buffer, kFormat) ? writeWhole(path, buffer.data()) : QString(kNoPicture);
    return error.isEmpty() ? QString() : QString(kCantWritePicture).arg(path, error);
}

} // namespace zephyr::sandbox
