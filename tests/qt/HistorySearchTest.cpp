#include "view/HistorySearch.h"

#include "KeyDelivery.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

using Lines = std::vector<std::u32string>;

/// Searches the history `lines` for `query`.
HistorySearch searchFor(const std::u32string& query, const Lines& lines)
{
    HistorySearch search;
    search.start(lines);
    search.setQuery(query);
    return search;
}

TEST(HistorySearch, FindsNothingBeforeAQuery)
{
    const HistorySearch search = searchFor(U"", {U"one"});
    EXPECT_EQ(std::nullopt, search.record());
    EXPECT_EQ(U"", search.line());
    EXPECT_FALSE(search.isFailed());
}

TEST(HistorySearch, FindsTheNewestLineThatHasTheQueryWhateverItsCase)
{
    const HistorySearch search = searchFor(U"OP", {U"open", U"Stop now", U"start"});
    EXPECT_EQ(1U, search.record());
    EXPECT_EQ(U"Stop now", search.line());
}

TEST(HistorySearch, StepsToOlderLinesAndBack)
{
    HistorySearch search = searchFor(U"a", {U"a1", U"a2", U"b", U"a3"});
    EXPECT_FALSE(search.newer());
    EXPECT_TRUE(search.older());
    EXPECT_EQ(U"a2", search.line());
    EXPECT_TRUE(search.older());
    EXPECT_EQ(U"a1", search.line());
    EXPECT_FALSE(search.older());
    EXPECT_EQ(U"a1", search.line());
    EXPECT_TRUE(search.newer());
    EXPECT_EQ(U"a2", search.line());
}

TEST(HistorySearch, FindsEachLineOnceAtItsNewestRecord)
{
    HistorySearch search = searchFor(U"a", {U"a1", U"a2", U"a1", U"a2", U"a2"});
    EXPECT_EQ(4U, search.record());
    EXPECT_TRUE(search.older());
    EXPECT_EQ(2U, search.record());
    EXPECT_FALSE(search.older());
}

TEST(HistorySearch, KeepsWhatWasFoundWhenALongerQueryIsNowhere)
{
    HistorySearch search = searchFor(U"a", {U"ab", U"b"});
    search.setQuery(U"ax");
    EXPECT_TRUE(search.isFailed());
    EXPECT_EQ(U"ab", search.line());
    EXPECT_FALSE(search.older());
    EXPECT_FALSE(search.newer());
    search.setQuery(U"a");
    EXPECT_FALSE(search.isFailed());
    EXPECT_EQ(U"ab", search.line());
}

TEST(HistorySearch, GoesOnFromTheLineThatWasSteppedTo)
{
    HistorySearch search = searchFor(U"s", {U"spa", U"spawn", U"stop", U"spin"});
    search.older();
    search.older();
    ASSERT_EQ(U"spawn", search.line());
    search.setQuery(U"sp");
    EXPECT_EQ(U"spawn", search.line());
    EXPECT_TRUE(search.newer());
    EXPECT_EQ(U"spin", search.line());
}

TEST(HistorySearch, TurnsToTheNewestLineWhereNoOlderOneFits)
{
    HistorySearch search = searchFor(U"s", {U"spa", U"stop", U"spin"});
    search.older();
    search.older();
    ASSERT_EQ(U"spa", search.line());
    search.setQuery(U"sp");
    search.setQuery(U"spi");
    EXPECT_EQ(U"spin", search.line());
}

TEST(HistorySearch, StartsAtTheNewestLineAgainForAnotherQuery)
{
    HistorySearch search = searchFor(U"sp", {U"spa", U"stop", U"spin", U"set"});
    search.older();
    search.setQuery(U"s");
    EXPECT_EQ(U"set", search.line());
}

TEST(HistorySearch, ForgetsWhatWasFoundWithTheQuery)
{
    HistorySearch search = searchFor(U"a", {U"a"});
    search.setQuery(U"");
    EXPECT_EQ(std::nullopt, search.record());
    EXPECT_FALSE(search.isFailed());
    search.setQuery(U"a");
    search.start({});
    EXPECT_EQ(std::nullopt, search.record());
    search.setQuery(U"a");
    EXPECT_TRUE(search.isFailed());
    EXPECT_EQ(U"", search.line());
}

/// A console whose keys are delivered as the kit delivers them.
class RecallRecord : public testing::Test
{
protected:
    RecallRecord() { console.open(); }

    void press(Qt::Key key) { keys.press(console, key, Qt::NoModifier, {}); }
    void type(const std::u32string& text) { keys.press(console, 0, Qt::NoModifier, text); }

    std::u32string recalled(std::size_t record)
    {
        recallRecord(console, record, [this](Qt::Key key) { press(key); });
        return console.activeInput();
    }

    Console console;
    KeyDelivery keys{[](const QString&) {}};
};

TEST_F(RecallRecord, FindsEachRecordWhereverTheHistoryIs)
{
    const Lines lines{U"one", U"two", U"two", U"three \"a b\""};
    for (const std::u32string& line : lines) {
        console.addToHistory(line);
    }
    for (int ups = 0; ups <= 5; ++ups) {
        for (std::size_t record = 0; record < lines.size(); ++record) {
            for (int i = 0; i < ups; ++i) {
                press(Qt::Key_Up);
            }
            std::u32string shown = recalled(record);
            std::ranges::replace(shown, U'\uffff', U' '); // the console recalls quoted spaces so
            EXPECT_EQ(lines[record], shown) << "after " << ups << " times Up";
        }
    }
}

TEST_F(RecallRecord, ReplacesALineThatIsBeingTyped)
{
    console.addToHistory(U"one");
    console.addToHistory(U"two");
    type(U"typed");
    EXPECT_EQ(U"one", recalled(0));
}

TEST_F(RecallRecord, LetsUpAndDownGoOnFromTheRecord)
{
    for (const std::u32string& line : Lines{U"one", U"two", U"three"}) {
        console.addToHistory(line);
    }
    recalled(1);
    press(Qt::Key_Up);
    EXPECT_EQ(U"one", console.activeInput());
    recalled(1);
    press(Qt::Key_Down);
    EXPECT_EQ(U"three", console.activeInput());
}

TEST_F(RecallRecord, RecallsALineThatIsLongerThanTheBuffer)
{
    console.addToHistory(std::u32string(5000, U'x'));
    recalled(0);
    EXPECT_EQ(5000U, console.cursorPosition());
}

TEST_F(RecallRecord, DoesNothingForARecordThatIsNotThere)
{
    type(U"typed");
    EXPECT_EQ(U"typed", recalled(0));
    console.addToHistory(U"one");
    EXPECT_EQ(U"typed", recalled(1));
}

} // namespace
} // namespace zephyr::console::qt
