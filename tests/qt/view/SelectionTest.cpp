#include "view/Selection.h"

#include "ViewTestText.h"
#include "zephyr/console/ConsoleSnapshot.h"

namespace zephyr::console::qt {
namespace {

constexpr std::size_t kEntry = test::kFirstEntry;

class TheSelectedText : public testing::Test
{
protected:
    QString of(TextPlace from, TextPlace to) const { return textOf({from, to}, console, input); }

    Console console;
    ConsoleInput input{U"typed", 0};
};

TEST_F(TheSelectedText, IsAPartOfAnEntry)
{
    console.write(U"hello world", Output);
    EXPECT_EQ(QStringLiteral("lo wo"), of({kEntry, 3}, {kEntry, 8}));
    EXPECT_EQ(QString(), of({kEntry, 3}, {kEntry, 3}));
    EXPECT_EQ(QStringLiteral("world"), of({kEntry, 6}, {kEntry, 1000}));
}

TEST_F(TheSelectedText, HasALineFeedBetweenEntries)
{
    console.write(U"one", Output);
    console.write(U"", Output);
    console.write(U"three", Output);
    EXPECT_EQ(QStringLiteral("ne\n\nth"), of({kEntry, 1}, {kEntry + 2, 2}));
    EXPECT_EQ(QStringLiteral("\n"), of({kEntry, 3}, {kEntry + 1, 0}));
}

TEST_F(TheSelectedText, HasThePromptWhereItIsSelected)
{
    console.write(U"help", Input);
    EXPECT_EQ(QStringLiteral(">> help"), of({kEntry, 0}, {kEntry, 7}));
    EXPECT_EQ(QStringLiteral("> he"), of({kEntry, 1}, {kEntry, 5}));
    EXPECT_EQ(QStringLiteral("help"), of({kEntry, 3}, {kEntry, 7}));
}

TEST_F(TheSelectedText, ReachesIntoTheInputLine)
{
    console.write(U"one", Output);
    EXPECT_EQ(QStringLiteral("one\n>> ty"), of({kEntry, 0}, {kInputLine, 5}));
    EXPECT_EQ(QStringLiteral("typed"), of({kInputLine, 3}, {kInputLine, 100}));
    EXPECT_EQ(QStringLiteral("> t"), of({kInputLine, 1}, {kInputLine, 4}));
}

TEST_F(TheSelectedText, KeepsTheLineFeedsOfAnEntry)
{
    console.writeIndented(U"one\n\ntwo\n", 2);
    EXPECT_EQ(QStringLiteral("  one\n\ntwo\n"), of({kEntry, 0}, {kEntry, 11}));
}

TEST_F(TheSelectedText, IsCutWhereTheLogEnds)
{
    console.write(U"one", Output);
    EXPECT_EQ(QStringLiteral("one"), of({kEntry, 0}, {kEntry, 100}));
    EXPECT_EQ(QString(), of({kEntry + 5, 0}, {kEntry + 5, 3}));
}

TEST_F(TheSelectedText, HasEachCodePointOfALargeEntry)
{
    std::u32string text;
    for (char32_t i = 0; i < 100000; ++i) {
        text.push_back(U'!' + i % 90);
    }
    console.write(text, Output);
    EXPECT_TRUE(QString::fromStdU32String(text) == of({kEntry, 0}, {kEntry, text.size()}));
    EXPECT_TRUE(QString::fromStdU32String(text.substr(4095, 60000)) == of({kEntry, 4095}, {kEntry, 64095}));
}

TEST_F(TheSelectedText, ReplacesWhatIsNoScalarValue)
{
    console.write(std::u32string{U'a', char32_t(0xD800), char32_t(0x110000), U'b'}, Output);
    EXPECT_EQ(QStringLiteral(u"a\uFFFD\uFFFDb"), of({kEntry, 0}, {kEntry, 4}));
}

class AUnitOfText : public testing::Test
{
protected:
    AUnitOfText() { console.write(U"one two\u00E9 34\n\nlast", Output); }

    /// The offsets of a unit of the entry.
    std::pair<std::size_t, std::size_t> at(std::size_t offset, Unit unit) const
    {
        const TextRange range = unitAround({kEntry, offset}, unit, console, input);
        EXPECT_EQ(kEntry, range.from.entry);
        EXPECT_EQ(kEntry, range.to.entry);
        return {range.from.offset, range.to.offset};
    }

    using Span = std::pair<std::size_t, std::size_t>;

