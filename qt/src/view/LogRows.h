#ifndef ZEPHYR_CONSOLE_QT_VIEW_LOGROWS_H
#define ZEPHYR_CONSOLE_QT_VIEW_LOGROWS_H

#include "Row.h"
#include "TextPlace.h"
#include "ViewFont.h"

#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

class EntryText;

/// The rows of a console's log at a width. Only what is asked for is read and laid out, in segments of a bounded length,
/// and a bounded part of that is kept. So neither a long log nor a long entry costs more than the rows that are looked
/// at. Rows depend on nothing but the log, the font and the width, so two objects agree.
///
/// An entry that is longer than a segment, of 4096 code points, begins a new row with each of its segments, if possible
/// behind a line feed. For one console and one thread.
class LogRows
{
public:
    /// Sets the font and the width of the rows, in logical pixels. Must be called before anything else.
    void setFormat(const std::shared_ptr<const ViewFont>& font, double width);

    /// The row that holds `place`. A place beyond its entry's end is on the last row, and one beyond the log is on the
    /// log's last row. The log must not be empty.
    Row rowAt(const Console& console, TextPlace place);

    /// The row that follows, or none at the log's end.
    std::optional<Row> rowAfter(const Console& console, const Row& row);

    /// The row before, or none at the beginning of the entry `first`.
    std::optional<Row> rowBefore(const Console& console, const Row& row, std::size_t first = 0);

    /// The last row, or none if the log has no entry from `first` on.
    std::optional<Row> lastRow(const Console& console, std::size_t first = 0);

    /// The number of code points that are kept laid out.
    std::size_t keptSize() const { return mKeptSize; }

private:
    using SegmentKey = std::pair<std::size_t, std::size_t>; // of the entry, and of the segment in it
    struct Segment
    {
        SegmentKey key;
        std::size_t size;
        bool isLast;           // of its entry
        std::vector<Row> rows; // at least one
    };

    std::size_t sizeOf(const Console& console, std::size_t entry) const;
    std::shared_ptr<const Segment> keptAt(TextPlace place);
    std::shared_ptr<const Segment> segmentAt(const Console& console, TextPlace place);
    std::shared_ptr<const Segment> segment(const EntryText& text, std::size_t entry, std::size_t index);
    Segment layOut(const EntryText& text, std::size_t entry, std::size_t index) const;
    void keep(const std::shared_ptr<const Segment>& made);

    std::shared_ptr<const ViewFont> mFont;
    double mWidth = 0.0;
    std::list<std::shared_ptr<const Segment>> mUsed; // latest first
    std::map<SegmentKey, std::list<std::shared_ptr<const Segment>>::iterator> mKept;
    std::size_t mKeptSize = 0;
};

} // namespace zephyr::console::qt

#endif
