#include "FramePlan.h"

#include "EntryText.h"
#include "InputRows.h"
#include "TextMatcher.h"
#include "ViewState.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QFontMetricsF>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr int kScrollBarWidth = 6;
constexpr int kScrollBarMargin = 2; // to the text
constexpr int kMinThumb = 20;
constexpr int kMaxListRows = 8;
// How far before the view hits are looked for, in code points. Hits don't overlap, so in a text such as a dashed line the
// ones before decide where a hit begins.
constexpr std::size_t kHitReach = 4096;
constexpr std::size_t kMaxListColumns = 200; // of a text that is measured

/// The width of a text's first columns, in logical pixels.
int widthOf(const std::u32string& text, const ViewFont& font)
{
    const std::size_t size = std::min(text.size(), kMaxListColumns);
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(size);
    const bool isAscii = std::all_of(text.begin(), end, [](char32_t c) { return c >= U' ' && c <= U'~'; });
    const double width =
        isAscii && font.columnWidth()
            ? *font.columnWidth() * static_cast<double>(size)
            : QFontMetricsF(font.font())
                  .horizontalAdvance(QString::fromStdU32String(withSigns(text.substr(0, size))));
    return static_cast<int>(std::ceil(width));
}

/// How many rows there is room for: the baseline of row k is at (k + 1) times the line height, as ConsoleRenderer's.
int capacityOf(const ViewFont& font, int height)
{
    return std::max(1, (height - font.descent()) / font.lineHeight());
}

int topOf(int row, const ViewFont& font) { return (row + 1) * font.lineHeight() - font.ascent(); }

/// The newest rows of the log, as many as there is room for.
std::vector<Row> newestRows(const Console& console, LogRows& rows, std::size_t first, int page)
{
    std::vector<Row> newest;
    if (page <= 0) {
        return newest;
    }
    newest.reserve(static_cast<std::size_t>(page));
    std::optional<Row> row = rows.lastRow(console, first);
    while (row) {
        newest.push_back(std::move(*row));
        row = static_cast<int>(newest.size()) < page ? rows.rowBefore(console, newest.back(), first)
                                                     : std::nullopt;
    }
    std::reverse(newest.begin(), newest.end());
    return newest;
}

/// The rows from `top` on; fewer than a page where the log ends.
std::vector<Row> rowsFrom(TextPlace top, const Console& console, LogRows& rows, int page)
{
    std::vector<Row> found;
    std::optional<Row> row = rows.rowAt(console, top);
    while (row && static_cast<int>(found.size()) < page) {
        found.push_back(std::move(*row));
        row = rows.rowAfter(console, found.back());
    }
    return found;
}

/// Makes one plan.
class Planner
{
public:
    Planner(const ViewState& state, const Console& console, LogRows& rows, FramePlan& plan)
        : mState(state),
          mConsole(console),
          mRows(rows),
          mPlan(plan),
          mFont(*plan.font),
          mCapacity(capacityOf(mFont, plan.size.height())),
          mBarRows(state.bar && mCapacity > 1 ? 1 : 0)
    {}

    void plan(const ConsoleInput& input)
    {
        const InputRows inputRows(shownInput(input), mState.composition, mFont, rowWidth(mPlan.size));
        const int room = mCapacity - mBarRows;
        const int inputCount = std::min(static_cast<int>(inputRows.rows().size()), std::max(1, room / 2));
        mPlan.page = room - inputCount;
        mPlan.logSize = mConsole.logSize();
        placeLog();
        findHits();
        placeInput(inputRows, inputCount);
        placeBar();
        placeMark();
        placeScrollBar();
        placeList();
    }

private:
    ConsoleInput shownInput(const ConsoleInput& input) const
    {
        return mState.recalled
                   ? ConsoleInput{*mState.recalled, static_cast<std::uint32_t>(mState.recalled->size())}
                   : input;
    }

    void placeLog()
    {
        std::vector<Row> found;
        if (mState.top && mConsole.logSize() > 0) {
            found =
                rowsFrom(std::max(*mState.top, TextPlace{mState.firstEntry, 0}), mConsole, mRows, mPlan.page);
            mFollows = static_cast<int>(found.size()) < mPlan.page;
        }
        if (mFollows) {
            found = newestRows(mConsole, mRows, mState.firstEntry, mPlan.page);
        }
        for (Row& row : found) {
            const int top = topOf(static_cast<int>(mPlan.log.size()), mFont);
            mPlan.log.push_back({std::move(row), top});
        }
    }

