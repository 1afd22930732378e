#ifndef ZEPHYR_CONSOLE_QT_VIEW_SELECTION_H
#define ZEPHYR_CONSOLE_QT_VIEW_SELECTION_H

#include "TextPlace.h"

#include <QString>

#include <algorithm>
#include <optional>

namespace zephyr::console {
class Console;
struct ConsoleInput;
} // namespace zephyr::console

namespace zephyr::console::qt {

/// Selected text: from one place up to another.
struct TextRange
{
    TextPlace from;
    TextPlace to; ///< Behind the last code point. Not before `from`.

    bool isEmpty() const { return from == to; }
    bool operator==(const TextRange&) const = default;
};

/// What a selection grows by.
enum class Unit
{
    Grapheme,
    Word,
    Line ///< Between line feeds.
};

/// The text of a range as it was written: the prompt of an echoed line where it is selected, a line feed between two
/// entries, none where a row is full. Throws `std::bad_alloc`.
QString textOf(const TextRange& range, const Console& console, const ConsoleInput& input);

/// The unit of text around `place`. At a boundary of words it is the one behind; where a line ends there is none, and the
/// range is empty, as it is for a grapheme. Of one that is very long only the part around the place counts: some thousands
/// of code points of a word, about a million on each side of a line.
TextRange unitAround(TextPlace place, Unit unit, const Console& console, const ConsoleInput& input);

/// What the user has selected: where it began, in what units, and where it ends.
class Selection
{
public:
    /// Begins at a unit of text.
    void begin(const TextRange& anchor, Unit unit)
    {
        mAnchor = anchor;
        mRange = anchor;
        mUnit = unit;
    }

    /// Ends at another unit of text, before or behind the first one. It begins there if it has begun nowhere.
    void extendTo(const TextRange& end)
    {
        const TextRange anchor = mAnchor.value_or(end);
        mAnchor = anchor;
        mRange = {std::min(anchor.from, end.from), std::max(anchor.to, end.to)};
    }

    /// Ends the range at a place that is in it.
    void cutAt(TextPlace end) { mRange.to = end; }

    /// Selects nothing, and forgets where it began.
    void clear()
    {
        mAnchor.reset();
        mRange = {};
        mUnit = Unit::Grapheme;
    }

    /// What it grows by.
    Unit unit() const { return mUnit; }

    /// What is selected. Empty for nothing.
    const TextRange& range() const { return mRange; }

private:
    std::optional<TextRange> mAnchor;
    TextRange mRange;
    Unit mUnit = Unit::Grapheme;
};

} // namespace zephyr::console::qt

#endif
