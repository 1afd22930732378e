#include "InputLine.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace zephyr::console {
namespace {

constexpr bool kWord = true;
constexpr bool kCodePoint = false;
constexpr unsigned kBufferSize = 2048;

void type(InputLine& line, const std::u32string& text)
{
    for (const char32_t c : text) {
        line.insert(c);
    }
}

/// A line that holds `text`, with the cursor at `position`.
InputLine lineOf(const std::u32string& text, unsigned position)
{
    InputLine line;
    line.show(text);
    line.moveToStart();
    for (unsigned i = 0; i < position; ++i) {
        line.moveRight(kCodePoint);
    }
    return line;
}

/// How many code points can be typed at the end of an empty line.
unsigned placesOf(InputLine line)
{
    line.clear();
    unsigned places = 0;
    for (; !line.isFull(); ++places) {
        line.insert(U'x');
    }
    return places;
}

TEST(InputLine, IsEmptyAtTheStartWithRoomFor2048CodePoints)
{
    const InputLine line;
    EXPECT_EQ(line.text(), U"");
    EXPECT_EQ(line.cursorPosition(), 0U);
    EXPECT_EQ(placesOf(line), kBufferSize);
}

TEST(InputLine, InsertsAtTheCursor)
{
    InputLine line = lineOf(U"wnd", 1);
    line.insert(U'i');
    EXPECT_EQ(line.text(), U"wind");
    EXPECT_EQ(line.cursorPosition(), 2U);
}

TEST(InputLine, KeepsItsRoomWhereTextIsTypedAtTheEnd)
{
    InputLine line;
    type(line, U"wind");
    EXPECT_EQ(placesOf(line), kBufferSize);
}

TEST(InputLine, GainsRoomWithEachInsertionInTheMiddle)
{
    InputLine line = lineOf(U"wd", 1);
    type(line, U"in");
    EXPECT_EQ(placesOf(line), kBufferSize + 2);
}

TEST(InputLine, LosesRoomWithEachErasure)
{
    InputLine line;
    type(line, U"abc");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(line.erasePrevious(kCodePoint));
    }
    EXPECT_EQ(line.text(), U"");
    EXPECT_EQ(placesOf(line), 2045U);
}

TEST(InputLine, LosesRoomForEachCodePointOfAnErasedWord)
{
    InputLine line = lineOf(U"set foo bar", 11);
    line.erasePrevious(kWord);
    EXPECT_EQ(placesOf(line), kBufferSize - 3);
}

TEST(InputLine, DoesNotGetItsRoomBackWhenItIsZeroed)
{
    InputLine line;
    type(line, U"abc");
    line.erasePrevious(kCodePoint);
    line.zero();
    EXPECT_EQ(line.text(), U"");
    EXPECT_EQ(line.cursorPosition(), 0U);
    EXPECT_EQ(placesOf(line), kBufferSize - 1);
}

TEST(InputLine, ErasesBeforeAndAfterTheCursor)
{
    InputLine line = lineOf(U"abcd", 2);
    EXPECT_TRUE(line.erasePrevious(kCodePoint));
    EXPECT_EQ(line.text(), U"acd");
    EXPECT_EQ(line.cursorPosition(), 1U);
    EXPECT_TRUE(line.eraseNext(kCodePoint));
    EXPECT_EQ(line.text(), U"ad");
    EXPECT_EQ(line.cursorPosition(), 1U);
}

TEST(InputLine, ErasesNothingAtItsEnds)
{
    InputLine line = lineOf(U"ab", 0);
    EXPECT_FALSE(line.erasePrevious(kCodePoint));
    EXPECT_FALSE(line.erasePrevious(kWord));
    line.moveToEnd();
    EXPECT_FALSE(line.eraseNext(kCodePoint));
    EXPECT_FALSE(line.eraseNext(kWord));
    EXPECT_EQ(line.text(), U"ab");
    EXPECT_EQ(placesOf(line), kBufferSize);
}

TEST(InputLine, ErasesBackToTheStartOfTheWord)
{
    InputLine line = lineOf(U"set foo bar", 11);
    EXPECT_TRUE(line.erasePrevious(kWord));
    EXPECT_EQ(line.text(), U"set foo ");
    EXPECT_EQ(line.cursorPosition(), 8U);
}

TEST(InputLine, ErasesUpToTheNextWord)
{
    InputLine line = lineOf(U"set foo bar", 4);
    EXPECT_TRUE(line.eraseNext(kWord));
    EXPECT_EQ(line.text(), U"set bar");
    EXPECT_EQ(line.cursorPosition(), 4U);
}

