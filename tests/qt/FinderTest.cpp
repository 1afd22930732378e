#include "view/Finder.h"

#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

using Places = std::vector<TextPlace>;

constexpr bool kMatchCase = true;
constexpr TextPlace kTop{0, 0};
constexpr TextPlace kBottom{kInputLine, 0};
constexpr std::size_t kSlice = std::size_t{1} << 17; // code points that a slice searches

/// A console that writes into its log, and the search of it. The first two entries are the console's own.
class Finder : public testing::Test
{
protected:
    void write(const std::u32string& text) { console.write(text, Output); }

    /// Searches to the end. \return the number of slices.
    int search()
    {
        int slices = 1;
        while (finder.searchSlice(console)) {
            ++slices;
        }
        return slices;
    }

    void find(const std::u32string& query, bool matchCase = !kMatchCase, std::size_t firstEntry = 0)
    {
        finder.start(query, matchCase, firstEntry);
        search();
    }

    Places hits() const { return finder.hitsIn(kTop, kBottom); }

    std::optional<std::size_t> currentIndex() const
    {
        const auto current = finder.current();
        return current ? std::optional(current->index) : std::nullopt;
    }

    std::optional<TextPlace> currentPlace() const
    {
        const auto current = finder.current();
        return current ? std::optional(current->place) : std::nullopt;
    }

    Console console;
    qt::Finder finder;
};

TEST_F(Finder, FindsNothingBeforeItIsStarted)
{
    EXPECT_FALSE(finder.searchSlice(console));
    EXPECT_TRUE(finder.isDone());
    EXPECT_EQ(0U, finder.count());
    EXPECT_EQ(std::nullopt, currentIndex());
    finder.next();
    finder.previous();
    EXPECT_EQ(std::nullopt, currentIndex());
}

TEST_F(Finder, FindsAnEmptyTextNowhere)
{
    write(U"text");
    find(U"");
    EXPECT_EQ(0U, finder.count());
    EXPECT_TRUE(finder.isDone());
    EXPECT_DOUBLE_EQ(1.0, finder.progress());
}

TEST_F(Finder, FindsAllHitsOfTheLog)
{
    write(U"one two");
    write(U"nothing");
    write(U"two and two");
    find(U"two");
    EXPECT_EQ((Places{{2, 4}, {4, 0}, {4, 8}}), hits());
    EXPECT_EQ(3U, finder.count());
    EXPECT_FALSE(finder.hasMore());
    EXPECT_EQ(3U, finder.length());
}

TEST_F(Finder, MindsCaseOnlyWhenAskedTo)
{
    write(U"Two \u00c4 two \u00e4");
    find(U"TWO \u00e4");
    EXPECT_EQ((Places{{2, 0}, {2, 6}}), hits());
    find(U"two \u00e4", kMatchCase);
    EXPECT_EQ((Places{{2, 6}}), hits());
}

TEST_F(Finder, CountsHitsFromTheStartOfAnEntry)
{
    write(U"aaaaa");
    find(U"aa");
    EXPECT_EQ((Places{{2, 0}, {2, 2}}), hits());
}

TEST_F(Finder, FindsThePromptOfALineThatWasRun)
{
    console.execute(U"go >> there");
    find(U">> go");
    EXPECT_EQ((Places{{2, 0}}), hits());
    find(U">>");
    EXPECT_EQ((Places{{2, 0}, {2, 6}}), hits());
    find(U"go >> there");
    EXPECT_EQ(TextPlace(2, 3), hits().front()) << "its answer may quote the line";
}

TEST_F(Finder, FindsAcrossLineFeedsOfAnEntry)
{
    write(U"a\nb");
    find(U"a\nb");
    EXPECT_EQ((Places{{2, 0}}), hits());
}

TEST_F(Finder, LeavesHiddenEntriesOut)
{
    write(U"hit");
    write(U"hit");
    find(U"hit", !kMatchCase, 3);
    EXPECT_EQ((Places{{3, 0}}), hits());
    find(U"hit", !kMatchCase, 4);
    EXPECT_EQ(Places{}, hits());
    EXPECT_TRUE(finder.isDone());
    EXPECT_DOUBLE_EQ(1.0, finder.progress());
    write(U"hit");
    search();
    EXPECT_EQ((Places{{4, 0}}), hits());
}

TEST_F(Finder, FindsWhatWasWrittenSince)
{
    write(U"hit");
    find(U"hit");
    write(U"a hit");
    EXPECT_EQ(1U, finder.count());
    EXPECT_FALSE(finder.searchSlice(console));
    EXPECT_EQ((Places{{2, 0}, {3, 2}}), hits());
}

TEST_F(Finder, StartsAnewForAnotherText)
{
    write(U"one two");
    find(U"one");
    find(U"two");
    EXPECT_EQ((Places{{2, 4}}), hits());
    EXPECT_EQ(TextPlace(2, 4), currentPlace());
}

