#include "view/LogRows.h"

#include "ViewTestText.h"

#include <utility>

namespace zephyr::console::qt {
namespace {

using Texts = std::vector<std::u32string>;

class LogRowsOfAConsole : public testing::Test
{
protected:
    LogRowsOfAConsole() { setColumns(20); }

    void setColumns(int count) { rows.setFormat(font, test::columns(*font, count)); }

    /// The rows behind the console's own two entries.
    std::vector<Row> all() { return test::rowsForwards(rows, console, test::kFirstEntry); }

    std::shared_ptr<const ViewFont> font = test::monospaced();
    Console console;
    LogRows rows;
};

TEST_F(LogRowsOfAConsole, EndAtLineFeeds)
{
    const std::vector<std::pair<std::u32string, Texts>> cases = {
        {U"", {U""}},
        {U"one", {U"one"}},
        {U"\n", {U""}},
        {U"one\n", {U"one"}},
        {U"one\ntwo", {U"one", U"two"}},
        {U"one\ntwo\n", {U"one", U"two"}},
        {U"one\n\ntwo", {U"one", U"", U"two"}},
        {U"\none", {U"", U"one"}},
        {U"\n\n", {U"", U""}},
        {U"one\n\n", {U"one", U""}},
    };
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(test::printable(text));
        Console other;
        LogRows otherRows;
        otherRows.setFormat(font, test::columns(*font, 20));
        other.write(text, Output);
        EXPECT_EQ(expected, test::textsOf(test::rowsForwards(otherRows, other, test::kFirstEntry)));
        EXPECT_EQ(expected, test::textsOf(test::rowsBackwards(otherRows, other, test::kFirstEntry)));
    }
}

TEST_F(LogRowsOfAConsole, HoldTheirLineFeeds)
{
    console.write(U"ab\n\nc\n", Output);
    const std::vector<Row> found = all();
    ASSERT_EQ(3U, found.size());
    const auto expectSpan = [&](std::size_t index, std::size_t begin, std::size_t end) {
        EXPECT_EQ(test::kFirstEntry, found[index].entry);
        EXPECT_EQ(begin, found[index].begin);
        EXPECT_EQ(end, found[index].end);
        EXPECT_EQ((TextPlace{test::kFirstEntry, begin}), found[index].place());
    };
    expectSpan(0, 0, 3);
    expectSpan(1, 3, 4);
    expectSpan(2, 4, 6);
}

TEST_F(LogRowsOfAConsole, WrapWords)
{
    setColumns(10);
    console.write(U"the quick brown fox\njumps", Output);
    EXPECT_EQ((Texts{U"the quick ", U"brown fox", U"jumps"}), test::textsOf(all()));
}

TEST_F(LogRowsOfAConsole, CutAWordThatIsLongerThanARow)
{
    setColumns(10);
    console.write(U"0123456789abcdefghijXY", Output);
    EXPECT_EQ((Texts{U"0123456789", U"abcdefghij", U"XY"}), test::textsOf(all()));
}

TEST_F(LogRowsOfAConsole, KeepTheIndentWhereTheyGoOn)
{
    setColumns(10);
    console.writeIndented(U"0123456789abc\nnext", 4);
    const std::vector<Row> found = all();
    EXPECT_EQ((Texts{U"    012345", U"6789ab", U"c", U"next"}), test::textsOf(found));
    EXPECT_DOUBLE_EQ(0.0, found.at(0).x);
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_DOUBLE_EQ(4 * font->spaceWidth(), found.at(i).x);
    }
}

TEST_F(LogRowsOfAConsole, StayInAWindowThatIsNarrowerThanTheIndent)
{
    setColumns(3);
    console.writeIndented(U"0123456789\nnext", 50);
    for (const Row& row : all()) {
        EXPECT_GE(row.x, 0.0);
        EXPECT_LT(row.x, test::columns(*font, 3)) << test::describe(row);
    }
}

TEST_F(LogRowsOfAConsole, ShowThePromptOfALineThatWasRun)
{
    setColumns(10);
    console.write(U"help 0123456789", Input);
    const std::vector<Row> found = all();
    EXPECT_EQ(U">> help ", found.at(0).text);
    std::u32string rest;
    for (std::size_t i = 1; i < found.size(); ++i) {
        rest += found[i].text;
    }
    EXPECT_EQ(U"0123456789", rest);
    for (const Row& row : found) {
        EXPECT_EQ(Tone::Input, row.tone);
    }
}