TEST(InputLine, MovesByCodePointsAndStopsAtItsEnds)
{
    InputLine line = lineOf(U"ab", 1);
    line.moveRight(kCodePoint);
    line.moveRight(kCodePoint);
    EXPECT_EQ(line.cursorPosition(), 2U);
    line.moveLeft(kCodePoint);
    line.moveLeft(kCodePoint);
    line.moveLeft(kCodePoint);
    EXPECT_EQ(line.cursorPosition(), 0U);
}

TEST(InputLine, MovesByWords)
{
    InputLine line = lineOf(U"set foo bar", 8);
    line.moveLeft(kWord);
    EXPECT_EQ(line.cursorPosition(), 4U);
    line.moveToStart();
    line.moveRight(kWord);
    EXPECT_EQ(line.cursorPosition(), 4U);
    line.moveToEnd();
    line.moveRight(kWord);
    EXPECT_EQ(line.cursorPosition(), 11U);
}

TEST(InputLine, FindsTheNextWord)
{
    EXPECT_EQ(InputLine::nextWordStart(U"abc_def", 0), 4U);
    EXPECT_EQ(InputLine::nextWordStart(U"abc def", 3), 4U);
    EXPECT_EQ(InputLine::nextWordStart(U"abc  ", 0), 5U);
    EXPECT_EQ(InputLine::nextWordStart(U"abc", 3), 3U);
    EXPECT_EQ(InputLine::nextWordStart(U"abc", 7), 3U);
    EXPECT_EQ(InputLine::nextWordStart(U"", 0), 0U);
    EXPECT_EQ(InputLine::nextWordStart(U"a1b", 0), 2U);
    EXPECT_EQ(InputLine::nextWordStart(U"\u00E4b", 0), 1U) << "a letter beyond ASCII separates words";
}

TEST(InputLine, FindsTheWordBefore)
{
    EXPECT_EQ(InputLine::prevWordStart(U"abc_def", 7), 4U);
    EXPECT_EQ(InputLine::prevWordStart(U"abc_def", 4), 0U);
    EXPECT_EQ(InputLine::prevWordStart(U"  12", 4), 0U);
    EXPECT_EQ(InputLine::prevWordStart(U"abc", 9), 0U);
    EXPECT_EQ(InputLine::prevWordStart(U" abc", 2), 1U);
    EXPECT_EQ(InputLine::prevWordStart(U"", 1), 0U);
}

TEST(InputLine, ShowsALineWithTheCursorAtItsEndAndKeepsItsRoom)
{
    InputLine line;
    type(line, U"a longer one");
    line.show(U"wind");
    EXPECT_EQ(line.text(), U"wind");
    EXPECT_EQ(line.cursorPosition(), 4U);
    EXPECT_EQ(placesOf(line), kBufferSize);
}

TEST(InputLine, ShowsOfALineThatIsTooLongWhatItHasRoomFor)
{
    InputLine line;
    line.show(std::u32string(kBufferSize, U'x') + U"yz");
    EXPECT_EQ(line.text(), std::u32string(kBufferSize, U'x'));
    EXPECT_EQ(line.cursorPosition(), kBufferSize + 2);
    EXPECT_TRUE(line.isFull());
}

TEST(InputLine, ErasesPastItsRoomWithoutTouchingTheText)
{
    InputLine line;
    line.show(std::u32string(kBufferSize, U'x') + U"yz");
    EXPECT_TRUE(line.erasePrevious(kCodePoint));
    EXPECT_EQ(line.cursorPosition(), kBufferSize + 1);
    EXPECT_EQ(line.text().size(), kBufferSize);
    line.moveLeft(kCodePoint);
    line.moveLeft(kCodePoint);
    EXPECT_TRUE(line.eraseNext(kCodePoint));
    EXPECT_EQ(line.text().size(), kBufferSize - 1);
}

TEST(InputLine, ErasesNoWordWhereTheNextOneWouldLieBeforeTheCursor)
{
    InputLine line;
    line.show(std::u32string(kBufferSize, U'x') + U"yzz");
    line.moveLeft(kCodePoint);
    EXPECT_TRUE(line.eraseNext(kWord)); // there was something behind the cursor
    EXPECT_EQ(line.text().size(), kBufferSize);
    EXPECT_EQ(line.cursorPosition(), kBufferSize + 2);
}

} // namespace
} // namespace zephyr::console
