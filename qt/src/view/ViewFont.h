#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWFONT_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWFONT_H

#include <QFont>
#include <QString>
#include <QTextOption>

#include <optional>

namespace zephyr::console::qt {

/// The font of a view and its measures, in logical pixels. Fonts share data that they load late, even between copies,
/// so each thread that lays text out makes one of its own.
class ViewFont
{
public:
    /// A monospaced font, or what the system has in its place. `pointSize` must be positive.
    ViewFont(const QString& family, double pointSize);

    /// Whether it is what would be made of these.
    bool isMadeOf(const QString& family, double pointSize) const
    {
        return mFamily == family && mPointSize == pointSize;
    }

    /// The font itself.
    const QFont& font() const { return mFont; }

    /// The distance between the baselines of two rows; at least 1.
    int lineHeight() const { return mLineHeight; }

    /// The height of the baseline above the bottom of a row.
    int descent() const { return mLineHeight - mAscent; }

    /// The distance of the baseline from the top of a row.
    int ascent() const { return mAscent; }

    /// The width of a space.
    double spaceWidth() const { return mSpaceWidth; }

    /// How text in this font is laid out: from left to right, as the prompt is, with tab stops every eight spaces.
    QTextOption textOption(QTextOption::WrapMode wrap) const;

    /// The width of each printable ASCII character, if they all have the same.
    const std::optional<double>& columnWidth() const { return mColumnWidth; }

private:
    QString mFamily; // as it was asked for; that of the font may be a list's first
    double mPointSize;
    QFont mFont;
    int mLineHeight;
    int mAscent;
    double mSpaceWidth;
    std::optional<double> mColumnWidth;
};

} // namespace zephyr::console::qt

#endif
