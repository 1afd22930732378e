#ifndef ZEPHYR_CONSOLE_QT_ACCESSIBLE_ACCESSIBLETEXT_H
#define ZEPHYR_CONSOLE_QT_ACCESSIBLE_ACCESSIBLETEXT_H

#include "../view/TextPlace.h"

#include <QString>

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

struct ViewState;

/// A console as one text, for assistive technology: the newest entries of the log, each with a line feed behind it, then
/// the input line behind its prompt, and the bar for finding or recalling below that while it is open. It is a copy that
/// changes with update() only, so that offsets stay true between two updates. It draws nothing.
///
/// Offsets count UTF-16 code units, as Qt does. However long the log is, at most kMostUnits and kMostEntries of it are
/// held, and an update reads no more than that.
class AccessibleText
{
public:
    static constexpr qsizetype kMostUnits = 1 << 16; ///< Of the log's text.
    static constexpr std::size_t kMostEntries = 1000;

    /// A replacement of a part of the text.
    struct Change
    {
        int position;
        QString removed;
        QString inserted;
        bool isOutput; ///< Of the log, not of a line that is being typed.

        bool operator==(const Change&) const = default;
    };

    /// Brings the text up to date. \return what changed, each change in offsets of the text after those before it.
    /// Throws `std::bad_alloc`, after which the next update may return less than changed.
    std::vector<Change> update(const Console& console, const ViewState& state);

    /// Empties the text. The next update() reads everything anew.
    void clear();

    /// The text. The reference is valid until it changes.
    const QString& text() const { return mText; }

    /// Where the cursor is.
    int cursor() const { return mCursor; }

    /// What is at an offset of the text, or none on the bar.
    std::optional<TextPlace> placeAt(int offset) const;

    /// The offset of a place, or none if the text doesn't hold it.
    std::optional<int> offsetOf(TextPlace place) const;

private:
    /// A run of one entry's text.
    struct Piece
    {
        std::size_t entry;
        std::size_t offset; // in the entry, of the first code point that is held
        qsizetype begin;    // in the text
    };

    /// Text of the log that is about to be added.
    struct Added
    {
        std::vector<Piece> pieces; // their begins count from the first one's
        QString text;
        bool isAll; // that was asked for
    };

    static Added readNew(const Console& console, std::size_t first, std::size_t size);
    void updateLog(const Console& console, std::size_t firstEntry, std::vector<Change>& changes);
    void updateLines(const Console& console, const ViewState& state, std::vector<Change>& changes);
    void dropBefore(std::size_t piece, std::vector<Change>& changes);
    std::size_t piecesTooMany() const;
    qsizetype endOf(std::size_t piece) const;

    QString mText;
    std::deque<Piece> mPieces;
    qsizetype mLogEnd = 0;    // in the text
    qsizetype mInputEnd = 0;  // in the text
    std::size_t mLogSize = 0; // number of entries at the last update
    int mCursor = 0;
};

} // namespace zephyr::console::qt

#endif
