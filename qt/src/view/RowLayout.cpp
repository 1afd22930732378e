#include "RowLayout.h"

#include <QRectF>
#include <QTextLine>
#include <QTextOption>

#include <algorithm>

namespace zephyr::console::qt {

namespace {

constexpr double kAnyWidth = 1 << 20; // logical pixels; wider than any row

/// `unit`, or the start of the grapheme that it is within.
int graphemeStart(const QTextLayout& layout, int unit)
{
    return layout.isValidCursorPosition(unit) ? unit : layout.previousCursorPosition(unit);
}

} // namespace

RowLayout::RowLayout(std::u32string_view text, const ViewFont& font)
    : mText(text), mLayout(mText.text(), font.font())
{
    QTextOption option = font.textOption(QTextOption::NoWrap);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    mLayout.setTextOption(option);
    mLayout.setCacheEnabled(true);
    mLayout.beginLayout();
    mLayout.createLine().setLineWidth(kAnyWidth);
    mLayout.endLayout();
    mGlyphs = mLayout.lineAt(0).glyphRuns();
}

double RowLayout::xOf(std::size_t index) const
{
    // Qt would take a position within a grapheme as its end.
    return mLayout.lineAt(0).cursorToX(graphemeStart(mLayout, unitAt(index)));
}

std::size_t RowLayout::indexNear(double x) const
{
    const int unit = mLayout.lineAt(0).xToCursor(x, QTextLine::CursorBetweenCharacters);
    return mText.indexAt(graphemeStart(mLayout, unit));
}

std::size_t RowLayout::indexAt(double x) const
{
    return x >= width() ? mText.size()
                        : mText.indexAt(graphemeStart(
                              mLayout, mLayout.lineAt(0).xToCursor(x, QTextLine::CursorOnCharacter)));
}

std::size_t RowLayout::nextGrapheme(std::size_t index) const
{
    return mText.indexAt(mLayout.nextCursorPosition(unitAt(index)));
}

std::vector<std::pair<double, double>> RowLayout::spansOf(int begin, int length) const
{
    const QTextLine line = mLayout.lineAt(0);
    const int end = begin + length;
    begin = graphemeStart(mLayout, begin);
    if (std::none_of(mGlyphs.begin(), mGlyphs.end(),
                     [](const QGlyphRun& run) { return run.isRightToLeft(); })) {
        return {{line.cursorToX(begin), line.cursorToX(end)}};
    }
    std::vector<std::pair<double, double>> spans;
    for (const QGlyphRun& run : line.glyphRuns(begin, end - begin)) { // each is of one direction
        const QRectF covered = run.boundingRect();
        spans.emplace_back(covered.left(), covered.right());
    }
    return spans;
}

double RowLayout::width() const
{
    return std::max(0.0,
                    mLayout.lineAt(0).naturalTextWidth()); // Qt's is negative for an object's place alone
}

} // namespace zephyr::console::qt
