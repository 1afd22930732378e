#ifndef ZEPHYR_BENCHMARKS_SUPPORT_CANVAS_H
#define ZEPHYR_BENCHMARKS_SUPPORT_CANVAS_H

#include "support/TextEdit.h"

#include <QImage>
#include <QPainter>

#include <memory>

namespace zephyr::bench {

/// A picture with an active painter.
class Canvas
{
public:
    Canvas() : mImage(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied), mPainter(begun(mImage)) {}

    QPainter& painter() { return *mPainter; }
    const QImage& image() const { return mImage; }

private:
    static std::unique_ptr<QPainter> begun(QImage& image)
    {
        image.fill(Qt::darkCyan);
        return std::make_unique<QPainter>(&image);
    }

    QImage mImage;
    std::unique_ptr<QPainter> mPainter;
};

} // namespace zephyr::bench

#endif
