#include "RowBreaks.h"

#include "CodePoints.h"

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
    std::vector<std::size_t> ends;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(1.0, ends.empty() ? widths.first : widths.others));
        ends.push_back(laidOut.indexAt(line.textStart() + line.textLength()));
    }
    layout.endLayout();
    return ends;
}

} // namespace zephyr::console::qt
