#include "RowBreaks.h"

#include "CodePoints.h"
#include "Graphemes.h"

#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

namespace zephyr::console::qt {

namespace {

/// Whether a text that Qt wouldn't break fits on one row, which needs no layout to tell.
bool fitsPlainly(std::u32string_view text, const ViewFont& font, double width)
{
    return font.columnWidth() && *font.columnWidth() * static_cast<double>(text.size()) <= width &&
           std::all_of(text.begin(), text.end(), [](char32_t c) { return c >= U' ' && c <= U'~'; });
}

} // namespace

std::vector<std::size_t> breakIntoRows(std::u32string_view text, const ViewFont& font, RowWidths widths,
                                       Wrap wrap)
{
    if (text.empty() || fitsPlainly(text, font, widths.first)) {
        return {text.size()};
    }
    const LaidOutText laidOut(text);
    QTextLayout layout(laidOut.text(), font.font());
    layout.setTextOption(font.textOption(wrap == Wrap::AtWords ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                                               : QTextOption::WrapAnywhere));
    Graphemes graphemes(laidOut.text());
    std::vector<std::size_t> ends;
    int behind = 0; // the last row's end
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(1.0, ends.empty() ? widths.first : widths.others));
        // Qt breaks between a blank and a mark on it, and where the script, the direction or the font changes.
        const int unit = line.textStart() + line.textLength();
        const int end = unit > behind ? graphemes.endFrom(unit) : behind;
        if (end > behind) { // Qt has an empty line behind a line separator that ends the text
            ends.push_back(laidOut.indexAt(end));
            behind = end;
        }
    }
    layout.endLayout();
    return ends;
}

} // namespace zephyr::console::qt
