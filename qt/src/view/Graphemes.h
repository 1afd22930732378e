#ifndef ZEPHYR_CONSOLE_QT_VIEW_GRAPHEMES_H
#define ZEPHYR_CONSOLE_QT_VIEW_GRAPHEMES_H

#include <QString>
#include <QTextBoundaryFinder>

namespace zephyr::console::qt {

/// Finds where the graphemes of a text end, in UTF-16 units.
///
/// Qt takes what belongs to no script at the beginning of a text, such as emoji, to be of the first script that follows,
/// and in Thai each unit may then be a boundary, within emoji too. A letter that stands before the text prevents that.
class Graphemes
{
public:
    explicit Graphemes(const QString& text) : mFinder(QTextBoundaryFinder::Grapheme, u'x' + text) {}

    /// Whether a grapheme ends at `unit`, which must be behind the beginning of the text.
    bool endsAt(int unit)
    {
        mFinder.setPosition(unit + 1);
        return mFinder.isAtBoundary();
    }

    /// `unit`, or the end of the grapheme that it is within. It must be behind the beginning of the text.
    int endFrom(int unit) { return endsAt(unit) ? unit : static_cast<int>(mFinder.toNextBoundary()) - 1; }

    /// `unit`, or the beginning of the grapheme that it is within: 0 for one that begins before the text.
    int beginUpTo(int unit) { return endsAt(unit) ? unit : begin(); }

    /// The beginning of the grapheme before the one that begins at `unit`, or 0.
    int beginBefore(int unit)
    {
        mFinder.setPosition(unit + 1);
        return begin();
    }

private:
    int begin()
    {
        const auto previous = static_cast<int>(mFinder.toPreviousBoundary());
        return previous > 0 ? previous - 1 : 0;
    }

    QTextBoundaryFinder mFinder;
};

} // namespace zephyr::console::qt

#endif
