#include "terminal/TextLayout.h"

#include "terminal/Utf8Locale.h"

#include <gtest/gtest.h>

#include <string>

namespace zephyr::console::remote {

void PrintTo(const ScreenPlace& place, std::ostream* out) { *out << place.row << ':' << place.column; }

namespace {

class TextLayoutTest : public ::testing::Test
{
    const Utf8Locale mLocale;
};

TEST_F(TextLayoutTest, CountsColumnsFromWhereTheTextBegins)
{
    EXPECT_EQ((ScreenPlace{0, 3}), placeAfter(L"", {0, 3}, 10));
    EXPECT_EQ((ScreenPlace{0, 5}), placeAfter(L"ab", {0, 3}, 10));
    EXPECT_EQ((ScreenPlace{1, 5}), placeAfter(L"abcdefghijkl", {0, 3}, 10));
}

TEST_F(TextLayoutTest, IsOnTheNextRowBehindAFullOne)
{
    EXPECT_EQ((ScreenPlace{1, 0}), placeAfter(L"abcdefg", {0, 3}, 10));
}

TEST_F(TextLayoutTest, CutsNoWideCharacterInTwo)
{
    EXPECT_EQ((ScreenPlace{0, 9}), placeAfter(L"風風風", {0, 3}, 10));
    EXPECT_EQ((ScreenPlace{1, 2}), placeAfter(L"風風風風", {0, 3}, 10));
}

TEST_F(TextLayoutTest, KnowsHowControlCharactersAreShown)
{
    EXPECT_EQ((ScreenPlace{0, 2}), placeAfter(L"\x01", {}, 10));
    EXPECT_EQ((ScreenPlace{1, 1}), placeAfter(L"\x01", {0, 9}, 10));
    EXPECT_EQ((ScreenPlace{0, 8}), placeAfter(L"ab\t", {}, 20));
    EXPECT_EQ((ScreenPlace{1, 1}), placeAfter(L"ab\nc", {}, 20));
}

TEST_F(TextLayoutTest, ListsWordsFromTopToBottom)
{
    EXPECT_EQ("a     ccc   e\nbbbb  d\n", inColumns({"a", "bbbb", "ccc", "d", "e"}, 18, 10));
    EXPECT_EQ("a\nbbbb\n", inColumns({"a", "bbbb"}, 4, 10));
    EXPECT_EQ("風  \u00e9\n", inColumns({"風", "\u00e9"}, 10, 10));
}

TEST_F(TextLayoutTest, TellsHowManyWordsItLeavesOut)
{
    EXPECT_EQ("a  c\nb  d\n... and 2 more\n", inColumns({"a", "b", "c", "d", "e", "f"}, 5, 2));
}

TEST_F(TextLayoutTest, ListsNothingOfNoWords) { EXPECT_EQ("", inColumns({}, 80, 10)); }

} // namespace
} // namespace zephyr::console::remote
