#include "Finder.h"

#include "zephyr/console/Console.h"
#include "zephyr/console/Texts.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace zephyr::console::qt {

namespace {

// A slice, which takes some milliseconds.
constexpr std::size_t kSliceEntries = 4096;
constexpr std::size_t kSliceCodePoints = std::size_t{1} << 17;

/// A part of an entry's shownText().
LogPart readShownPart(const Console& console, std::size_t entry, std::size_t first, std::size_t count)
{
    constexpr std::u32string_view kShownPrompt = kPrompt;
    LogPart part = console.readLogPart(entry, first, count);
    if (part.type != Input) {
        return part;
    }
    const std::u32string_view prompt = kShownPrompt.substr(std::min(first, kShownPrompt.size()), count);
    part = console.readLogPart(entry, first - std::min(first, kShownPrompt.size()), count - prompt.size());
    part.text.insert(0, prompt);
    part.length += kShownPrompt.size();
    return part;
}

} // namespace

void Finder::start(std::u32string query, bool matchCase, std::size_t firstEntry)
{
    *this = Finder();
    mMatcher = TextMatcher(std::move(query), matchCase);
    mFirstEntry = firstEntry;
}

bool Finder::searchSlice(const Console& console)
{
    if (mMatcher.length() == 0) {
        return false;
    }
    mLogSize = std::max(console.logSize(), mFirstEntry);
    if (!std::exchange(mHasBegun, true)) {
        mNewer = Scan(mLogSize);
        mOlder = Scan(mLogSize);
    }
    Budget budget{kSliceEntries, kSliceCodePoints};
    while (mNewer.entry < mLogSize && !budget.isSpent()) {
        searchNewer(console, budget);
    }
    while (hasOlderToSearch() && !budget.isSpent()) {
        searchOlder(console, budget);
    }
    settleCurrent();
    return !isDone();
}

bool Finder::isDone() const
{
    return mMatcher.length() == 0 || (mHasBegun && mNewer.entry == mLogSize && !hasOlderToSearch());
}

double Finder::progress() const
{
    if (isDone()) {
        return 1.0;
    }
    if (!mHasBegun) {
        return 0.0;
    }
    const auto searchedOf = [](const Scan& scan) {
        return scan.length == 0 ? 0.0 : static_cast<double>(scan.offset) / static_cast<double>(scan.length);
    };
    const double searched =
        static_cast<double>(mNewer.entry - mOlder.entry) + searchedOf(mNewer) + searchedOf(mOlder);
    return searched / static_cast<double>(mLogSize - mFirstEntry);
}

std::optional<Finder::Current> Finder::current() const
{
    if (!mHasCurrent) {
        return std::nullopt;
    }
    return Current{mCurrent, mHits[mHits.size() - 1 - mCurrent]};
}

void Finder::next()
{
    if (!mHasCurrent) {
        selectNearest(kNewest);
    } else if (mCurrent + 1 < mHits.size()) {
        ++mCurrent;
    } else if (isDone()) {
        mCurrent = 0;
    }
}

void Finder::previous()
{
    if (!mHasCurrent) {
        selectNearest(kNewest);
    } else if (mCurrent > 0) {
        --mCurrent;
    } else if (isDone()) {
        mCurrent = mHits.size() - 1;
    }
}

void Finder::selectNearest(TextPlace place)
{
    mWanted = place;
    mHasCurrent = false;
    settleCurrent();
}

std::vector<TextPlace> Finder::hitsIn(TextPlace from, TextPlace to) const
{
    if (from >= to) {
        return {};
    }
    // A hit that begins before the range may end in it.
    const std::size_t reach = std::max<std::size_t>(length(), 1) - 1;
    from.offset -= std::min(from.offset, reach);
    const auto first = std::ranges::lower_bound(mHits, from);
    return {first, std::lower_bound(first, mHits.end(), to)};
}

/// Searches some of an entry, and adds what is found to the scan's hits, of which the newest are kept.
/// \return whether the entry has been searched to its end.
bool Finder::scanSome(const Console& console, std::size_t entry, Scan& scan, Budget& budget)
{
    const LogPart part = readShownPart(console, entry, scan.offset, budget.codePoints);
    scan.length = part.length;
    for (const char32_t c : part.text) {
        ++scan.offset;
        if (mMatcher.step(c, scan.matched)) {
            scan.hits.push_back({entry, scan.offset - mMatcher.length()});
        }
        if (scan.hits.size() > kMostHits) {
            scan.hits.pop_front();
            mHasDropped = true;
        }
    }
    budget.codePoints -= part.text.size();
    --budget.entries;
    return scan.offset >= scan.length;
}

/// Searches some of the oldest entry that was written after the search began and isn't searched yet.
void Finder::searchNewer(const Console& console, Budget& budget)
{
    const bool isSearched = scanSome(console, mNewer.entry, mNewer, budget);
    while (!mNewer.hits.empty()) {
        mHits.push_back(mNewer.hits.front());
        mNewer.hits.pop_front();
        ++mCurrent;
        if (mHits.size() > kMostHits) {
            mHits.pop_front();
            mHasDropped = true;
        }
    }
    mCurrent = std::min(mCurrent, std::max<std::size_t>(mHits.size(), 1) - 1);
    if (isSearched) {
        mNewer = Scan(mNewer.entry + 1);
    }
}

/// Searches some of the newest entry that isn't searched yet and was there when the search began.
void Finder::searchOlder(const Console& console, Budget& budget)
{
    if (!scanSome(console, mOlder.entry - 1, mOlder, budget)) {
        return;
    }
    while (!mOlder.hits.empty() && !isFull()) {
        mHits.push_front(mOlder.hits.back());
        mOlder.hits.pop_back();
    }
    mHasDropped = mHasDropped || !mOlder.hits.empty();
    mOlder = Scan(mOlder.entry - 1);
}

/// Finds the hit that is to be the current one, if there is none.
void Finder::settleCurrent()
{
    if (mHasCurrent || mHits.empty()) {
        return;
    }
    const auto after = std::ranges::upper_bound(mHits, mWanted);
    if (after == mHits.begin() && !isDone()) {
        return; // an older one may come
    }
    const auto found = after == mHits.begin() ? after : after - 1;
    mCurrent = static_cast<std::size_t>(mHits.end() - found) - 1;
    mHasCurrent = true;
}

} // namespace zephyr::console::qt
