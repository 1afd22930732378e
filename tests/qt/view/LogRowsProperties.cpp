#include "ViewTestText.h"
#include "view/LogRows.h"
#include "view/Selection.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace zephyr::console::qt {
namespace {

using Boundaries = std::vector<std::size_t>;

void writeEntries(Console& console, int most)
{
    for (int count = *rc::gen::inRange(1, most + 1); count > 0; --count) {
        test::writeAnything(console, (*test::mixedText()).text);
    }
}

/// Writes one entry that is about as long as what is laid out at once or longer, from a few repeated pieces.
void writeLongEntry(Console& console)
{
    const std::u32string part = (*test::mixedText(60)).text + U"x";
    std::u32string text;
    const auto size = *rc::gen::inRange<std::size_t>(3900, 6000);
    while (text.size() < size) {
        text += part;
    }
    test::writeAnything(console, text);
}

std::map<std::size_t, std::u32string> shownTexts(const Console& console)
{
    std::map<std::size_t, std::u32string> texts;
    const ConsoleSnapshot snapshot = console.snapshot();
    for (std::size_t entry = 0; entry < snapshot.lines().size(); ++entry) {
        texts[entry] = shownText(snapshot.lines()[entry]);
    }
    return texts;
}

/// Each code point is on one row, in order, and each line of the log begins a row.
void assertWhole(const std::vector<Row>& rows, const Console& console)
{
    std::map<std::size_t, std::u32string> texts;
    for (const Row& row : rows) {
        RC_ASSERT(row.begin == texts[row.entry].size());
        RC_ASSERT(row.text.find(U'\n') == std::u32string::npos);
        RC_ASSERT(row.end >= row.begin + row.text.size());
        RC_ASSERT(row.end <= row.begin + row.text.size() + 1);
        texts[row.entry] += row.text;
        if (row.end > row.begin + row.text.size()) {
            texts[row.entry] += U'\n';
        }
    }
    RC_ASSERT(texts == shownTexts(console));
}

/// Whether a row may end at `offset` of `text`: between graphemes, or within one that is very long.
bool isAllowedEnd(const std::u32string& line, const Boundaries& boundaries, std::size_t offset)
{
    constexpr std::size_t kLongGrapheme = 200;
    if (offset == 0 || offset >= line.size()) {
        return true;
    }
    const auto next = std::lower_bound(boundaries.begin(), boundaries.end(), offset);
    return *next == offset || *next - *(next - 1) >= kLongGrapheme;
}

void assertNoGraphemeCut(const std::vector<Row>& rows, const Console& console)
{
    const auto texts = shownTexts(console);
    std::size_t lineBegin = 0;
    std::u32string line;
    Boundaries boundaries;
    for (const Row& row : rows) {
        const std::u32string& text = texts.at(row.entry);
        if (row.begin == 0 || text[row.begin - 1] == U'\n') {
            lineBegin = row.begin;
            line = text.substr(lineBegin, text.find(U'\n', lineBegin) - lineBegin);
            boundaries = test::graphemeBoundaries(line);
        }
        RC_ASSERT(isAllowedEnd(line, boundaries, row.end - lineBegin));
    }
}

/// What holds for the rows of any log.
void assertRows(const Console& console, const std::shared_ptr<const ViewFont>& font, double width)
{
    LogRows rows;
    rows.setFormat(font, width);
    const std::vector<Row> forwards = test::rowsForwards(rows, console);
    assertWhole(forwards, console);
    assertNoGraphemeCut(forwards, console);
    LogRows others;
    others.setFormat(font, width);
    RC_ASSERT(test::describe(test::rowsBackwards(others, console)) == test::describe(forwards));
}

RC_GTEST_PROP(LogRowsProperties, HoldEachCodePointOnceAndCutNoGrapheme, ())
{
    Console console;
    writeEntries(console, 6);
    assertRows(console, test::anyFont(), test::anyWidth());
}

RC_GTEST_PROP(LogRowsProperties, HoldEachCodePointOfALongEntryOnceAndCutNoGrapheme, ())
{
    Console console;
    writeLongEntry(console);
    assertRows(console, test::anyFont(), test::anyWidth());
}

RC_GTEST_PROP(LogRowsProperties, AreFoundByEachPlaceOnThem, ())
{
    Console console;
    *rc::gen::arbitrary<bool>() ? writeEntries(console, 4) : writeLongEntry(console);
    LogRows rows;
    rows.setFormat(test::anyFont(), test::anyWidth());
    const std::vector<Row> all = test::rowsForwards(rows, console);
    const Row row = *rc::gen::elementOf(all);
    const auto offset = *rc::gen::inRange<std::size_t>(row.begin, std::max(row.begin + 1, row.end));
    RC_ASSERT(test::describe(rows.rowAt(console, {row.entry, offset})) == test::describe(row));
    const auto beyond = rows.rowAt(console, {row.entry, row.end});
    const bool isLast = row.end == shownTexts(console)[row.entry].size();
    RC_ASSERT(beyond.begin == (isLast ? row.begin : row.end));
}

RC_GTEST_PROP(LogRowsProperties, BeginInTheWindow, ())
{
    Console console;
    writeEntries(console, 6);
    LogRows rows;
    const double width = test::anyWidth();
    rows.setFormat(test::anyFont(), width);
    for (const Row& row : test::rowsForwards(rows, console)) {
        RC_ASSERT(row.x >= 0.0);
        RC_ASSERT(row.x < width);
    }
}

RC_GTEST_PROP(LogRowsProperties, GiveTheTextBetweenThemWhenTheyAreSelected, ())
{
    Console console;
    *rc::gen::arbitrary<bool>() ? writeEntries(console, 6) : writeLongEntry(console);
    LogRows rows;
    rows.setFormat(test::anyFont(), test::anyWidth());
    const std::vector<Row> all = test::rowsForwards(rows, console);
    auto a = *rc::gen::inRange<std::size_t>(0, all.size());
    auto b = *rc::gen::inRange<std::size_t>(0, all.size());
    std::tie(a, b) = std::minmax(a, b);
    const auto texts = shownTexts(console);
    std::u32string expected;
    for (std::size_t entry = all[a].entry; entry <= all[b].entry; ++entry) {
        const std::size_t from = entry == all[a].entry ? all[a].begin : 0;
        const std::size_t to = entry == all[b].entry ? all[b].end : texts.at(entry).size();
        expected += (entry == all[a].entry ? U"" : U"\n") + texts.at(entry).substr(from, to - from);
    }
    const QString text = textOf({all[a].place(), {all[b].entry, all[b].end}}, console, {});
    RC_ASSERT(text == LaidOutText(expected).text());
}

} // namespace
} // namespace zephyr::console::qt
