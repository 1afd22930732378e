#include "SplitString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using Pieces = std::vector<std::u32string>;

std::u32string masked(std::u32string text, char32_t delimiter)
{
    maskQuoted(text, delimiter);
    return text;
}

std::u32string unmasked(std::u32string text, char32_t delimiter)
{
    unmask(text, delimiter);
    return text;
}

std::u32string unmaskedInQuotes(std::u32string text, char32_t delimiter)
{
    unmaskQuoted(text, delimiter);
    return text;
}

std::u32string withoutQuotes(std::u32string text)
{
    removeQuotes(text);
    return text;
}

TEST(SplitString, GivesNoPieceForAnEmptyText) { EXPECT_EQ(splitString(U"", U' '), Pieces()); }

TEST(SplitString, GivesTheWholeTextWhereThereIsNoDelimiter)
{
    EXPECT_EQ(splitString(U"abc", U' '), Pieces({U"abc"}));
}

TEST(SplitString, CutsAtEachDelimiter) { EXPECT_EQ(splitString(U"a b c", U' '), Pieces({U"a", U"b", U"c"})); }

TEST(SplitString, KeepsAnEmptyPieceBetweenTwoDelimiters)
{
    EXPECT_EQ(splitString(U"a;;b", U';'), Pieces({U"a", U"", U"b"}));
}

TEST(SplitString, KeepsAnEmptyPieceBeforeALeadingDelimiter)
{
    EXPECT_EQ(splitString(U" a", U' '), Pieces({U"", U"a"}));
}

TEST(SplitString, DropsTheEmptyPieceAfterTheLastDelimiter)
{
    EXPECT_EQ(splitString(U"a;b;", U';'), Pieces({U"a", U"b"}));
    EXPECT_EQ(splitString(U"a  ", U' '), Pieces({U"a", U""}));
}

TEST(SplitString, GivesOneEmptyPieceForALoneDelimiter)
{
    EXPECT_EQ(splitString(U";", U';'), Pieces({U""}));
    EXPECT_EQ(splitString(U"===", U'='), Pieces({U"", U"", U""}));
}

TEST(SplitString, CutsAtTheGivenDelimiterOnly)
{
    EXPECT_EQ(splitString(U"a\tb c\nd", U'\n'), Pieces({U"a\tb c", U"d"}));
}

TEST(SplitString, CutsAtANulAndBeyondTheBasicPlane)
{
    EXPECT_EQ(splitString(std::u32string_view(U"a\0b", 3), U'\0'), Pieces({U"a", U"b"}));
    EXPECT_EQ(splitString(U"a\U0001F600b", U'\U0001F600'), Pieces({U"a", U"b"}));
}

TEST(SplitUnquoted, CutsLikeSplitStringWhereThereAreNoQuotes)
{
    for (const std::u32string text : {U"", U" ", U"a", U"a b c", U" a  b ", U"caf\u00E9 \U0001F600"}) {
        EXPECT_EQ(splitUnquoted(text, U' '), splitString(text, U' '));
    }
}

TEST(SplitUnquoted, KeepsAQuotedPhraseWithItsQuotesInOneWord)
{
    EXPECT_EQ(splitUnquoted(U"a \"b  c\" d", U' '), Pieces({U"a", U"\"b  c\"", U"d"}));
    EXPECT_EQ(splitUnquoted(U"a \"b c", U' '), Pieces({U"a", U"\"b c"}));
    EXPECT_EQ(splitUnquoted(U"a\"\" b", U' '), Pieces({U"a\"\"", U"b"}));
}

TEST(SplitUnquoted, ReadsAMaskInTheTextAsADelimiterThatDoesNotCut)
{
    EXPECT_EQ(splitUnquoted(U"a\uFFFFb c", U' '), Pieces({U"a b", U"c"}));
    EXPECT_EQ(splitUnquoted(U"\"a\uFFFFb\" c", U' '), Pieces({U"\"a b\"", U"c"}));
}

TEST(MaskQuoted, ReplacesDelimitersInsideQuotesOnly)
{
    EXPECT_EQ(masked(U"a \"b c\" d", U' '), U"a \"b\uFFFFc\" d");
}

TEST(MaskQuoted, LeavesATextWithoutQuotesAlone)
{
    EXPECT_EQ(masked(U"a b=c", U' '), U"a b=c");
    EXPECT_EQ(masked(U"", U' '), U"");
}

TEST(MaskQuoted, OpensAndClosesAtEveryQuote)
{
    EXPECT_EQ(masked(U"\" \" \" \"", U' '), U"\"\uFFFF\" \"\uFFFF\"");
    EXPECT_EQ(masked(U"a\"\" b", U' '), U"a\"\" b");
}

TEST(MaskQuoted, ReachesFromAnUnmatchedQuoteToTheEnd)
{
    EXPECT_EQ(masked(U"a b\" c d", U' '), U"a b\"\uFFFFc\uFFFFd");
}

TEST(MaskQuoted, ReplacesTheGivenDelimiterOnly) { EXPECT_EQ(masked(U"\"a=b c\"", U'='), U"\"a\uFFFFb c\""); }

TEST(Unmask, ReplacesEveryMaskQuotesOrNot) { EXPECT_EQ(unmasked(U"a\uFFFF\"b\uFFFF\"", U' '), U"a \"b \""); }

TEST(UnmaskQuoted, ReplacesMasksInsideQuotesOnly)
{
    EXPECT_EQ(unmaskedInQuotes(U"a\uFFFF\"b\uFFFF\"\uFFFF", U'='), U"a\uFFFF\"b=\"\uFFFF");
}

TEST(UnmaskQuoted, ReachesFromAnUnmatchedQuoteToTheEnd)
{
    EXPECT_EQ(unmaskedInQuotes(U"\uFFFF\"a\uFFFF", U'='), U"\uFFFF\"a=");
}

TEST(UnmaskQuoted, UndoesMaskQuoted)
{
    const std::u32string text = U"/a=\"b=c\" \"=\" d=";
    EXPECT_EQ(unmaskedInQuotes(masked(text, U'='), U'='), text);
}

TEST(RemoveQuotes, RemovesEveryQuoteWhereverItStands)
{
    EXPECT_EQ(withoutQuotes(U"\"a\"\"b\" c\""), U"ab c");
    EXPECT_EQ(withoutQuotes(U"\"\"\"\""), U"");
    EXPECT_EQ(withoutQuotes(U""), U"");
}

TEST(RemoveQuotes, KeepsOtherQuotationMarks)
{
    EXPECT_EQ(withoutQuotes(U"'a' \u201Cb\u201D `c`"), U"'a' \u201Cb\u201D `c`");
}

} // namespace
} // namespace zephyr::console
