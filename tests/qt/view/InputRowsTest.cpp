#include "view/InputRows.h"

#include "ViewTestText.h"
#include "view/RowLayout.h"
#include "zephyr/console/Texts.h"

#include <algorithm>
#include <numeric>

namespace zephyr::console::qt {
namespace {

/// A text as the rows show it: no blank hangs over the end of a row.
std::u32string withNoBreakSpaces(std::u32string text)
{
    std::replace(text.begin(), text.end(), U' ', U'\u00A0');
    return text;
}

/// What the rows show, without the room for the cursor at the end.
std::u32string joined(const std::vector<Row>& rows)
{
    std::u32string text =
        std::accumulate(rows.begin(), rows.end(), std::u32string(),
                        [](const std::u32string& before, const Row& row) { return before + row.text; });
    if (text.empty() || text.back() != U'\u00A0') {
        ADD_FAILURE() << "no room for the cursor";
    } else {
        text.pop_back();
    }
    return text;
}

class TheInputRows : public testing::Test
{
protected:
    InputRows layOut(const std::u32string& text, std::uint32_t cursor, int columns,
                     const QString& composition = {}) const
    {
        return {{text, cursor}, composition, *font, test::columns(*font, columns)};
    }

    std::shared_ptr<const ViewFont> font = test::monospaced();
};

TEST_F(TheInputRows, AreThePromptForAnEmptyLine)
{
    const InputRows input = layOut(U"", 0, 20);
    ASSERT_EQ(1U, input.rows().size());
    EXPECT_EQ(withNoBreakSpaces(U">> "), joined(input.rows()));
    EXPECT_EQ(kInputLine, input.rows()[0].entry);
    EXPECT_EQ(Tone::Input, input.rows()[0].tone);
    EXPECT_EQ(3U, input.cursor());
    EXPECT_EQ(3U, input.compositionBegin());
    EXPECT_EQ(0U, input.cursorRow());
}

TEST_F(TheInputRows, WrapAtGraphemes)
{
    const InputRows input = layOut(U"0123456789abcde", 2, 10);
    ASSERT_EQ(3U, input.rows().size());
    EXPECT_EQ(withNoBreakSpaces(U">> 0123456"), input.rows()[0].text);
    EXPECT_EQ(0U, input.rows()[0].begin);
    EXPECT_EQ(0.0, input.rows()[0].x);
    EXPECT_EQ(10U, input.rows()[0].end);
    EXPECT_EQ(10U, input.rows()[1].begin);
    EXPECT_EQ(U"789abcd", input.rows()[1].text) << "below the line, and not below the prompt";
    EXPECT_DOUBLE_EQ(3 * font->spaceWidth(), input.rows()[1].x);
    EXPECT_EQ(5U, input.cursor());
    EXPECT_EQ(0U, input.cursorRow());
}

TEST_F(TheInputRows, HaveRoomForTheCursorAtTheEnd)
{
    for (std::uint32_t length = 0; length < 40; ++length) {
        const InputRows input = layOut(std::u32string(length, U'x'), length, 10);
        const Row& row = input.rows().at(input.cursorRow());
        EXPECT_EQ(input.cursorRow() + 1, input.rows().size());
        EXPECT_LT(input.cursor(), row.end);
        const double x = row.x + RowLayout(row.text, *font).xOf(input.cursor() - row.begin);
        EXPECT_LE(x + font->spaceWidth(), test::columns(*font, 10)) << "of " << length;
    }
}

TEST_F(TheInputRows, HaveTheCursorInFrontOfTheRowThatItBegins)
{
    const InputRows input = layOut(U"0123456789abcde", 7, 10);
    EXPECT_EQ(10U, input.cursor());
    EXPECT_EQ(1U, input.cursorRow());
}

TEST_F(TheInputRows, TakeACursorBeyondTheLineAsItsEnd)
{
    const InputRows input = layOut(U"abc", 2000, 20);
    EXPECT_EQ(6U, input.cursor());
    EXPECT_EQ(0U, input.cursorRow());
}

TEST_F(TheInputRows, ShowACompositionAtTheCursor)
{
    const InputRows input = layOut(U"ab", 1, 20, QStringLiteral(u"\u4E2D\U0001F600"));
    EXPECT_EQ(withNoBreakSpaces(U">> a\u4E2D\U0001F600b"), joined(input.rows()));
    EXPECT_EQ(4U, input.compositionBegin());
    EXPECT_EQ(6U, input.cursor());
}

TEST_F(TheInputRows, ShowSignsForWhatHasNoShape)
{
    const InputRows input = layOut(U"a\nb\u0001c", 0, 20);
    ASSERT_EQ(1U, input.rows().size());
    const std::u32string& text = input.rows()[0].text;
    ASSERT_EQ(9U, text.size());
    EXPECT_NE(U'\n', text[4]);
    EXPECT_NE(U'\u0001', text[6]);
    EXPECT_EQ(U'c', text[7]);
}

TEST_F(TheInputRows, MayBeWiderThanTheWindow)
{
    for (const double width : {-10.0, 0.0, 1.0}) {
        const InputRows input({U"abc", 3}, {}, *font, width);
        EXPECT_EQ(withNoBreakSpaces(U">> abc"), joined(input.rows()));
        EXPECT_EQ(6U, input.cursor());
        EXPECT_LT(input.cursorRow(), input.rows().size());
    }
}

TEST(WithSigns, LeavesTabsAndText) { EXPECT_EQ(U"a\tb \u00E9\u4E2D", withSigns(U"a\tb \u00E9\u4E2D")); }

TEST(WithSigns, ReplacesEachControlCharacter)
{
    for (char32_t c = 0; c < 0x100; ++c) {
        const std::u32string text = withSigns(std::u32string(1, c));
        ASSERT_EQ(1U, text.size());
        const bool isControl = QChar::category(c) == QChar::Other_Control && c != U'\t';
        EXPECT_EQ(isControl, text[0] != c) << static_cast<unsigned>(c);
        EXPECT_TRUE(text[0] == U'\t' || QChar::isPrint(text[0]) || c == 0xAD) << static_cast<unsigned>(c);
    }
}

RC_GTEST_PROP(InputRowsProperties, ShowAllOfTheLineInOrderAndCutNoGrapheme, ())
{
    const test::MixedText mixed = *test::mixedText();
    const test::MixedText composed = *test::mixedText(3);
    const auto cursor =
        *rc::gen::inRange<std::uint32_t>(0, static_cast<std::uint32_t>(mixed.text.size()) + 3);
    const QString composition = LaidOutText(composed.text).text();
    const auto font = test::anyFont();
    const double width = test::anyWidth();
    const InputRows input({mixed.text, cursor}, composition, *font, width);

    std::u32string expected = kPrompt + mixed.text;
    const std::size_t at = std::min<std::size_t>(cursor, mixed.text.size()) + 3;
    const std::u32string inserted = composition.toStdU32String();
    expected.insert(at, inserted);
    expected = withNoBreakSpaces(withSigns(expected));
    RC_ASSERT(joined(input.rows()) == expected);
    RC_ASSERT(input.compositionBegin() == at);
    RC_ASSERT(input.cursor() == at + inserted.size());

    const std::vector<std::size_t> boundaries = test::graphemeBoundaries(expected + U'\u00A0');
    std::size_t begin = 0;
    for (const Row& row : input.rows()) {
        RC_ASSERT(row.entry == kInputLine);
        RC_ASSERT(row.begin == begin);
        RC_ASSERT(std::binary_search(boundaries.begin(), boundaries.end(), row.end));
        begin = row.end;
    }
    const Row& row = input.rows().at(input.cursorRow());
    RC_ASSERT(row.begin <= input.cursor());
    RC_ASSERT(input.cursor() <= row.end);
}

} // namespace
} // namespace zephyr::console::qt
