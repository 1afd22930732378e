#include "ViewTestText.h"
#include "view/FramePlan.h"
#include "view/RowScroll.h"
#include "view/ViewState.h"

#include <algorithm>

namespace zephyr::console::qt {
namespace {

/// A view of some console in a window of some size, scrolled somewhere.
class PlannedView
{
public:
    PlannedView()
    {
        for (int count = *rc::gen::inRange(0, 12); count > 0; --count) {
            test::writeAnything(console, (*test::mixedText(15)).text);
        }
        input.text = (*test::mixedText(60)).text;
        input.cursor = *rc::gen::inRange(0U, static_cast<std::uint32_t>(input.text.size()) + 2);
        font = test::anyFont();
        size = {static_cast<int>(test::anyWidth()), *rc::gen::inRange(0, 800)};
        fillState();
        rows.setFormat(font, rowWidth(size));
    }

    FramePlan plan() { return planFrame(state, console, input, font, rows, size); }

    /// A page of rows, as scrolling takes it.
    RowScroll::Log log(const FramePlan& plan)
    {
        return {console, rows, state.firstEntry, std::max(1, plan.page)};
    }

    Console console;
    ConsoleInput input;
    ViewState state;
    LogRows rows;
    std::shared_ptr<const ViewFont> font;
    QSize size;

private:
    void fillState()
    {
        state.firstEntry = *rc::gen::inRange<std::size_t>(0, console.logSize() + 1);
        if (*rc::gen::arbitrary<bool>()) {
            state.top = TextPlace{*rc::gen::inRange<std::size_t>(0, console.logSize() + 1),
                                  *rc::gen::inRange<std::size_t>(0, 50)};
            state.sizeSeen = *rc::gen::inRange<std::size_t>(0, console.logSize() + 1);
        }
        state.composition = LaidOutText((*test::mixedText(3)).text).text();
        state.find.query = (*test::mixedText(2)).text;
        if (*rc::gen::inRange(0, 3) == 0) {
            state.bar = ViewState::Bar{U"Find: ", (*test::mixedText()).text, 0, U"1 of 2", {}};
        }
        if (*rc::gen::inRange(0, 3) == 0) {
            state.recalled = (*test::mixedText()).text;
        }
        for (int count = *rc::gen::inRange(0, 9); count > 0; --count) {
            state.list.offers.push_back({(*test::mixedText(4)).text, (*test::mixedText(8)).text});
        }
        state.list.count = state.list.offers.size() + *rc::gen::inRange<std::size_t>(0, 100);
        if (!state.list.offers.empty() && *rc::gen::arbitrary<bool>()) {
            state.list.selected = *rc::gen::inRange<std::size_t>(0, state.list.offers.size());
        }
    }
};

RC_GTEST_PROP(FramePlanProperties, ItsRowsLieInTheWindowOneBelowTheOther, ())
{
    PlannedView view;
    const FramePlan plan = view.plan();
    std::vector<FramePlan::PlacedRow> placed = plan.log;
    placed.insert(placed.end(), plan.input.begin(), plan.input.end());
    for (std::size_t i = 1; i < placed.size(); ++i) {
        RC_ASSERT(placed[i].top == placed[i - 1].top + view.font->lineHeight());
    }
    RC_ASSERT(placed.front().top >= 0);
    constexpr int kScrollBarRoom = 60; // and far more than there is for it
    if (view.size.height() >= view.font->lineHeight() * 3 && view.size.width() >= kScrollBarRoom) {
        RC_ASSERT(placed.back().top + view.font->lineHeight() <= view.size.height());
        RC_ASSERT(plan.bar.isNull() || plan.bar.top() >= placed.back().top + view.font->lineHeight());
        const QRect window(QPoint(0, 0), view.size);
        for (const QRect& rect : {plan.mark, plan.track, plan.thumb, plan.list, plan.bar}) {
            RC_ASSERT(rect.isEmpty() || window.contains(rect));
        }
    }
    RC_ASSERT(static_cast<int>(plan.log.size()) <= plan.page);
}

RC_GTEST_PROP(FramePlanProperties, TheCursorIsInSight, ())
{
    PlannedView view;
    const FramePlan plan = view.plan();
    RC_ASSERT(!plan.input.empty());
    const FramePlan::PlacedRow& row = plan.cursorRow();
    RC_ASSERT(&row >= plan.input.data());
    RC_ASSERT(&row < plan.input.data() + plan.input.size());
    RC_ASSERT(row.row.begin <= plan.cursor);
    RC_ASSERT(plan.cursor <= row.row.end);
    RC_ASSERT(plan.list.isEmpty() ||
              !plan.list.intersects({0, row.top, view.size.width(), view.font->lineHeight()}));
    for (std::size_t i = 1; i < plan.input.size(); ++i) {
        RC_ASSERT(plan.input[i].row.begin == plan.input[i - 1].row.end);
    }
}

RC_GTEST_PROP(FramePlanProperties, ShowsTheRowsOfTheLogThatFollowItsTop, ())
{
    PlannedView view;
    const FramePlan plan = view.plan();
    const std::vector<Row> all = view.state.firstEntry < view.console.logSize()
                                     ? test::rowsForwards(view.rows, view.console, view.state.firstEntry)
                                     : std::vector<Row>();
    std::vector<std::string> shown;
    for (const FramePlan::PlacedRow& placed : plan.log) {
        shown.push_back(test::describe(placed.row));
    }
    const std::vector<std::string> expected = test::describe(all);
    const auto begin = std::search(expected.begin(), expected.end(), shown.begin(), shown.end());
    RC_ASSERT(begin != expected.end() || shown.empty());
    RC_ASSERT(shown.size() == std::min<std::size_t>(expected.size(), static_cast<std::size_t>(plan.page)));
    if (!view.state.top) {
        RC_ASSERT(begin + static_cast<std::ptrdiff_t>(shown.size()) == expected.end() || shown.empty());
    }
}

RC_GTEST_PROP(FramePlanProperties, TheThumbReachesTheEndsOfItsTrackAtTheEndsOfTheLog, ())
{
    PlannedView view;
    RowScroll scroll;
    FramePlan plan = view.plan();
    const auto show = [&] {
        view.state.top = scroll.top();
        view.state.sizeSeen = scroll.sizeSeen();
        plan = view.plan();
    };
    show();
    RC_PRE(!plan.track.isEmpty());
    RC_ASSERT(plan.track.contains(plan.thumb));
    RC_ASSERT(plan.thumb.bottom() == plan.track.bottom());
    int last = plan.thumb.top();
    while (scroll.top() != TextPlace{view.state.firstEntry, 0}) {
        const auto before = scroll.top();
        scroll.scrollBy(*rc::gen::inRange(1, 8), view.log(plan));
        RC_ASSERT(scroll.top() != before);
        show();
        RC_ASSERT(plan.track.contains(plan.thumb));
        RC_ASSERT(plan.thumb.top() <= last + 1); // as its length is rounded to pixels as well
        last = plan.thumb.top();
    }
    RC_ASSERT(plan.thumb.top() == plan.track.top());
}

RC_GTEST_PROP(FramePlanProperties, StaysInPlaceWhileEntriesAreWrittenAndCountsThem, ())
{
    PlannedView view;
    FramePlan plan = view.plan();
    RC_PRE(plan.page > 0);
    RowScroll scroll;
    scroll.scrollBy(*rc::gen::inRange(1, 20), view.log(plan));
    RC_PRE(scroll.top().has_value());
    view.state.top = scroll.top();
    view.state.sizeSeen = scroll.sizeSeen();
    plan = view.plan();
    const std::size_t before = view.console.logSize();
    RC_ASSERT(plan.newEntries == 0U);
    const int written = *rc::gen::inRange(1, 5);
    for (int i = 0; i < written; ++i) {
        test::writeAnything(view.console, (*test::mixedText(5)).text);
    }
    const FramePlan after = view.plan();
    RC_ASSERT(after.logSize == before + static_cast<std::size_t>(written));
    RC_ASSERT(after.newEntries == static_cast<std::size_t>(written));
    RC_ASSERT(after.log.size() == plan.log.size());
    for (std::size_t i = 0; i < plan.log.size(); ++i) {
        RC_ASSERT(test::describe(after.log[i].row) == test::describe(plan.log[i].row));
        RC_ASSERT(after.log[i].top == plan.log[i].top);
    }
}

/// The hits in an entry, one behind the other from its beginning.
std::vector<TextRange> hitsIn(const std::u32string& text, std::size_t entry, const std::u32string& query)
{
    std::vector<TextRange> hits;
    for (std::size_t at = text.find(query); at != std::u32string::npos;
         at = text.find(query, at + query.size())) {
        hits.push_back({{entry, at}, {entry, at + query.size()}});
    }
    return hits;
}

RC_GTEST_PROP(FramePlanProperties, MarksTheHitsInItsRows, ())
{
    PlannedView view;
    const std::u32string query =
        *rc::gen::element<std::u32string>(U"hello", U"l", U"ll", U"aa", U" a", U"a", U"1.5");
    view.console.write((*test::mixedText(20, {U"a", U"aa", U"hello", U" ", U"1.5"})).text, Output);
    view.state.find = {query, true, {}};
    const FramePlan plan = view.plan();
    std::vector<TextRange> expected;
    const ConsoleSnapshot snapshot = view.console.snapshot();
    for (std::size_t entry = 0; entry < snapshot.lines().size(); ++entry) {
        for (const TextRange& hit : hitsIn(shownText(snapshot.lines()[entry]), entry, query)) {
            const bool isInView = std::any_of(plan.log.begin(), plan.log.end(), [&](const auto& placed) {
                return placed.row.entry == entry && hit.from.offset < placed.row.end &&
                       hit.to.offset > placed.row.begin;
            });
            if (isInView) {
                expected.push_back(hit);
            }
        }
    }
    RC_ASSERT(plan.hits == expected);
}

RC_GTEST_PROP(PlaceAtShareProperties, GoesOnWithItsShare, ())
{
    Console console;
    for (int count = *rc::gen::inRange(0, 6); count > 0; --count) {
        test::writeAnything(console, (*test::mixedText()).text);
    }
    const auto first = *rc::gen::inRange<std::size_t>(0, console.logSize());
    TextPlace last = {first, 0};
    for (int share = 0; share <= 100; ++share) {
        const TextPlace place = placeAtShare(share / 100.0, first, console);
        RC_ASSERT(place >= last);
        RC_ASSERT(place.entry < console.logSize());
        last = place;
    }
    RC_ASSERT(placeAtShare(0.0, first, console) == (TextPlace{first, 0}));
}

} // namespace
} // namespace zephyr::console::qt