    /// Looks for the hits of which some part is in view.
    void findHits()
    {
        const TextMatcher matcher(mState.find.query, mState.find.matchesCase);
        if (matcher.length() == 0 || mPlan.log.empty()) {
            return;
        }
        for (auto first = mPlan.log.begin(); first != mPlan.log.end();) {
            const std::size_t entry = first->row.entry;
            const auto last = std::find_if(first, mPlan.log.end(), [&](const FramePlan::PlacedRow& placed) {
                return placed.row.entry != entry;
            });
            const std::size_t reach = std::max(kHitReach, matcher.length());
            const std::size_t begin = first->row.begin - std::min(first->row.begin, reach);
            findHits(matcher, entry, begin, std::prev(last)->row.end + matcher.length() - 1);
            first = last;
        }
        std::erase_if(mPlan.hits,
                      [this](const TextRange& hit) { return hit.to <= mPlan.log.front().row.place(); });
    }

    void findHits(const TextMatcher& matcher, std::size_t entry, std::size_t begin, std::size_t end)
    {
        std::size_t matched = 0;
        std::size_t behind = begin; // the offset behind the code point that is looked at
        for (const char32_t c : EntryText(mConsole, entry).read(begin, end - begin)) {
            ++behind;
            if (matcher.step(c, matched)) {
                mPlan.hits.push_back({{entry, behind - matcher.length()}, {entry, behind}});
            }
        }
    }

    void placeInput(const InputRows& input, int count)
    {
        mPlan.cursor = input.cursor();
        mPlan.composition = input.compositionBegin();
        const int total = static_cast<int>(input.rows().size());
        const int cursorRow = static_cast<int>(input.cursorRow());
        const int first = std::clamp(cursorRow - count / 2, 0, total - count);
        for (int i = first; i < first + count; ++i) {
            mPlan.input.push_back({input.rows()[static_cast<std::size_t>(i)], topOf(usedRows(), mFont)});
        }
    }

    int usedRows() const { return static_cast<int>(mPlan.log.size() + mPlan.input.size()); }

    void placeBar()
    {
        if (mBarRows > 0) {
            mPlan.bar = QRect(0, topOf(usedRows(), mFont), mPlan.size.width(), mFont.lineHeight());
        }
    }

    void placeMark()
    {
        if (mFollows || mPlan.log.empty()) {
            return;
        }
        const std::size_t seen = std::max(mState.sizeSeen, mPlan.log.back().row.entry + 1);
        mPlan.newEntries = mPlan.logSize - std::min(mPlan.logSize, seen);
        if (mPlan.newEntries > 0) {
            const int room = std::max(0, mPlan.size.width() - kScrollBarWidth - kScrollBarMargin);
            mPlan.markText = QString(QStringLiteral("%1 new below")).arg(mPlan.newEntries).toStdU32String();
            const int width = std::min(room, mFont.lineHeight() + widthOf(mPlan.markText, mFont));
            mPlan.mark = QRect(room - width, mPlan.log.back().top, width, mFont.lineHeight());
        }
    }

    /// The share of the log, from 0 to 1, that comes before an offset of an entry; `ofEmpty` is the part of an empty
    /// entry that does.
    double shareBefore(std::size_t entry, std::size_t offset, double ofEmpty) const
    {
        const auto count = static_cast<double>(mPlan.logSize - std::min(mPlan.logSize, mState.firstEntry));
        const std::size_t size = EntryText(mConsole, entry).size();
        const double part = size > 0 ? static_cast<double>(offset) / static_cast<double>(size) : ofEmpty;
        const double before = static_cast<double>(entry - std::min(entry, mState.firstEntry)) + part;
        return std::min(1.0, before / std::max(1.0, count)); // the log may have grown since its size was read
    }

    void placeScrollBar()
    {
        if (static_cast<int>(mPlan.log.size()) < mPlan.page || mPlan.log.empty()) {
            return;
        }
        const Row& top = mPlan.log.front().row;
        const Row& bottom = mPlan.log.back().row;
        const bool isAll = top.place() <= TextPlace{mState.firstEntry, 0} && mFollows;
        const int height = mPlan.log.back().top + mFont.lineHeight();
        if (isAll || height <= kMinThumb) {
            return;
        }
        const double begin = shareBefore(top.entry, top.begin, 0.0);
        const double end = mFollows ? 1.0 : shareBefore(bottom.entry, bottom.end, 1.0);
        const int length = std::max(kMinThumb, static_cast<int>(std::lround((end - begin) * height)));
        const double outside = begin + (1.0 - end);
        const double place = outside > 0.0 ? begin / outside : 1.0;
        const int left = mPlan.size.width() - kScrollBarWidth;
        mPlan.track = QRect(left, 0, kScrollBarWidth, height);
        mPlan.thumb =
            QRect(left, static_cast<int>(std::lround(place * (height - length))), kScrollBarWidth, length);
    }

