#include "view/EditLine.h"

#include "zephyr/console/Console.h"

#include <Qt>

#include <gtest/gtest.h>

#include <string>

namespace zephyr::console::qt {
namespace {

constexpr bool kWord = true;
constexpr bool kCluster = false;

/// A line with the cursor where `text` has a bar.
EditLine lineOf(const std::u32string& text)
{
    const std::size_t bar = text.find(U'|');
    EditLine line;
    line.set(text.substr(0, bar) + text.substr(bar + 1));
    line.moveToStart();
    while (line.cursor() < bar) {
        line.moveRight(kCluster);
    }
    return line;
}

/// The line with a bar where its cursor is.
std::u32string shown(const EditLine& line) { return std::u32string(line.text()).insert(line.cursor(), U"|"); }

TEST(EditLine, IsEmptyAtFirst)
{
    EXPECT_TRUE(EditLine().isEmpty());
    EXPECT_EQ(U"|", shown(EditLine()));
}

TEST(EditLine, InsertsAtTheCursor)
{
    EditLine line = lineOf(U"ab|cd");
    line.insert(U"xy");
    EXPECT_EQ(U"abxy|cd", shown(line));
    EXPECT_FALSE(line.isEmpty());
}

TEST(EditLine, InsertsASpaceForEachControlCharacter)
{
    EditLine line;
    line.insert(U"a\tb\r\nc\x7f"
                U"d\x85\u2028\u2029"
                U"e");
    EXPECT_EQ(U"a b  c d   e|", shown(line));
}

TEST(EditLine, LeavesOutWhatDoesNotFit)
{
    EditLine line = lineOf(U"ab|cd");
    line.insert(std::u32string(50'000'000, U'x'));
    EXPECT_EQ(U"ab" + std::u32string(EditLine::kMostLength - 4, U'x') + U"cd", line.text());
    line.insert(U"y");
    EXPECT_EQ(U"xcd", line.text().substr(EditLine::kMostLength - 3));
}

TEST(EditLine, ErasesWholeGraphemeClusters)
{
    EditLine line = lineOf(U"ae\u0301\U0001f468\u200d\U0001f469\u200d\U0001f467|");
    line.erasePrevious(kCluster);
    EXPECT_EQ(U"ae\u0301|", shown(line));
    line.erasePrevious(kCluster);
    EXPECT_EQ(U"a|", shown(line));
    line = lineOf(U"|\U0001f1e9\U0001f1eae\u0301z");
    line.eraseNext(kCluster);
    EXPECT_EQ(U"|e\u0301z", shown(line));
    line.eraseNext(kCluster);
    EXPECT_EQ(U"|z", shown(line));
}

TEST(EditLine, ErasesEmojiWholeWhereThaiFollows)
{
    EditLine line = lineOf(U"\U0001f468\u200d\U0001f469|\u0e01");
    line.erasePrevious(kCluster);
    EXPECT_EQ(U"|\u0e01", shown(line));
}

TEST(EditLine, ErasesNothingBeyondItsEnds)
{
    EditLine line = lineOf(U"|ab");
    line.erasePrevious(kCluster);
    line.erasePrevious(kWord);
    EXPECT_EQ(U"|ab", shown(line));
    line.moveToEnd();
    line.eraseNext(kCluster);
    line.eraseNext(kWord);
    EXPECT_EQ(U"ab|", shown(line));
}

TEST(EditLine, MovesByWholeGraphemeClustersUpToItsEnds)
{
    EditLine line = lineOf(U"|e\u0301\U0001f600x");
    line.moveLeft(kCluster);
    EXPECT_EQ(0U, line.cursor());
    for (const std::size_t cursor : {2U, 3U, 4U, 4U}) {
        line.moveRight(kCluster);
        EXPECT_EQ(cursor, line.cursor());
    }
    for (const std::size_t cursor : {3U, 2U, 0U}) {
        line.moveLeft(kCluster);
        EXPECT_EQ(cursor, line.cursor());
    }
}

TEST(EditLine, MovesToItsStartAndEnd)
{
    EditLine line = lineOf(U"a|b");
    line.moveToEnd();
    EXPECT_EQ(U"ab|", shown(line));
    line.moveToStart();
    EXPECT_EQ(U"|ab", shown(line));
}

TEST(EditLine, PutsTheCursorBehindWhatJoinsTheInsertedText)
{
    EditLine line = lineOf(U"|\u0301");
    line.insert(U"e");
    EXPECT_EQ(U"e\u0301|", shown(line));
}

TEST(EditLine, PutsTheCursorBeforeWhatJoinsAfterAnErasure)
{
    EditLine line = lineOf(U"\U0001f1e9x|\U0001f1ea");
    line.erasePrevious(kCluster);
    EXPECT_EQ(U"|\U0001f1e9\U0001f1ea", shown(line)) << "two halves of a flag";
}

TEST(EditLine, ErasesWords)
{
    EditLine line = lineOf(U"set foo bar|");
    line.erasePrevious(kWord);
    EXPECT_EQ(U"set foo |", shown(line));
    line.moveToStart();
    line.eraseNext(kWord);
    EXPECT_EQ(U"|foo ", shown(line));
}

TEST(EditLine, IsReplacedAndCleared)
{
    EditLine line = lineOf(U"a|b");
    line.set(U"new\ttext");
    EXPECT_EQ(U"new text|", shown(line));
    line.clear();
    EXPECT_EQ(U"|", shown(line));
}

TEST(EditLine, KeepsWhatIsNoCharacter)
{
    const std::u32string odd{char32_t{0xd83d}, char32_t{0xde00}, char32_t{0xffffffff}, char32_t{0x110000}};
    EditLine line;
    line.set(odd);
    EXPECT_EQ(odd, line.text());
    for (std::size_t i = 0; i < odd.size(); ++i) {
        line.erasePrevious(kCluster);
    }
    EXPECT_TRUE(line.isEmpty());
}

class EditLineWords : public testing::TestWithParam<std::u32string>
{
protected:
    EditLineWords() { console.open(); }