TEST_F(LogRowsOfAConsole, HaveTheToneOfWhatWasWritten)
{
    console.write(U"plain", Output);
    console.write(U"What do you want to do?", Prompt);
    for (const Row& row : all()) {
        EXPECT_EQ(Tone::Text, row.tone);
    }
}

TEST_F(LogRowsOfAConsole, HaveAGraphemeEachInAWindowThatIsNarrowerThanALetter)
{
    rows.setFormat(font, 1.0);
    console.write(U"ae\u0301\u4E2D\n\nx", Output);
    EXPECT_EQ((Texts{U"a", U"e\u0301", U"\u4E2D", U"", U"x"}), test::textsOf(all()));
}

TEST_F(LogRowsOfAConsole, NeverCutAGrapheme)
{
    setColumns(10);
    const std::u32string family = U"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466";
    console.write(family + family + family + family + family + family + family, Output);
    for (const Row& row : all()) {
        EXPECT_EQ(0U, row.begin % family.size());
        EXPECT_EQ(0U, row.end % family.size());
    }
    EXPECT_GT(all().size(), 1U);
}

TEST_F(LogRowsOfAConsole, KeepWhatIsNoCharacter)
{
    const std::u32string odd = {U'a',  char32_t(0xD800),    U'b', char32_t(0xDFFF), char32_t(0x110000),
                                U'\0', char32_t(0xFFFFFFFF)};
    console.write(odd, Output);
    const std::vector<Row> found = all();
    ASSERT_EQ(1U, found.size());
    EXPECT_EQ(0U, found[0].begin);
    EXPECT_EQ(odd.size(), found[0].end);
}

TEST_F(LogRowsOfAConsole, AreFoundByTheirPlaces)
{
    setColumns(10);
    console.write(U"0123456789abc\nx", Output);
    console.write(U"last", Output);
    const std::size_t entry = test::kFirstEntry;
    EXPECT_EQ(0U, rows.rowAt(console, {entry, 0}).begin);
    EXPECT_EQ(0U, rows.rowAt(console, {entry, 9}).begin);
    EXPECT_EQ(10U, rows.rowAt(console, {entry, 10}).begin);
    EXPECT_EQ(10U, rows.rowAt(console, {entry, 13}).begin) << "the line feed is on the row that it ends";
    EXPECT_EQ(14U, rows.rowAt(console, {entry, 14}).begin);
    EXPECT_EQ(14U, rows.rowAt(console, {entry, 15}).begin) << "the end of the entry";
    EXPECT_EQ(14U, rows.rowAt(console, {entry, 1000}).begin);
    EXPECT_EQ(U"x", rows.rowAt(console, {entry, std::size_t(-1)}).text);
    EXPECT_EQ(U"last", rows.rowAt(console, {entry + 2, 0}).text) << "beyond the log";
    EXPECT_EQ(U"last", rows.rowAt(console, {kInputLine, 5}).text);
}

TEST_F(LogRowsOfAConsole, EndWhereTheLogDoes)
{
    const Row last = rows.lastRow(console).value();
    EXPECT_EQ(1U, last.entry);
    EXPECT_FALSE(rows.rowAfter(console, last).has_value());
    const Row first = rows.rowAt(console, {0, 0});
    EXPECT_FALSE(rows.rowBefore(console, first).has_value());
    console.write(U"more", Output);
    EXPECT_EQ(U"more", rows.rowAfter(console, last).value().text);
}

TEST_F(LogRowsOfAConsole, DoNotReachBeforeTheFirstEntryThatIsShown)
{
    console.write(U"one\ntwo", Output);
    const Row two = rows.lastRow(console, test::kFirstEntry).value();
    const Row one = rows.rowBefore(console, two, test::kFirstEntry).value();
    EXPECT_EQ(U"one", one.text);
    EXPECT_FALSE(rows.rowBefore(console, one, test::kFirstEntry).has_value());
    EXPECT_TRUE(rows.rowBefore(console, one, test::kFirstEntry - 1).has_value());
    EXPECT_FALSE(rows.lastRow(console, console.logSize()).has_value());
    EXPECT_FALSE(rows.lastRow(console, kInputLine).has_value());
}

TEST_F(LogRowsOfAConsole, FollowANewWidthAndANewFont)
{
    console.write(U"0123456789abcdefghij", Output);
    EXPECT_EQ(1U, all().size());
    setColumns(10);
    EXPECT_EQ(2U, all().size());
    const double width = test::columns(*font, 10);
    rows.setFormat(test::monospaced(40.0), width);
    EXPECT_GT(all().size(), 2U);
    rows.setFormat(font, width);
    EXPECT_EQ(2U, all().size());
}

} // namespace
} // namespace zephyr::console::qt