    void placeList()
    {
        const int count = static_cast<int>(mState.list.offers.size());
        const int above = static_cast<int>(mPlan.log.size());
        const int below = mCapacity - mBarRows - usedRows();
        const int wanted = std::min(count, kMaxListRows);
        const bool isAbove = above >= wanted || above >= below;
        const int room = isAbove ? above : below;
        const int rows = std::min(wanted, room);
        if (rows <= 0) {
            return;
        }
        const int selected = static_cast<int>(mState.list.selected.value_or(0));
        const int first = std::clamp(selected - rows / 2, 0, count - rows);
        mPlan.listFirst = static_cast<std::size_t>(first);
        mPlan.noteText = noteOf(mPlan.listFirst, static_cast<std::size_t>(rows));
        const int top = topOf(isAbove ? above - rows : usedRows() + mBarRows, mFont);
        const int left = static_cast<int>(3 * mFont.spaceWidth());
        const int height = mFont.lineHeight();
        const int width = std::max(0, std::min(listWidth(), mPlan.size.width() - left - kScrollBarWidth));
        mPlan.list = QRect(left, top, width, rows * height);
        if (!mPlan.noteText.empty() && rows < room) { // at the end that is farther from the line
            mPlan.note = QRect(left, isAbove ? top - height : top + rows * height, width, height);
        }
    }

    std::u32string noteOf(std::size_t first, std::size_t rows) const
    {
        if (mState.list.areSuggestions) {
            return U"Did you mean:";
        }
        if (rows >= mState.list.count) {
            return {};
        }
        const std::size_t begin = mState.list.first + first;
        return QString(QStringLiteral("%1 to %2 of %3"))
            .arg(begin + 1)
            .arg(begin + rows)
            .arg(mState.list.count)
            .toStdU32String();
    }

    int listWidth()
    {
        const int space = static_cast<int>(std::ceil(mFont.spaceWidth()));
        int description = 0;
        for (const ViewState::Offer& offer : mState.list.offers) {
            mPlan.listTexts = std::max(mPlan.listTexts, widthOf(offer.text, mFont));
            description = std::max(description, widthOf(offer.description, mFont));
        }
        const int both = mPlan.listTexts + (description > 0 ? description + 2 * space : 0);
        return std::max(both, widthOf(mPlan.noteText, mFont)) + 2 * space;
    }

    const ViewState& mState;
    const Console& mConsole;
    LogRows& mRows;
    FramePlan& mPlan;
    const ViewFont& mFont;
    const int mCapacity;
    const int mBarRows;
    bool mFollows = true;
};

} // namespace

QSize coveredSize(const ViewState& state, QSize size)
{
    return state.look.part == Look::Part::UpperHalf ? QSize(size.width(), (size.height() + 1) / 2) : size;
}

double rowWidth(QSize size) { return std::max(1, size.width() - kScrollBarWidth - kScrollBarMargin); }

FramePlan planFrame(const ViewState& state, const Console& console, const ConsoleInput& input,
                    const std::shared_ptr<const ViewFont>& font, LogRows& rows, QSize size)
{
    FramePlan plan;
    plan.font = font;
    plan.size = coveredSize(state, size);
    rows.setFormat(font, rowWidth(plan.size));
    Planner(state, console, rows, plan).plan(input);
    return plan;
}

const FramePlan::PlacedRow* FramePlan::rowNear(int y) const
{
    const PlacedRow* nearest = nullptr;
    for (const std::vector<PlacedRow>* const rows : {&log, &input}) {
        for (const PlacedRow& placed : *rows) {
            if (nearest == nullptr || placed.top <= y) {
                nearest = &placed;
            }
        }
    }
    return nearest;
}

const FramePlan::PlacedRow& FramePlan::cursorRow() const
{
    const auto after =
        std::upper_bound(input.begin(), input.end(), cursor, [](std::size_t offset, const PlacedRow& placed) {
            return offset < placed.row.begin;
        });
    return after == input.begin() ? *after : *std::prev(after);
}

TextPlace placeAtShare(double share, std::size_t firstEntry, const Console& console)
{
    const std::size_t size = console.logSize();
    if (size <= firstEntry) {
        return {size, 0};
    }
    const double at = std::clamp(share, 0.0, 1.0) * static_cast<double>(size - firstEntry);
    const std::size_t entry = std::min(size - 1, firstEntry + static_cast<std::size_t>(at));
    const double part = std::min(1.0, at - static_cast<double>(entry - firstEntry));
    return {entry, static_cast<std::size_t>(part * static_cast<double>(EntryText(console, entry).size()))};
}

} // namespace zephyr::console::qt
