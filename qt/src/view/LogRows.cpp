#include "LogRows.h"

#include "CodePoints.h"
#include "EntryText.h"
#include "Graphemes.h"
#include "RowBreaks.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/Texts.h"

#include <QChar>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr std::size_t kSegmentSize = 4096; // code points
// How far before its nominal place a segment may end, in code points. Far more than the marks of one letter: Unicode's
// stream-safe text has at most 30 (UAX #15).
constexpr std::size_t kSegmentSlack = 256;
constexpr std::size_t kMaxKept = std::size_t{1} << 18; // code points
constexpr std::size_t kEntryCost = 64;   // of a short entry, in code points, so that empty ones count as well
constexpr double kMaxHangingShare = 0.5; // of the width

bool isLineEnd(QChar c) { return c == u'\n' || c == u'\r'; }

/// Where the segment `index` begins: found from the text around it, so that nothing before needs to be read.
std::size_t segmentBegin(const EntryText& text, std::size_t index)
{
    const std::size_t nominal = index * kSegmentSize;
    if (index == 0 || nominal >= text.size()) {
        return std::min(nominal, text.size());
    }
    const std::u32string before = text.read(nominal - kSegmentSlack, kSegmentSlack + 1);
    const std::size_t lineFeed = before.rfind(U'\n', kSegmentSlack - 1);
    if (lineFeed != std::u32string::npos) {
        return nominal - kSegmentSlack + lineFeed + 1;
    }
    const LaidOutText laidOut(before);
    Graphemes graphemes(laidOut.text());
    int unit = graphemes.beginUpTo(laidOut.unitAt(kSegmentSlack));
    while (unit > 0 && isLineEnd(laidOut.text()[unit])) {
        unit = graphemes.beginBefore(unit); // a line's end alone would be an empty row
    }
    const std::size_t boundary = laidOut.indexAt(unit);
    return nominal - kSegmentSlack + (boundary > 0 ? boundary : kSegmentSlack);
}

/// How the kit's captured messages begin.
Tone toneOf(const EntryText& text)
{
    constexpr std::u32string_view kWarning = U"Qt warning: ";
    constexpr std::u32string_view kCritical = U"Qt critical: ";
    constexpr std::u32string_view kFatal = U"Qt fatal: ";
    if (text.type() == Input) {
        return Tone::Input;
    }
    const std::u32string begin = text.read(0, kCritical.size());
    const auto beginsWith = [&](std::u32string_view prefix) {
        return begin.compare(0, prefix.size(), prefix) == 0;
    };
    return beginsWith(kCritical) || beginsWith(kFatal) ? Tone::Error
           : beginsWith(kWarning)                      ? Tone::Warning
                                                       : Tone::Text;
}

/// Where the rows begin that don't begin an entry: below its text. A narrow window has no room for that.
double hangingIndent(const EntryText& text, const ViewFont& font, double width)
{
    const std::size_t spaces = text.type() == Input ? std::u32string_view(kPrompt).size() : text.indent();
    const double indent = static_cast<double>(spaces) * font.spaceWidth();
    return indent <= width * kMaxHangingShare ? indent : 0.0;
}

} // namespace

void LogRows::setFormat(const std::shared_ptr<const ViewFont>& font, double width)
{
    if (font != mFont || width != mWidth) {
        mFont = font;
        mWidth = width;
        mUsed.clear();
        mKept.clear();
        mKeptSize = 0;
    }
}

Row LogRows::rowAt(const Console& console, TextPlace place)
{
    std::shared_ptr<const Segment> segment = keptAt(place);
    if (segment == nullptr) {
        if (place.entry >= console.logSize()) {
            return *lastRow(console);
        }
        segment = segmentAt(console, place);
    }
    const auto after =
        std::upper_bound(segment->rows.begin(), segment->rows.end(), place.offset,
                         [](std::size_t offset, const Row& row) { return offset < row.begin; });
    return after == segment->rows.begin() ? *after : *std::prev(after);
}

std::optional<Row> LogRows::rowAfter(const Console& console, const Row& row)
{
    if (row.end < sizeOf(console, row.entry)) {
        return rowAt(console, {row.entry, row.end});
    }
    const TextPlace next{row.entry + 1, 0};
    if (keptAt(next) == nullptr && next.entry >= console.logSize()) {
        return std::nullopt;
    }
    return rowAt(console, next);
}

std::optional<Row> LogRows::rowBefore(const Console& console, const Row& row, std::size_t first)
{
    if (row.begin > 0) {
        return rowAt(console, {row.entry, row.begin - 1});
    }
    if (row.entry <= first) {
        return std::nullopt;
    }
    return rowAt(console, {row.entry - 1, sizeOf(console, row.entry - 1)});
}

