#include "HistorySearch.h"

#include "TextMatcher.h"
#include "zephyr/console/Console.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace zephyr::console::qt {

void HistorySearch::start(std::vector<std::u32string> history)
{
    mHistory = std::move(history);
    setQuery({});
}

void HistorySearch::setQuery(std::u32string_view query)
{
    const bool goesOn = !mQuery.empty() && query.starts_with(mQuery);
    mQuery = query;
    findMatches();
    if (mQuery.empty()) {
        mRecord.reset();
    }
    if (mMatches.empty()) {
        return;
    }
    const auto isReached = [&](std::size_t record) { return !goesOn || !mRecord || record <= *mRecord; };
    const auto match = std::ranges::find_if(mMatches, isReached);
    select(match == mMatches.end() ? 0 : static_cast<std::size_t>(match - mMatches.begin()));
}

std::u32string_view HistorySearch::line() const
{
    return mRecord ? std::u32string_view(mHistory[*mRecord]) : std::u32string_view();
}

bool HistorySearch::older() { return select(mSelected + 1); }

bool HistorySearch::newer() { return mSelected > 0 && select(mSelected - 1); }

void HistorySearch::findMatches()
{
    const TextMatcher matcher(mQuery, false);
    std::unordered_set<std::u32string_view> seen;
    mMatches.clear();
    mSelected = 0;
    for (std::size_t record = mHistory.size(); record-- > 0;) {
        const std::u32string& line = mHistory[record];
        if (matcher.isIn(line) && seen.insert(line).second) {
            mMatches.push_back(record);
        }
    }
}

bool HistorySearch::select(std::size_t match)
{
    if (match >= mMatches.size()) {
        return false;
    }
    mSelected = match;
    mRecord = mMatches[match];
    return true;
}

void recallRecord(const Console& console, std::size_t record, const std::function<void(Qt::Key)>& press)
{
    const std::size_t size = console.history().size();
    if (record >= size) {
        return;
    }
    // Nothing tells which record is recalled at the moment. Down leads away from all of them, and empties the line.
    bool isEmpty = false;
    for (std::size_t i = 0; i < size && !isEmpty; ++i) {
        press(Qt::Key_Down);
        isEmpty = console.activeInput().empty();
    }
    for (std::size_t i = record; i < size; ++i) {
        press(Qt::Key_Up);
    }
}

} // namespace zephyr::console::qt
