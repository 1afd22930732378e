#include "ViewFont.h"

#include <QChar>
#include <QFontMetrics>
#include <QFontMetricsF>

#include <algorithm>

namespace zephyr::console::qt {

namespace {

constexpr char32_t kFirstPrintable = U' ';
constexpr char32_t kLastPrintable = U'~';

QFont fontOf(const QString& family, double pointSize)
{
    QFont font(family);
    font.setPointSizeF(pointSize);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

std::optional<double> columnWidthOf(const QFont& font)
{
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance(QChar(u' '));
    for (char32_t c = kFirstPrintable; c <= kLastPrintable; ++c) {
        if (metrics.horizontalAdvance(QChar(c)) != width) {
            return std::nullopt;
        }
    }
    return width;
}

} // namespace

ViewFont::ViewFont(const QString& family, double pointSize)
    : mFamily(family),
      mPointSize(pointSize),
      mFont(fontOf(family, pointSize)),
      mLineHeight(std::max(1, QFontMetrics(mFont).height())),
      mAscent(QFontMetrics(mFont).ascent()),
      mSpaceWidth(QFontMetricsF(mFont).horizontalAdvance(QChar(u' '))),
      mColumnWidth(columnWidthOf(mFont))
{}

QTextOption ViewFont::textOption(QTextOption::WrapMode wrap) const
{
    constexpr int kColumnsPerTab = 8;
    QTextOption option;
    option.setWrapMode(wrap);
    option.setTextDirection(Qt::LeftToRight);
    option.setTabStopDistance(mSpaceWidth * kColumnsPerTab);
    return option;
}

} // namespace zephyr::console::qt