std::optional<Row> LogRows::lastRow(const Console& console, std::size_t first)
{
    const std::size_t count = console.logSize();
    if (count <= first) {
        return std::nullopt;
    }
    return rowAt(console, {count - 1, sizeOf(console, count - 1)});
}

/// The size of an entry. That of a short one that is kept is known, and asking the log would take its lock.
std::size_t LogRows::sizeOf(const Console& console, std::size_t entry) const
{
    const auto kept = mKept.find({entry, 0});
    const bool isKnown = kept != mKept.end() && (*kept->second)->isLast;
    return isKnown ? (*kept->second)->rows.back().end : EntryText(console, entry).size();
}

/// The segment that holds a place, if it is kept and certain to be the one; else null. Entries never change, so the log
/// needs not be asked.
std::shared_ptr<const LogRows::Segment> LogRows::keptAt(TextPlace place)
{
    const auto kept = mKept.find({place.entry, place.offset / kSegmentSize});
    if (kept == mKept.end()) {
        return nullptr;
    }
    const std::shared_ptr<const Segment>& segment = *kept->second;
    if (place.offset < segment->rows.front().begin ||
        (place.offset >= segment->rows.back().end && !segment->isLast)) {
        return nullptr;
    }
    mUsed.splice(mUsed.begin(), mUsed, kept->second);
    return segment;
}

std::shared_ptr<const LogRows::Segment> LogRows::segmentAt(const Console& console, TextPlace place)
{
    const EntryText text(console, place.entry);
    const std::size_t last = text.size() > 0 ? (text.size() - 1) / kSegmentSize : 0;
    const std::size_t index = std::min(place.offset / kSegmentSize, last);
    // A segment may begin before its nominal place.
    const bool isInNext = index < last && place.offset >= segmentBegin(text, index + 1);
    return segment(text, place.entry, isInNext ? index + 1 : index);
}

std::shared_ptr<const LogRows::Segment> LogRows::segment(const EntryText& text, std::size_t entry,
                                                         std::size_t index)
{
    if (const auto kept = mKept.find({entry, index}); kept != mKept.end()) {
        mUsed.splice(mUsed.begin(), mUsed, kept->second);
        return *kept->second;
    }
    auto made = std::make_shared<const Segment>(layOut(text, entry, index));
    keep(made);
    return made;
}

LogRows::Segment LogRows::layOut(const EntryText& text, std::size_t entry, std::size_t index) const
{
    const std::size_t begin = segmentBegin(text, index);
    const std::size_t end = segmentBegin(text, index + 1);
    const std::u32string all = text.read(begin, end - begin);
    const double hanging = hangingIndent(text, *mFont, mWidth);
    const Tone tone = toneOf(text);
    Segment segment{{entry, index}, all.size() + kEntryCost, end == text.size(), {}};
    std::size_t line = 0; // offset in the segment at which the line begins that the next line feed ends
    do {
        const std::size_t lineFeed = std::min(all.find(U'\n', line), all.size());
        const std::u32string_view piece = std::u32string_view(all).substr(line, lineFeed - line);
        const double x = begin + line == 0 ? 0.0 : hanging; // an entry's indent is a part of its first line
        std::size_t from = 0;
        for (const std::size_t to :
             breakIntoRows(piece, *mFont, {mWidth - x, mWidth - hanging}, Wrap::AtWords)) {
            const bool isFirst = begin + line + from == 0;
            segment.rows.push_back({entry, begin + line + from, begin + line + to, isFirst ? 0.0 : hanging,
                                    tone, std::u32string(piece.substr(from, to - from))});
            from = to;
        }
        line = std::min(lineFeed + 1, all.size());
        segment.rows.back().end = begin + line;
    } while (line < all.size());
    return segment;
}

/// Keeps a segment, and lets go of those that weren't used for the longest time.
void LogRows::keep(const std::shared_ptr<const Segment>& made)
{
    const auto place = mKept.emplace(made->key, mUsed.end()).first;
    try {
        mUsed.push_front(made);
    } catch (...) {
        mKept.erase(place);
        throw;
    }
    place->second = mUsed.begin();
    mKeptSize += made->size;
    while (mKeptSize > kMaxKept) {
        mKeptSize -= mUsed.back()->size;
        mKept.erase(mUsed.back()->key);
        mUsed.pop_back();
    }
}

} // namespace zephyr::console::qt
