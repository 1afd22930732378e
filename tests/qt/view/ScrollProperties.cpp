#include "ViewTestText.h"
#include "view/FramePlan.h"
#include "view/RowScroll.h"
#include "view/ViewState.h"

#include <algorithm>
#include <limits>
#include <set>

namespace zephyr::console::qt {
namespace {

void writeSomething(Console& console)
{
    for (int count = *rc::gen::inRange(1, 4); count > 0; --count) {
        test::writeAnything(console, (*test::mixedText(12)).text);
    }
}

/// A scrolled log, and where it ought to stand: at an index into all rows.
class ScrolledLog
{
public:
    ScrolledLog()
    {
        writeSomething(mConsole);
        mRows.setFormat(test::anyFont(), test::anyWidth());
        mPage = *rc::gen::inRange(1, 12);
        mFirst = *rc::gen::inRange<std::size_t>(0, mConsole.logSize());
        readRows();
    }

    void act()
    {
        switch (*rc::gen::inRange(0, 4)) {
        case 0: write(); break;
        case 1: scrollBy(*rc::gen::inRange(-15, 16)); break;
        case 2: showAtTop(); break;
        default: reveal();
        }
    }

    void assertStands() const
    {
        if (mTop >= newestTop()) {
            RC_ASSERT(!mScroll.top().has_value());
        } else {
            RC_ASSERT(mScroll.top().has_value());
            RC_ASSERT(*mScroll.top() == mAll[std::size_t(mTop)].place());
            RC_ASSERT(mScroll.sizeSeen() == mSizeSeen);
        }
    }

private:
    static constexpr std::int64_t kFollowing = std::numeric_limits<std::int64_t>::max();

    RowScroll::Log log() { return {mConsole, mRows, mFirst, mPage}; }

    void readRows() { mAll = test::rowsForwards(mRows, mConsole, mFirst); }

    /// The index of the top row while the newest row is followed.
    std::int64_t newestTop() const
    {
        return std::max<std::int64_t>(0, static_cast<std::int64_t>(mAll.size()) - mPage);
    }

    void goTo(std::int64_t top)
    {
        if (mTop == kFollowing) {
            mSizeSeen = mConsole.logSize();
        }
        const std::int64_t stopped = std::max<std::int64_t>(0, top);
        mTop = stopped >= newestTop() ? kFollowing : stopped;
    }

    void write()
    {
        writeSomething(mConsole);
        readRows();
    }

    void scrollBy(std::int64_t rows)
    {
        mScroll.scrollBy(rows, log());
        goTo(std::min(mTop, newestTop()) - rows);
    }

    std::size_t anyRow() const { return *rc::gen::inRange<std::size_t>(0, mAll.size()); }

    TextPlace placeOn(const Row& row) const
    {
        return {row.entry, *rc::gen::inRange(row.begin, std::max(row.begin + 1, row.end))};
    }

    void showAtTop()
    {
        const std::size_t index = anyRow();
        mScroll.showAtTop(placeOn(mAll[index]), log());
        goTo(static_cast<std::int64_t>(index));
    }

    void reveal()
    {
        const std::size_t index = anyRow();
        const std::int64_t before = std::min(mTop, newestTop());
        mScroll.reveal(placeOn(mAll[index]), log());
        const std::int64_t after = indexOfTop();
        RC_ASSERT(after <= static_cast<std::int64_t>(index));
        RC_ASSERT(static_cast<std::int64_t>(index) < after + mPage);
        const std::int64_t middle = before + mPage / 2;
        if (middle == static_cast<std::int64_t>(index)) {
            RC_ASSERT(after == before);
        }
        goTo(after);
    }

    std::int64_t indexOfTop() const
    {
        if (!mScroll.top()) {
            return newestTop();
        }
        const auto isTop = [&](const Row& row) { return row.place() == *mScroll.top(); };
        const auto top = std::find_if(mAll.begin(), mAll.end(), isTop);
        RC_ASSERT(top != mAll.end());
        return top - mAll.begin();
    }

    Console mConsole;
    LogRows mRows;
    RowScroll mScroll;
    std::vector<Row> mAll; // from mFirst on
    std::size_t mFirst = 0;
    int mPage = 1;
    std::int64_t mTop = kFollowing;
    std::size_t mSizeSeen = 0;
};

RC_GTEST_PROP(RowScrollProperties, StandsWhereTheRowsThatWereScrolledPutIt, ())
{
    ScrolledLog log;
    for (int count = *rc::gen::inRange(0, 20); count > 0; --count) {
        log.act();
        log.assertStands();
    }
}

RC_GTEST_PROP(RowScrollProperties, GoesUpAndDownToWhereItWas, ())
{
    Console console;
    for (int i = 0; i < 10; ++i) {
        writeSomething(console);
    }
    LogRows rows;
    rows.setFormat(test::anyFont(), test::anyWidth());
    const RowScroll::Log log = {console, rows, 0, *rc::gen::inRange(1, 10)};
    RowScroll scroll;
    scroll.showAtTop(rows.rowAt(console, {*rc::gen::inRange<std::size_t>(0, console.logSize()), 0}).place(),
                     log);
    const auto before = scroll.top();
    const int count = *rc::gen::inRange(0, 30);
    scroll.scrollBy(count, log);
    if (scroll.top() == TextPlace{0, 0}) {
        return; // an end may have stopped it
    }
    scroll.scrollBy(-count, log);
    RC_ASSERT(scroll.top() == before);
}

/// The places of the rows of the log in a frame.
std::vector<TextPlace> placesOf(const FramePlan& plan)
{
    std::vector<TextPlace> places;
    for (const FramePlan::PlacedRow& placed : plan.log) {
        places.push_back(placed.row.place());
    }
    return places;
}

RC_GTEST_PROP(RowScrollProperties, ShowsEachRowWhenReadByPages, ())
{
    Console console;
    for (int i = 0; i < 10; ++i) {
        writeSomething(console);
    }
    const auto font = test::anyFont();
    const int width = static_cast<int>(test::anyWidth());
    const QSize size(width, font->lineHeight() * *rc::gen::inRange(1, 15));
    LogRows rows;
    rows.setFormat(font, rowWidth(size));
    const std::vector<Row> all = test::rowsForwards(rows, console);
    const std::int64_t towards = *rc::gen::element(1, -1);
    RowScroll scroll;
    ViewState state;
    const auto plan = [&] {
        state.top = scroll.top();
        state.sizeSeen = scroll.sizeSeen();
        return planFrame(state, console, {}, font, rows, size);
    };
    const int page = plan().page;
    RC_PRE(page >= 1);
    if (towards < 0) {
        scroll.scrollBy(static_cast<std::int64_t>(all.size()), {console, rows, 0, page});
    }
    std::set<TextPlace> seen;
    std::vector<TextPlace> before;
    for (std::vector<TextPlace> now = placesOf(plan()); now != before; now = placesOf(plan())) {
        seen.insert(now.begin(), now.end());
        before = now;
        scroll.scrollBy(towards * std::max(1, page - 1), {console, rows, 0, page});
    }
    RC_ASSERT(seen.size() == all.size());
}

} // namespace
} // namespace zephyr::console::qt
