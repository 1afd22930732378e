#include "view/RowLayout.h"

#include "ViewTestText.h"

namespace zephyr::console::qt {
namespace {

class ARowLayout : public testing::Test
{
protected:
    std::shared_ptr<const ViewFont> font = test::monospaced();
    double column = font->spaceWidth();
};

TEST_F(ARowLayout, PlacesEachCodePointInItsColumn)
{
    const RowLayout row(U"abcd", *font);
    for (std::size_t i = 0; i <= 4; ++i) {
        EXPECT_DOUBLE_EQ(column * static_cast<double>(i), row.xOf(i));
    }
    EXPECT_DOUBLE_EQ(4 * column, row.width());
}

TEST_F(ARowLayout, TakesAnIndexBeyondTheTextAsItsEnd)
{
    const RowLayout row(U"abcd", *font);
    EXPECT_DOUBLE_EQ(row.width(), row.xOf(5));
    EXPECT_DOUBLE_EQ(row.width(), row.xOf(std::size_t(-1)));
    EXPECT_EQ(4U, row.nextGrapheme(3));
    EXPECT_EQ(4U, row.nextGrapheme(4));
    EXPECT_EQ(4U, row.nextGrapheme(std::size_t(-1)));
    EXPECT_EQ(4, row.unitAt(std::size_t(-1)));
}

TEST_F(ARowLayout, FindsTheCursorNearestToAPlace)
{
    const RowLayout row(U"abcd", *font);
    EXPECT_EQ(0U, row.indexNear(-100));
    EXPECT_EQ(1U, row.indexNear(column * 0.6));
    EXPECT_EQ(1U, row.indexNear(column * 1.4));
    EXPECT_EQ(4U, row.indexNear(1e6));
}

TEST_F(ARowLayout, FindsTheGraphemeAtAPlace)
{
    const RowLayout row(U"ae\u0301\u0302b", *font);
    EXPECT_EQ(0U, row.indexAt(column * 0.1));
    EXPECT_EQ(0U, row.indexAt(column * 0.9));
    EXPECT_EQ(1U, row.indexAt(column * 1.1));
    EXPECT_EQ(1U, row.indexAt(column * 1.9));
    EXPECT_EQ(4U, row.indexAt(column * 2.5));
    EXPECT_EQ(5U, row.indexAt(column * 3.5)) << "behind the end";
}

TEST_F(ARowLayout, TellsWhatAPartCovers)
{
    const RowLayout row(U"abcd", *font);
    const auto spans = row.spansOf(1, 2);
    ASSERT_EQ(1U, spans.size());
    EXPECT_DOUBLE_EQ(column, spans[0].first);
    EXPECT_DOUBLE_EQ(3 * column, spans[0].second);
}

TEST_F(ARowLayout, CoversAWholeGraphemeForAPartOfIt)
{
    const RowLayout row(U"ae\u0301b", *font);
    for (const int begin : {1, 2}) {
        const auto spans = row.spansOf(begin, 1);
        ASSERT_EQ(1U, spans.size());
        EXPECT_DOUBLE_EQ(column, spans[0].first) << begin;
        EXPECT_DOUBLE_EQ(2 * column, spans[0].second) << begin;
    }
}

TEST_F(ARowLayout, CoversPartsThatStandApartWhereDirectionsMeet)
{
    const RowLayout row(U"ab\u05d0\u05d1\u05d2cd", *font); // the middle three stand in the opposite order
    const auto left = row.spansOf(2, 3);
    ASSERT_EQ(1U, left.size());
    EXPECT_DOUBLE_EQ(row.xOf(0) + 2 * column, left[0].first);
    const auto apart = row.spansOf(1, 2); // "b", and the first of the three at their right end
    ASSERT_EQ(2U, apart.size());
    EXPECT_DOUBLE_EQ(column, apart[0].first);
    EXPECT_DOUBLE_EQ(2 * column, apart[0].second);
    EXPECT_GT(apart[1].first, 3 * column);
    EXPECT_DOUBLE_EQ(left[0].second, apart[1].second);
}

TEST_F(ARowLayout, CountsAnIndexWithinAGraphemeAsItsStart)
{
    const RowLayout row(U"ae\u0301\u0302b", *font);
    EXPECT_DOUBLE_EQ(row.xOf(1), row.xOf(2));
    EXPECT_DOUBLE_EQ(row.xOf(1), row.xOf(3));
    EXPECT_DOUBLE_EQ(2 * column, row.xOf(4));
    EXPECT_EQ(4U, row.nextGrapheme(1));
    EXPECT_EQ(4U, row.nextGrapheme(2));
    EXPECT_EQ(4U, row.nextGrapheme(3));
    EXPECT_EQ(5U, row.nextGrapheme(4));
}

TEST_F(ARowLayout, CountsBlanksAtItsEnd)
{
    const RowLayout row(U"a   ", *font);
    EXPECT_DOUBLE_EQ(4 * column, row.width());
    EXPECT_DOUBLE_EQ(3 * column, row.xOf(3));
    EXPECT_EQ(3U, row.indexAt(3.5 * column));
}

TEST_F(ARowLayout, CarriesTabsToTheirStops)
{
    const RowLayout row(U"ab\tc\t", *font);
    EXPECT_DOUBLE_EQ(8 * column, row.xOf(3));
    EXPECT_DOUBLE_EQ(16 * column, row.width());
    EXPECT_EQ(2U, row.indexAt(5 * column));
}

TEST_F(ARowLayout, MayBeEmpty)
{
    const RowLayout row(U"", *font);
    EXPECT_DOUBLE_EQ(0.0, row.width());
    EXPECT_DOUBLE_EQ(0.0, row.xOf(0));
    EXPECT_EQ(0U, row.indexNear(10.0));
    EXPECT_EQ(0U, row.indexAt(10.0));
    EXPECT_EQ(0U, row.nextGrapheme(0));
    EXPECT_TRUE(row.glyphs().isEmpty());
}

TEST_F(ARowLayout, PlacesRightToLeftTextFromItsRightEnd)
{
    const RowLayout row(U"ab\u05D0\u05D1\u05D2cd", *font);
    const double letters = 2 * column; // where they begin
    const double behind = row.width() - 2 * column;
    ASSERT_GT(behind, letters);
    EXPECT_EQ(2U, row.indexAt(behind - 1.0)) << "the first letter is the rightmost one";
    EXPECT_EQ(3U, row.indexAt((letters + behind) / 2));
    EXPECT_EQ(4U, row.indexAt(letters + 1.0));
    EXPECT_EQ(5U, row.indexAt(behind + 1.0));
    EXPECT_GT(row.xOf(3), row.xOf(4));
}

TEST_F(ARowLayout, StaysOnOneLineWhateverControlsItHas)
{
    const std::u32string text = U"a\u2029b\rc\vd\fe\u0085f\u2028";
    const RowLayout row(text, *font);
    EXPECT_EQ(1, row.layout().lineCount());
    EXPECT_DOUBLE_EQ(row.width(), row.xOf(text.size()));
    EXPECT_LT(row.xOf(text.size() - 2), row.width()) << "the last letter is in sight";
}

RC_GTEST_PROP(RowLayoutProperties, CursorsStandBetweenGraphemes, ())
{
    test::MixedText mixed = *test::mixedLine();
    // No row goes on behind a line separator, and an object's place is a pixel less than nothing wide to Qt.
    std::erase_if(mixed.text, [](char32_t c) { return c == U'\u2028' || c == U'\uFFFC'; });
    const auto font = test::anyFont();
    const RowLayout row(mixed.text, *font);
    // As Qt's layouts have them, which know more of some scripts than a boundary finder does.
    const auto isBoundary = [&](std::size_t index) {
        return index == 0 || row.layout().isValidCursorPosition(row.unitAt(index)); // of no text Qt denies it
    };
    const double x = *rc::gen::inRange(-10, static_cast<int>(row.width()) + 20);
    RC_ASSERT(isBoundary(row.indexNear(x)));
    RC_ASSERT(isBoundary(row.indexAt(x)));
    std::size_t start = 0; // of the grapheme
    for (std::size_t index = 0; index < mixed.text.size(); ++index) {
        start = isBoundary(index) ? index : start;
        RC_ASSERT(isBoundary(row.nextGrapheme(index)));
        RC_ASSERT(row.nextGrapheme(index) == row.nextGrapheme(start));
        RC_ASSERT(row.xOf(index) == row.xOf(start));
        RC_ASSERT(row.xOf(index) >= 0.0);
    }
}

RC_GTEST_PROP(RowLayoutProperties, WhatIsAtACursorIsFoundThere, ())
{
    const test::MixedText mixed = *test::mixedText(
        30, {U"a", U"hello", U" ", U"\u00E9", U"\u4E2D\u6587", U"e\u0301", U"\U0001F600", U"-"});
    const auto font = test::anyFont();
    const RowLayout row(mixed.text, *font);
    for (const std::size_t boundary : test::graphemeBoundaries(mixed.text)) {
        RC_ASSERT(row.indexNear(row.xOf(boundary)) == boundary);
        if (boundary < mixed.text.size()) {
            const double middle = (row.xOf(boundary) + row.xOf(row.nextGrapheme(boundary))) / 2;
            RC_ASSERT(row.indexAt(middle) == boundary);
        }
    }
}

} // namespace
} // namespace zephyr::console::qt
