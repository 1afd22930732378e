#ifndef ZEPHYR_CONSOLE_QT_VIEW_FINDER_H
#define ZEPHYR_CONSOLE_QT_VIEW_FINDER_H

#include "TextMatcher.h"
#include "TextPlace.h"

#include <cstddef>
#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Searches the log of a console for a text, a slice at a time, newest entries first, and keeps where it was found.
///
/// A hit lies within one entry, whose hits are counted from its start and don't overlap. Only the newest kMostHits are
/// kept. One of them is the current one, as soon as the search has got to it.
class Finder
{
public:
    /// How many hits are kept.
    static constexpr std::size_t kMostHits = 100'000;

    /// A hit and its number: 0 is the newest.
    struct Current
    {
        std::size_t index;
        TextPlace place;
    };

    /// Forgets all hits, and searches for `query` from the next slice on. An empty one is nowhere. Entries before
    /// `firstEntry` are left out. The newest hit is to be the current one, unless selectNearest() says otherwise.
    void start(std::u32string query, bool matchCase, std::size_t firstEntry);

    /// Searches the next slice of the log of `console`: some thousand entries or some hundred thousand code points.
    /// What was written since the last slice comes first. \return whether there is more to search. Throws
    /// `std::bad_alloc`; the next call then goes on.
    bool searchSlice(const Console& console);

    /// Whether everything was searched that was in the log at the last slice, or kMostHits were found.
    bool isDone() const;

    /// How much of the log was searched: from 0 to 1, which says isDone().
    double progress() const;

    /// The number of hits that are kept.
    std::size_t count() const { return mHits.size(); }

    /// Whether there may be older hits than those that are kept.
    bool hasMore() const { return mHasDropped || (isFull() && mOlder.entry > mFirstEntry); }

    /// The number of code points of each hit.
    std::size_t length() const { return mMatcher.length(); }

    /// The current hit, or nothing.
    std::optional<Current> current() const;

    /// Makes the next older hit the current one. After the oldest comes the newest, but not before the search is done.
    /// Without a current hit, it's the newest.
    void next();

    /// Makes the next newer hit the current one. After the newest comes the oldest, but not before the search is done.
    /// Without a current hit, it's the newest.
    void previous();

    /// Makes the newest hit at `place` or before it the current one, or else the oldest of all; now, or as soon as the
    /// search has got there.
    void selectNearest(TextPlace place);

    /// The hits of which some code point lies between the places, in ascending order. O(their number + log(count())).
    std::vector<TextPlace> hitsIn(TextPlace from, TextPlace to) const;

private:
    /// How far the search of an entry has got.
    struct Scan
    {
        explicit Scan(std::size_t entryToScan) : entry(entryToScan) {}

        std::size_t entry;
        std::size_t offset = 0;  // in code points; what comes before is searched
        std::size_t length = 0;  // of the entry, in code points; 0 until its first part was read
        std::size_t matched = 0; // code points of the query, at the end of what is searched
        std::deque<TextPlace> hits;
    };

    /// What is left of a slice.
    struct Budget
    {
        std::size_t entries;
        std::size_t codePoints;
        bool isSpent() const { return entries == 0 || codePoints == 0; }
    };

    bool scanSome(const Console& console, std::size_t entry, Scan& scan, Budget& budget);
    void searchNewer(const Console& console, Budget& budget);
    void searchOlder(const Console& console, Budget& budget);
    void settleCurrent();
    bool isFull() const { return mHits.size() >= kMostHits; }
    bool hasOlderToSearch() const { return mOlder.entry > mFirstEntry && !isFull(); }

    static constexpr TextPlace kNewest{kInputLine, std::numeric_limits<std::size_t>::max()};

    TextMatcher mMatcher;
    std::size_t mFirstEntry = 0;
    bool mHasBegun = false;      // whether the scans have a place to go on from
    std::size_t mLogSize = 0;    // at the last slice
    Scan mNewer{0};              // of the entry mNewer.entry, upwards from where the search began
    Scan mOlder{0};              // of the entry before mOlder.entry, downwards
    std::deque<TextPlace> mHits; // in ascending order
    bool mHasDropped = false;    // hits older than those
    std::size_t mCurrent = 0;    // counted from the newest hit, where there is a current one
    bool mHasCurrent = false;
    TextPlace mWanted = kNewest; // of the hit that is to become the current one
};

} // namespace zephyr::console::qt

#endif