// The current hit

TEST_F(Finder, TakesTheNewestHitFirst)
{
    write(U"hit hit");
    write(U"hit hit");
    find(U"hit");
    EXPECT_EQ(0U, currentIndex());
    EXPECT_EQ(TextPlace(3, 4), currentPlace());
}

TEST_F(Finder, StepsToOlderHitsAndAroundToTheNewest)
{
    write(U"hit hit");
    write(U"hit");
    find(U"hit");
    finder.next();
    EXPECT_EQ(TextPlace(2, 4), currentPlace());
    finder.next();
    EXPECT_EQ(2U, currentIndex());
    EXPECT_EQ(TextPlace(2, 0), currentPlace());
    finder.next();
    EXPECT_EQ(TextPlace(3, 0), currentPlace());
}

TEST_F(Finder, StepsToNewerHitsAndAroundToTheOldest)
{
    write(U"hit hit");
    write(U"hit");
    find(U"hit");
    finder.previous();
    EXPECT_EQ(2U, currentIndex());
    EXPECT_EQ(TextPlace(2, 0), currentPlace());
    finder.previous();
    EXPECT_EQ(TextPlace(2, 4), currentPlace());
}

TEST_F(Finder, TurnsAroundOnlyWhenTheSearchIsDone)
{
    write(U"hit");
    write(std::u32string(2 * kSlice, U'x'));
    write(U"hit");
    finder.start(U"hit", kMatchCase, 0);
    ASSERT_TRUE(finder.searchSlice(console));
    EXPECT_EQ(TextPlace(4, 0), currentPlace());
    finder.next();
    finder.previous();
    EXPECT_EQ(TextPlace(4, 0), currentPlace());
    search();
    finder.next();
    EXPECT_EQ(TextPlace(2, 0), currentPlace());
}

TEST_F(Finder, StaysAtItsHitWhenNewOnesAreWritten)
{
    write(U"hit hit");
    find(U"hit");
    finder.next();
    write(U"hit");
    search();
    EXPECT_EQ(2U, currentIndex());
    EXPECT_EQ(TextPlace(2, 0), currentPlace());
}

TEST_F(Finder, TakesTheFirstHitThatIsWrittenLater)
{
    find(U"hit");
    EXPECT_EQ(std::nullopt, currentIndex());
    write(U"hit");
    search();
    EXPECT_EQ(TextPlace(2, 0), currentPlace());
}

TEST_F(Finder, SelectsTheHitAtAPlaceOrBefore)
{
    write(U"hit hit");
    write(U"hit");
    find(U"hit");
    finder.selectNearest({2, 4});
    EXPECT_EQ(TextPlace(2, 4), currentPlace());
    finder.selectNearest({2, 3});
    EXPECT_EQ(TextPlace(2, 0), currentPlace());
    finder.selectNearest({9, 0});
    EXPECT_EQ(TextPlace(3, 0), currentPlace());
    finder.selectNearest({1, 0});
    EXPECT_EQ(TextPlace(2, 0), currentPlace()) << "the oldest";
}

TEST_F(Finder, SelectsTheHitOnceTheSearchHasGotThere)
{
    write(U"hit");
    write(std::u32string(2 * kSlice, U'x'));
    write(U"hit");
    finder.start(U"hit", kMatchCase, 0);
    finder.selectNearest({2, 0});
    ASSERT_TRUE(finder.searchSlice(console));
    EXPECT_EQ(1U, finder.count());
    EXPECT_EQ(std::nullopt, currentIndex());
    search();
    EXPECT_EQ(TextPlace(2, 0), currentPlace());
}

// Slices

TEST_F(Finder, SearchesALongEntryInSlices)
{
    constexpr std::size_t kSlices = 5;
    std::u32string text(kSlices * kSlice, U'x');
    text.replace(kSlice - 2, 4, U"hits"); // across the end of a slice
    text.replace(text.size() - 4, 4, U"hits");
    write(text);
    finder.start(U"hits", kMatchCase, 0);
    double progress = finder.progress();
    EXPECT_DOUBLE_EQ(0.0, progress);
    std::size_t slices = 1;
    for (; finder.searchSlice(console); ++slices) {
        EXPECT_LT(progress, finder.progress());
        progress = finder.progress();
        EXPECT_LT(progress, 1.0);
    }
    EXPECT_EQ(kSlices + 1, slices) << "and the two entries before it";
    EXPECT_EQ((Places{{2, kSlice - 2}, {2, text.size() - 4}}), hits());
    EXPECT_DOUBLE_EQ(1.0, finder.progress());
}

