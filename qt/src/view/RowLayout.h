#ifndef ZEPHYR_CONSOLE_QT_VIEW_ROWLAYOUT_H
#define ZEPHYR_CONSOLE_QT_VIEW_ROWLAYOUT_H

#include "CodePoints.h"
#include "ViewFont.h"

#include <QGlyphRun>
#include <QList>
#include <QTextLayout>

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

/// The text of one row, laid out: where each code point stands, and what is drawn for it. For the thread of its font.
class RowLayout
{
public:
    /// Lays out the text of a row, in code points.
    RowLayout(std::u32string_view text, const ViewFont& font);

    RowLayout(const RowLayout&) = delete;
    RowLayout& operator=(const RowLayout&) = delete;

    /// Where a cursor in front of the code point `index` stands, in logical pixels from the row's left end. An index
    /// within a grapheme counts as the grapheme's start, one beyond the text as its end.
    double xOf(std::size_t index) const;

    /// The index in front of which a cursor stands nearest to `x`, between graphemes.
    std::size_t indexNear(double x) const;

    /// The index of the first code point of the grapheme at `x`, or the text's size behind its end.
    std::size_t indexAt(double x) const;

    /// The index behind the grapheme that holds the code point `index`.
    std::size_t nextGrapheme(std::size_t index) const;

    /// The width of the text, in logical pixels, blanks at its end included.
    double width() const;

    /// The left and right ends of what `length` units of the layout from `begin` on cover, in logical pixels. There are
    /// several where letters from the left and from the right stand side by side.
    std::vector<std::pair<double, double>> spansOf(int begin, int length) const;

    /// What is drawn, with the row's top left corner as origin.
    const QList<QGlyphRun>& glyphs() const { return mGlyphs; }

    /// The layout itself, of one line at the origin.
    const QTextLayout& layout() const { return mLayout; }

    /// The position in the layout of the code point `index`.
    int unitAt(std::size_t index) const { return mText.unitAt(std::min(index, mText.size())); }

private:
    LaidOutText mText;
    QTextLayout mLayout;
    QList<QGlyphRun> mGlyphs;
};

} // namespace zephyr::console::qt

#endif
