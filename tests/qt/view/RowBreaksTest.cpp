#include "view/RowBreaks.h"

#include "ViewTestText.h"
#include "view/RowLayout.h"

#include <algorithm>
#include <functional>

namespace zephyr::console::qt {
namespace {

using Breaks = std::vector<std::size_t>;

/// The breaks of `text` in rows of a number of columns.
Breaks breaksAt(int columns, std::u32string_view text, Wrap wrap = Wrap::AtWords)
{
    const auto font = test::monospaced();
    const double width = test::columns(*font, columns);
    return breakIntoRows(text, *font, {width, width}, wrap);
}

TEST(RowBreaks, AnEmptyTextIsOneRow)
{
    EXPECT_EQ(Breaks({0}), breaksAt(10, U""));
    EXPECT_EQ(Breaks({0}), breaksAt(10, U"", Wrap::Anywhere));
}

TEST(RowBreaks, ATextThatFitsIsOneRow)
{
    EXPECT_EQ(Breaks({10}), breaksAt(10, U"0123456789"));
    EXPECT_EQ(Breaks({10}), breaksAt(10, U"0123456789", Wrap::Anywhere));
}

TEST(RowBreaks, AreBehindWords)
{
    EXPECT_EQ(Breaks({4, 8, 13}), breaksAt(6, U"one two three"));
    EXPECT_EQ(Breaks({8, 13}), breaksAt(8, U"one two three"));
    EXPECT_EQ(Breaks({4, 7}), breaksAt(6, U"one-two")) << "a hyphen ends a word";
}

TEST(RowBreaks, AreAnywhereWhereAWordIsLongerThanARow)
{
    EXPECT_EQ(Breaks({4, 8, 10}), breaksAt(4, U"0123456789"));
    EXPECT_EQ(Breaks({3, 8, 13}), breaksAt(5, U"ab 0123456789"));
}

TEST(RowBreaks, CutNoEmojiThatStandsBeforeThai)
{
    const std::u32string family = U"\U0001F468\u200D\U0001F469\u200D\U0001F467";
    EXPECT_EQ(family.size(), breaksAt(1, family + U"\u0E01\u0E33", Wrap::Anywhere).front());
}

TEST(RowBreaks, LeaveBlanksAtTheEndOfARow)
{
    EXPECT_EQ(Breaks({8, 11}), breaksAt(4, U"word    end"));
    EXPECT_EQ(Breaks({20}), breaksAt(4, std::u32string(20, U' ')));
}

TEST(RowBreaks, NeedNotBeBehindWords)
{
    EXPECT_EQ(Breaks({5, 10, 11}), breaksAt(5, U"one two and", Wrap::Anywhere));
    EXPECT_EQ(Breaks({4, 8, 9}), breaksAt(4, std::u32string(9, U'\u00A0'), Wrap::Anywhere));
}

TEST(RowBreaks, GiveTheFirstRowItsOwnWidth)
{
    const auto font = test::monospaced();
    const RowWidths widths = {test::columns(*font, 6), test::columns(*font, 3)};
    for (const Wrap wrap : {Wrap::AtWords, Wrap::Anywhere}) {
        EXPECT_EQ(Breaks({6, 9, 12, 13}), breakIntoRows(U"0123456789abc", *font, widths, wrap));
    }
}

TEST(RowBreaks, GiveEachRowAGraphemeHoweverNarrowItIs)
{
    for (const Wrap wrap : {Wrap::AtWords, Wrap::Anywhere}) {
        EXPECT_EQ(Breaks({1, 2, 3}), breaksAt(0, U"abc", wrap));
        EXPECT_EQ(Breaks({1, 4, 5}), breaksAt(0, U"ae\u0301\u0302b", wrap));
        EXPECT_EQ(Breaks({5, 6}), breaksAt(0, U"\U0001F468\u200D\U0001F469\u200D\U0001F467x", wrap));
        const auto font = test::monospaced();
        EXPECT_EQ(Breaks({1, 2}), breakIntoRows(U"ab", *font, {-5.0, -5.0}, wrap));
    }
}

TEST(RowBreaks, AreBetweenCjkCharacters)
{
    const auto font = test::monospaced();
    const std::u32string text(30, U'\u4E2D');
    const RowLayout one(U"\u4E2D", *font);
    const double width = one.width() * 7 + 0.5;
    EXPECT_EQ(Breaks({7, 14, 21, 28, 30}), breakIntoRows(text, *font, {width, width}, Wrap::AtWords));
}

TEST(RowBreaks, CountTabsToTheirStops)
{
    // To the 8th column, and to the 16th one.
    EXPECT_EQ(Breaks({4}), breaksAt(17, U"a\tb\t"));
    EXPECT_EQ(Breaks({4, 5}), breaksAt(16, U"a\tb\tc", Wrap::Anywhere));
    EXPECT_EQ(Breaks({5}), breaksAt(17, U"a\tb\tc", Wrap::Anywhere));
}

TEST(RowBreaks, AreBehindLineSeparators)
{
    EXPECT_EQ(Breaks({2, 3}), breaksAt(20, U"a\u2028b"));
    EXPECT_EQ(Breaks({1, 2, 3}), breaksAt(20, U"\u2028\u2028b"));
    EXPECT_EQ(Breaks({2}), breaksAt(20, U"a\u2028")) << "one at the end adds no row";
    EXPECT_EQ(Breaks({2, 3}), breaksAt(20, U"a\u2028\u2028"));
}

TEST(RowBreaks, AreNotMadeByOtherControls)
{
    EXPECT_EQ(Breaks({5}), breaksAt(20, U"a\u2029b\rc"));
    EXPECT_EQ(Breaks({7}), breaksAt(20, U"a\vb\fc\u0085d"));
}

TEST(RowBreaks, AreNotBetweenABlankAndAMarkOnIt)
{
    for (const Wrap wrap : {Wrap::AtWords, Wrap::Anywhere}) {
        for (const std::size_t end : breaksAt(3, U"ab \u0301cd \u200D \u0301", wrap)) {
            EXPECT_TRUE(end != 3 && end != 7 && end != 9) << end;
        }
    }
}

/// The breaks as a text layout of Qt's makes them.
Breaks breaksOfQt(const std::u32string& text, const ViewFont& font, RowWidths widths)
{
    const LaidOutText laidOut(text);
    QTextLayout layout(laidOut.text(), font.font());
    layout.setTextOption(font.textOption(QTextOption::WrapAtWordBoundaryOrAnywhere));
    layout.beginLayout();
    Breaks breaks;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(breaks.empty() ? widths.first : widths.others);
        breaks.push_back(laidOut.indexAt(line.textStart() + line.textLength()));
    }
    layout.endLayout();
    return breaks.empty() ? Breaks({0}) : breaks;
}

RC_GTEST_PROP(RowBreaksProperties, PlainTextBreaksAsQtBreaksIt, ())
{
    const test::MixedText mixed = *test::mixedText(
        40, {U"a", U"hello", U" ", U"  ", U"-",  U"/usr/lib", U"1.5,", U"(x)", U"\"", U"%", U"$5", U"a.b",
             U"!", U"?!",    U"[", U"{}", U"'s", U"x=1;",     U"#",    U"&&",  U"|",  U"~", U"..."});
    const auto font = test::anyFont();
    const RowWidths widths = {test::anyWidth(), test::anyWidth()};
    RC_ASSERT(breakIntoRows(mixed.text, *font, widths, Wrap::AtWords) ==
              breaksOfQt(mixed.text, *font, widths));
}

RC_GTEST_PROP(RowBreaksProperties, EveryRowHasAGraphemeAndNoneIsCut, ())
{
    const test::MixedText mixed = *test::mixedLine();
    const auto font = test::anyFont();
    const auto wrap = *rc::gen::element(Wrap::AtWords, Wrap::Anywhere);
    const Breaks breaks = breakIntoRows(mixed.text, *font, {test::anyWidth(), test::anyWidth()}, wrap);
    RC_ASSERT(!breaks.empty());
    RC_ASSERT(breaks.back() == mixed.text.size());
    RC_ASSERT(std::adjacent_find(breaks.begin(), breaks.end(), std::greater_equal<>()) == breaks.end());
    const Breaks boundaries = test::graphemeBoundaries(mixed.text);
    RC_ASSERT(std::includes(boundaries.begin(), boundaries.end(), breaks.begin(), breaks.end()));
}

RC_GTEST_PROP(RowBreaksProperties, NoRowIsWiderThanItMayBe, ())
{
    // Letters that are joined are left out: at a break their shape changes, and with it their width.
    const test::MixedText mixed =
        *test::mixedText(30, {U"a", U"hello", U"Wo", U" ", U"   ", U"-", U"\t", U"\u00E9", U"e\u0301",
                              U"\u4E2D\u6587", U"\u05E9\u05DC\u05D5\u05DD", U"\U0001F600"});
    const auto font = test::anyFont();
    const double width = test::anyWidth();
    const auto wrap = *rc::gen::element(Wrap::AtWords, Wrap::Anywhere);
    const double kerning = font->spaceWidth() / 4; // to the letter that a break takes away
    std::size_t begin = 0;
    for (const std::size_t end : breakIntoRows(mixed.text, *font, {width, width}, wrap)) {
        std::u32string text = mixed.text.substr(begin, end - begin);
        while (!text.empty() && (text.back() == U' ' || text.back() == U'\t')) {
            text.pop_back();
        }
        const std::size_t blanks = std::min(text.find_first_not_of(U" \t"), text.size());
        const RowLayout row(text, *font);
        // Behind blanks that fill a row there is one grapheme more.
        RC_ASSERT(row.width() <= width + 1.0 + kerning || row.nextGrapheme(blanks) == text.size());
        begin = end;
    }
}

} // namespace
} // namespace zephyr::console::qt