TEST_F(Finder, FindsThePromptAndTheEndOfALongLineInSlices)
{
    constexpr std::size_t kPromptSize = 3;
    const std::size_t before = console.logSize();
    console.execute(U"go");
    std::size_t answered = 0; // code points, which the first slice searches before the line
    for (std::size_t entry = before + 1; entry < console.logSize(); ++entry) {
        answered += console.readLogPart(entry, 0, 0).length;
    }
    const std::size_t echo = console.logSize();
    const std::size_t shown = kSlice - answered + 1; // one code point is left to the second slice
    console.execute(U"go " + std::u32string(shown - kPromptSize - 6, U'x') + U"end");
    find(U">> go x");
    EXPECT_EQ((Places{{echo, 0}}), hits());
    find(U"xend");
    EXPECT_EQ((Places{{echo, shown - 4}}), hits());
}

TEST_F(Finder, SearchesManyEntriesInSlicesFromTheNewest)
{
    write(U"first hit");
    for (int i = 0; i < 20000; ++i) {
        write(U"x");
    }
    write(U"last hit");
    finder.start(U"hit", kMatchCase, 0);
    ASSERT_TRUE(finder.searchSlice(console));
    EXPECT_EQ(TextPlace(20003, 5), currentPlace());
    EXPECT_GT(search(), 1);
    EXPECT_EQ(2U, finder.count());
}

TEST_F(Finder, KeepsTheNewestHitsOfVeryMany)
{
    write(std::u32string(10, U'x'));
    write(std::u32string(60'000, U'x'));
    write(std::u32string(60'000, U'x'));
    find(U"x");
    EXPECT_EQ(qt::Finder::kMostHits, finder.count());
    EXPECT_TRUE(finder.hasMore());
    EXPECT_TRUE(finder.isDone());
    EXPECT_EQ(TextPlace(3, 20'000), hits().front());
    EXPECT_EQ(TextPlace(4, 59'999), hits().back());
    finder.previous();
    EXPECT_EQ(TextPlace(3, 20'000), currentPlace());
    write(U"xx");
    search();
    EXPECT_EQ(qt::Finder::kMostHits, finder.count());
    EXPECT_EQ(TextPlace(3, 20'002), hits().front());
    EXPECT_EQ(TextPlace(3, 20'002), currentPlace()) << "its own is not kept any more";
}

TEST_F(Finder, KeepsTheLastHitsOfAnEntryWithVeryMany)
{
    write(std::u32string(300'000, U'x'));
    find(U"x", kMatchCase, 2);
    EXPECT_EQ(qt::Finder::kMostHits, finder.count());
    EXPECT_TRUE(finder.hasMore());
    EXPECT_EQ(TextPlace(2, 200'000), hits().front());
    EXPECT_EQ(TextPlace(2, 299'999), currentPlace());
}

TEST_F(Finder, CountsAsManyHitsAsItKeepsExactly)
{
    write(std::u32string(qt::Finder::kMostHits, U'x'));
    find(U"x", kMatchCase, 2);
    EXPECT_EQ(qt::Finder::kMostHits, finder.count());
    EXPECT_FALSE(finder.hasMore());
}

// Ranges

TEST_F(Finder, TellsTheHitsThatReachIntoARange)
{
    write(U"abc abc abc");
    write(U"abc");
    find(U"abc");
    EXPECT_EQ((Places{{2, 4}}), finder.hitsIn({2, 4}, {2, 7}));
    EXPECT_EQ((Places{{2, 0}, {2, 4}}), finder.hitsIn({2, 2}, {2, 5})) << "a part of each";
    EXPECT_EQ((Places{}), finder.hitsIn({2, 3}, {2, 4})) << "between two";
    EXPECT_EQ((Places{{2, 8}, {3, 0}}), finder.hitsIn({2, 9}, {3, 1}));
    EXPECT_EQ((Places{}), finder.hitsIn({3, 1}, {2, 9}));
    EXPECT_EQ((Places{}), finder.hitsIn({2, 5}, {2, 5}));
}

TEST_F(Finder, FindsWhatASimpleSearchFindsWhileTheLogGrows)
{
    std::mt19937 random(2);
    const auto textOf = [&](std::size_t length) {
        std::u32string text;
        for (std::size_t i = 0; i < length; ++i) {
            text += U"aAb"[random() % 3];
        }
        return text;
    };
    for (int round = 0; round < 20; ++round) {
        const std::u32string query = textOf(1 + random() % 4);
        finder.start(query, kMatchCase, 2);
        for (int i = 0; i < 20; ++i) {
            write(textOf(random() % 50));
            finder.searchSlice(console);
        }
        Places expected;
        std::vector<LogEntry> log;
        console.readLog(0, console.logSize(), log);
        for (std::size_t entry = 2; entry < log.size(); ++entry) {
            const std::u32string& text = log[entry].text;
            for (std::size_t at = text.find(query); at != std::u32string::npos;
                 at = text.find(query, at + query.size())) {
                expected.push_back({entry, at});
            }
        }
        EXPECT_EQ(expected, hits());
        EXPECT_EQ(expected.size(), finder.count());
    }
}

} // namespace
} // namespace zephyr::console::qt