    Console console;
    ConsoleInput input{U"typed line", 0};
};

TEST_F(AUnitOfText, IsTheWordAroundAPlace)
{
    EXPECT_EQ(Span(0, 3), at(0, Unit::Word));
    EXPECT_EQ(Span(0, 3), at(2, Unit::Word));
    EXPECT_EQ(Span(4, 8), at(4, Unit::Word));
    EXPECT_EQ(Span(4, 8), at(7, Unit::Word));
    EXPECT_EQ(Span(9, 11), at(10, Unit::Word));
    EXPECT_EQ(Span(13, 17), at(16, Unit::Word));
}

TEST_F(AUnitOfText, IsEmptyBehindALine)
{
    EXPECT_EQ(Span(11, 11), at(11, Unit::Word));
    EXPECT_EQ(Span(12, 12), at(12, Unit::Word));
    EXPECT_EQ(Span(17, 17), at(17, Unit::Word));
    EXPECT_EQ(Span(17, 17), at(1000, Unit::Word));
}

TEST_F(AUnitOfText, IsTheBlanksBetweenWords)
{
    EXPECT_EQ(Span(3, 4), at(3, Unit::Word));
    console.write(U"a    b", Output);
    const TextRange blanks = unitAround({kEntry + 1, 2}, Unit::Word, console, input);
    EXPECT_LE(blanks.from.offset, 2U);
    EXPECT_GT(blanks.to.offset, 2U);
    EXPECT_GE(blanks.from.offset, 1U);
    EXPECT_LE(blanks.to.offset, 5U);
}

TEST_F(AUnitOfText, IsTheLineAroundAPlace)
{
    EXPECT_EQ(Span(0, 11), at(0, Unit::Line));
    EXPECT_EQ(Span(0, 11), at(11, Unit::Line));
    EXPECT_EQ(Span(12, 12), at(12, Unit::Line)) << "an empty line";
    EXPECT_EQ(Span(13, 17), at(13, Unit::Line));
    EXPECT_EQ(Span(13, 17), at(1000, Unit::Line));
}

TEST_F(AUnitOfText, MayBeOfTheInputLine)
{
    const TextRange line = unitAround({kInputLine, 5}, Unit::Line, console, input);
    EXPECT_EQ((TextRange{{kInputLine, 0}, {kInputLine, 13}}), line);
    const TextRange word = unitAround({kInputLine, 5}, Unit::Word, console, input);
    EXPECT_EQ((TextRange{{kInputLine, 3}, {kInputLine, 8}}), word);
}

TEST_F(AUnitOfText, IsAPartOfAVeryLongWordOrLine)
{
    console.write(std::u32string(9000000, U'x'), Output);
    const auto sizeOf = [this](Unit unit) {
        const TextRange range = unitAround({kEntry + 1, 4500000}, unit, console, input);
        EXPECT_LT(range.from.offset, 4500000U);
        EXPECT_GT(range.to.offset, 4500000U);
        return range.to.offset - range.from.offset;
    };
    EXPECT_LT(sizeOf(Unit::Word), 100000U);
    EXPECT_LT(sizeOf(Unit::Line), 3000000U);
    EXPECT_GT(sizeOf(Unit::Line), 2000000U);
}

TEST_F(AUnitOfText, IsAllOfALongLine)
{
    const std::u32string line(100000, U'x');
    console.write(U"above\n" + line + U"\nbelow", Output);
    for (const std::size_t offset : {6U, 7U, 50000U, 100005U, 100006U}) {
        EXPECT_EQ((TextRange{{kEntry + 1, 6}, {kEntry + 1, 100006}}),
                  unitAround({kEntry + 1, offset}, Unit::Line, console, input))
            << offset;
    }
}

TEST(Selection, GrowsFromItsAnchorInBothDirections)
{
    const TextRange anchor = {{5, 10}, {5, 14}};
    Selection selection;
    EXPECT_TRUE(selection.range().isEmpty());
    selection.begin(anchor, Unit::Word);
    EXPECT_EQ(anchor, selection.range());
    EXPECT_EQ(Unit::Word, selection.unit());
    selection.extendTo({{6, 1}, {6, 3}});
    EXPECT_EQ((TextRange{{5, 10}, {6, 3}}), selection.range());
    selection.extendTo({{4, 1}, {4, 3}});
    EXPECT_EQ((TextRange{{4, 1}, {5, 14}}), selection.range()) << "the anchor stays selected";
    selection.extendTo({{5, 11}, {5, 12}});
    EXPECT_EQ(anchor, selection.range());
    selection.clear();
    EXPECT_TRUE(selection.range().isEmpty());
}

TEST(Selection, BeginsWhereItIsExtendedToAfterItWasCleared)
{
    Selection selection;
    selection.begin({{5, 10}, {5, 14}}, Unit::Word);
    selection.clear();
    selection.extendTo({{7, 3}, {7, 3}});
    EXPECT_TRUE(selection.range().isEmpty());
    EXPECT_EQ(Unit::Grapheme, selection.unit());
    selection.extendTo({{6, 1}, {6, 1}});
    EXPECT_EQ((TextRange{{6, 1}, {7, 3}}), selection.range());
}

RC_GTEST_PROP(SelectionProperties, AUnitHoldsItsPlaceAndCutsNoGrapheme, ())
{
    Console console;
    test::writeAnything(console, (*test::mixedText()).text);
    const std::u32string text = shownText(console.snapshot().lines().back());
    const auto offset = *rc::gen::inRange<std::size_t>(0, text.size() + 1);
    const auto unit = *rc::gen::element(Unit::Grapheme, Unit::Word, Unit::Line);
    const TextRange range = unitAround({kEntry, offset}, unit, console, {});
    RC_ASSERT(range.from <= range.to);
    RC_ASSERT(range.from.entry == kEntry);
    RC_ASSERT(range.to.entry == kEntry);
    RC_ASSERT(range.from.offset <= offset);
    RC_ASSERT(offset <= range.to.offset);
    RC_ASSERT(range.to.offset <= text.size());
    RC_ASSERT(text.substr(range.from.offset, range.to.offset - range.from.offset).find(U'\n') ==
                  std::u32string::npos ||
              (unit == Unit::Grapheme && text[range.from.offset] == U'\r'));
}

} // namespace
} // namespace zephyr::console::qt