    /// Types the parameter and puts both cursors at `cursor`.
    void begin(std::size_t cursor)
    {
        console.open();
        for (const char32_t c : GetParam()) {
            console.keyPressed(0, Qt::NoModifier, std::u32string(1, c));
        }
        console.keyPressed(Qt::Key_Home, Qt::NoModifier, {});
        line.set(GetParam());
        line.moveToStart();
        for (std::size_t i = 0; i < cursor; ++i) {
            console.keyPressed(Qt::Key_Right, Qt::NoModifier, {});
            line.moveRight(kCluster);
        }
    }

    void expectEqualAfter(Qt::Key key, std::size_t cursor)
    {
        console.keyPressed(key, Qt::ControlModifier, {});
        EXPECT_EQ(console.activeInput(), line.text()) << "from " << cursor;
        EXPECT_EQ(console.cursorPosition(), line.cursor()) << "from " << cursor;
    }

    Console console;
    EditLine line;
};

TEST_P(EditLineWords, AreTheConsolesWords)
{
    for (std::size_t cursor = 0; cursor <= GetParam().size(); ++cursor) {
        begin(cursor);
        line.moveLeft(kWord);
        expectEqualAfter(Qt::Key_Left, cursor);
        begin(cursor);
        line.moveRight(kWord);
        expectEqualAfter(Qt::Key_Right, cursor);
        begin(cursor);
        line.erasePrevious(kWord);
        expectEqualAfter(Qt::Key_Backspace, cursor);
        begin(cursor);
        line.eraseNext(kWord);
        expectEqualAfter(Qt::Key_Delete, cursor);
    }
}

INSTANTIATE_TEST_SUITE_P(, EditLineWords,
                         testing::Values(U"", U"set foo bar", U"abc_def", U"  two  gaps  ", U"12 34", U"x",
                                         U" x", U"x ", U"\u00e4b \u6f22cd", U"a1b2c3"));

} // namespace
} // namespace zephyr::console::qt
