#include "zephyr/common/StringUtil.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using zephyr::StringUtil;
using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr char32_t kLastScalarValue = 0x10FFFF;
constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kLastSurrogate = 0xDFFF;

std::string bytes(std::initializer_list<int> values)
{
    std::string text;
    for (const int value : values) {
        text += static_cast<char>(value);
    }
    return text;
}

std::u32string replacements(std::size_t count) { return std::u32string(count, U'\uFFFD'); }

bool isSurrogate(char32_t value) { return value >= kFirstSurrogate && value <= kLastSurrogate; }

/// Every scalar value once, in order.
std::u32string everyScalarValue()
{
    std::u32string text;
    for (char32_t value = 0; value <= kLastScalarValue; ++value) {
        if (!isSurrogate(value)) {
            text += value;
        }
    }
    return text;
}

// What is well formed

TEST(StringUtilUtf8, TurnsEmptyTextIntoEmptyText)
{
    EXPECT_EQ(StringUtil::toString(U""), "");
    EXPECT_EQ(StringUtil::toU32String(""), U"");
    EXPECT_EQ(StringUtil::toString({}), "");
    EXPECT_EQ(StringUtil::toU32String({}), U"");
}

TEST(StringUtilUtf8, WritesEachLengthOfSequence)
{
    EXPECT_EQ(StringUtil::toString(U"A"), "A");
    EXPECT_EQ(StringUtil::toString(U"\u00A2"), "\xC2\xA2");
    EXPECT_EQ(StringUtil::toString(U"\u20AC"), "\xE2\x82\xAC");
    EXPECT_EQ(StringUtil::toString(U"\U00010348"), "\xF0\x90\x8D\x88");
}

TEST(StringUtilUtf8, KeepsTheEdgesOfEachLength)
{
    const std::u32string edges(U"\0\x7F\x80\x7FF\x800\xD7FF\xE000\xFFFD\xFFFE\xFFFF\x10000\x10FFFF"sv);
    const std::string utf8(
        "\x00\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD\xEF\xBF\xBE"
        "\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"sv);
    EXPECT_EQ(StringUtil::toString(edges), utf8);
    EXPECT_EQ(StringUtil::toU32String(utf8), edges);
}

TEST(StringUtilUtf8, ReturnsEveryScalarValueOnItsOwn)
{
    for (const char32_t value : everyScalarValue()) {
        const std::u32string text(1, value);
        ASSERT_EQ(StringUtil::toU32String(StringUtil::toString(text)), text) << static_cast<unsigned>(value);
    }
}

TEST(StringUtilUtf8, ReturnsEveryScalarValueInOneText)
{
    const std::u32string text = everyScalarValue();
    const std::string utf8 = StringUtil::toString(text);
    EXPECT_EQ(utf8.size(), 0x80U + 2 * 0x780U + 3 * 0xF000U + 4 * 0x100000U);
    EXPECT_TRUE(StringUtil::toU32String(utf8) == text);
}

TEST(StringUtilUtf8, KeepsByteOrderMarksWhereverTheyStand)
{
    const std::string utf8 = "\xEF\xBB\xBF\xEF\xBB\xBFx\xEF\xBB\xBF";
    EXPECT_EQ(StringUtil::toU32String(utf8), U"\uFEFF\uFEFFx\uFEFF");
    EXPECT_EQ(StringUtil::toString(U"\uFEFF\uFEFFx\uFEFF"), utf8);
    EXPECT_EQ(StringUtil::toU32String("\xEF\xBB\xBF"), U"\uFEFF");
}

TEST(StringUtilUtf8, KeepsNullsWhereverTheyStand)
{
    EXPECT_EQ(StringUtil::toU32String("\0a\0\0"sv), U"\0a\0\0"s);
    EXPECT_EQ(StringUtil::toString(U"\0a\0\0"sv), "\0a\0\0"s);
}

// What is ill formed, on the way in

TEST(StringUtilUtf8, ReplacesEachByteOfAnOverlongForm)
{
    EXPECT_EQ(StringUtil::toU32String("\xC0\x80"), replacements(2));
    EXPECT_EQ(StringUtil::toU32String("\xC0\xAF"), replacements(2));
    EXPECT_EQ(StringUtil::toU32String("\xC1\xBF"), replacements(2));
    EXPECT_EQ(StringUtil::toU32String("\xE0\x80\x80"), replacements(3));
    EXPECT_EQ(StringUtil::toU32String("\xE0\x9F\xBF"), replacements(3));
    EXPECT_EQ(StringUtil::toU32String("\xF0\x80\x80\x80"), replacements(4));
    EXPECT_EQ(StringUtil::toU32String("\xF0\x8F\xBF\xBF"), replacements(4));
}

TEST(StringUtilUtf8, ReplacesEachByteOfEverySurrogate)
{
    for (int second = 0xA0; second <= 0xBF; ++second) {
        for (int third = 0x80; third <= 0xBF; ++third) {
            ASSERT_EQ(StringUtil::toU32String(bytes({0xED, second, third})), replacements(3));
        }
    }
    EXPECT_EQ(StringUtil::toU32String("\xED\xA0\xBD\xED\xBA\x80"), replacements(6))
        << "a pair is no character";
}

TEST(StringUtilUtf8, ReplacesEachByteOfAValueBeyondTheLast)
{
    EXPECT_EQ(StringUtil::toU32String("\xF4\x90\x80\x80"), replacements(4));
    EXPECT_EQ(StringUtil::toU32String("\xF4\xBF\xBF\xBF"), replacements(4));
    EXPECT_EQ(StringUtil::toU32String("\xF7\xBF\xBF\xBF"), replacements(4));
    EXPECT_EQ(StringUtil::toU32String("\xF8\x88\x80\x80\x80"), replacements(5));
    EXPECT_EQ(StringUtil::toU32String("\xFD\xBF\xBF\xBF\xBF\xBF"), replacements(6));
}

TEST(StringUtilUtf8, ReplacesEveryByteThatCanStartNoSequence)
{
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        if (byte <= 0xC1 || byte >= 0xF5) {
            EXPECT_EQ(StringUtil::toU32String(bytes({byte})), replacements(1)) << byte;
            EXPECT_EQ(StringUtil::toU32String(bytes({'a', byte, byte, 'b'})), U"a\uFFFD\uFFFDb") << byte;
        }
    }
}

TEST(StringUtilUtf8, ReplacesATruncatedSequenceByOneMark)
{
    EXPECT_EQ(StringUtil::toU32String("\xC2"), U"\uFFFD");
    EXPECT_EQ(StringUtil::toU32String("\xE2\x82"), U"\uFFFD");
    EXPECT_EQ(StringUtil::toU32String("\xF0\x9F\x9A"), U"\uFFFD");
    EXPECT_EQ(StringUtil::toU32String("\xEF\xBB"), U"\uFFFD");
    EXPECT_EQ(StringUtil::toU32String("x\xF0\x9F\x9Ay\xE2\x82"), U"x\uFFFDy\uFFFD");
}

TEST(StringUtilUtf8, ReplacesEveryTruncationOfEverySequenceByOneMark)
{
    std::string truncated;
    std::size_t truncations = 0;
    for (char32_t value = 0x80; value <= kLastScalarValue; ++value) {
        const std::string whole = StringUtil::toString(std::u32string_view(&value, 1));
        for (std::size_t length = 1; !isSurrogate(value) && length < whole.size(); ++length) {
            truncated.append(whole, 0, length);
            ++truncations;
        }
    }
    EXPECT_TRUE(StringUtil::toU32String(truncated) == replacements(truncations));
}

TEST(StringUtilUtf8, ReplacesATruncatedSequenceAtTheEndByOneMark)
{
    // One value of each pair of lead and second byte that can stand together.
    for (char32_t value = 0x80; value <= kLastScalarValue; value += value < 0x10000 ? 0x40 : 0x1000) {
        const std::string whole = StringUtil::toString(std::u32string_view(&value, 1));
        for (std::size_t length = 1; !isSurrogate(value) && length < whole.size(); ++length) {
            ASSERT_EQ(StringUtil::toU32String(std::string("x").append(whole, 0, length)), U"x\uFFFD")
                << length;
        }
    }
}

TEST(StringUtilUtf8, EndsAnIllFormedPartWhereAnotherSequenceStarts)
{
    EXPECT_EQ(StringUtil::toU32String("\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"), U"\uFFFD\uFFFD\uFFFD\uFFFDA");
    EXPECT_EQ(StringUtil::toU32String("\xF0\x80\x80\x41"), U"\uFFFD\uFFFD\uFFFDA");
    EXPECT_EQ(StringUtil::toU32String("\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"), replacements(8) + U"A");
    EXPECT_EQ(StringUtil::toU32String("\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41"), replacements(8) + U"A");
    EXPECT_EQ(StringUtil::toU32String("\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"),
              replacements(5) + U"A" + replacements(2) + U"B");
    EXPECT_EQ(StringUtil::toU32String("\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64"),
              U"a\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd");
}

TEST(StringUtilUtf8, KeepsWhatIsWellFormedAroundIllFormedParts)
{
    EXPECT_EQ(StringUtil::toU32String(
                  "\xEF\xBB\xBF\0\xC3\xA9\xFF\xE2\x82\xAC\xEF\xBF\xBF\xC3\xF0\x9F\x9A\x80\xEF\xBF\xBD"sv),
              U"\uFEFF\0\u00E9\uFFFD\u20AC\uFFFF\uFFFD\U0001F680\uFFFD"s);
}

TEST(StringUtilUtf8, ReadsALongLineOfBrokenBytes)
{
    constexpr std::size_t kParts = 3'000'000;
    std::string broken;
    for (std::size_t i = 0; i < kParts; ++i) {
        broken += "\xF0\x9F\x9A";
    }
    EXPECT_TRUE(StringUtil::toU32String(broken) == replacements(kParts));
}

// What is no scalar value, on the way out

TEST(StringUtilUtf8, WritesAMarkForEverySurrogate)
{
    for (char32_t value = kFirstSurrogate; value <= kLastSurrogate; ++value) {
        ASSERT_EQ(StringUtil::toString(std::u32string_view(&value, 1)), "\xEF\xBF\xBD");
    }
    const char32_t pair[] = {0xD83D, 0xDE80};
    EXPECT_EQ(StringUtil::toString({pair, 2}), "\xEF\xBF\xBD\xEF\xBF\xBD") << "a pair is no character";
}

TEST(StringUtilUtf8, WritesAMarkForEveryValueBeyondTheLast)
{
    const char32_t beyond[] = {0x110000, 0x1FFFFF, 0x80000000, 0xFFFFFFFF};
    EXPECT_EQ(StringUtil::toString({beyond, 4}), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(StringUtilUtf8, NeverTakesALeadingValueForAByteOrder)
{
    const char32_t swapped[] = {0xFFFE0000, U'x', 0x62000000};
    EXPECT_EQ(StringUtil::toString({swapped, 3}), "\xEF\xBF\xBDx\xEF\xBF\xBD");
    EXPECT_EQ(StringUtil::toString(U"\uFFFEx"), "\xEF\xBF\xBEx");
}

// Trimming of bytes

// ASCII is converted by blocks, so what isn't stands at each place of a block, in texts of each length around some.
TEST(StringUtilUtf8, KeepsAsciiAroundOneOtherCodePointAtEachPlace)
{
    constexpr std::size_t kMost = 80;
    for (const char32_t other : {U'\u0080', U'\u00FF', U'\uFFFD', U'\U0010FFFF'}) {
        const std::string encoded = StringUtil::toString(std::u32string(1, other));
        ASSERT_GE(encoded.size(), 2U);
        for (std::size_t size = 1; size <= kMost; ++size) {
            for (std::size_t place = 0; place < size; ++place) {
                std::u32string text(size, U'a');
                text[place] = other;
                const std::string utf8 =
                    std::string(place, 'a') + encoded + std::string(size - place - 1, 'a');
                ASSERT_EQ(utf8, StringUtil::toString(text)) << size << ", " << place;
                ASSERT_EQ(text, StringUtil::toU32String(utf8)) << size << ", " << place;
            }
        }
    }
}

TEST(StringUtilUtf8, ReplacesAByteOrAValueThatIsNoneAtEachPlaceAmongAscii)
{
    constexpr std::size_t kMost = 80;
    for (std::size_t size = 1; size <= kMost; ++size) {
        for (std::size_t place = 0; place < size; ++place) {
            const std::u32string replaced =
                std::u32string(place, U'a') + U'\uFFFD' + std::u32string(size - place - 1, U'a');
            std::string broken(size, 'a');
            broken[place] = '\xFF';
            ASSERT_EQ(replaced, StringUtil::toU32String(broken)) << size << ", " << place;
            for (const std::uint32_t value :
                 {0x110000U, 0x80000041U}) { // the last one's lowest bits are a letter's
                std::u32string beyond(size, U'a');
                beyond[place] = static_cast<char32_t>(value);
                ASSERT_EQ(StringUtil::toString(replaced), StringUtil::toString(beyond))
                    << size << ", " << place;
            }
        }
    }
}

TEST(StringUtilTrim, LeavesBytesWithoutBlanksAtTheEndsAsTheyAre)
{
    EXPECT_EQ(StringUtil::trim(""sv), "");
    EXPECT_EQ(StringUtil::trim("a"sv), "a");
    EXPECT_EQ(StringUtil::trim("a \t b"sv), "a \t b");
    EXPECT_EQ(StringUtil::trim("x\xEF\xBB\xBFy"sv), "x\xEF\xBB\xBFy");
}

TEST(StringUtilTrim, TakesExactlyTheAsciiWhiteSpaceFromBytes)
{
    for (int byte = 0; byte <= 0xFF; ++byte) {
        const bool isBlank = byte == ' ' || (byte >= '\t' && byte <= '\r');
        const std::string blank = bytes({byte});
        EXPECT_EQ(StringUtil::trim(blank + "a" + blank), isBlank ? "a" : blank + "a" + blank) << byte;
    }
}

TEST(StringUtilTrim, TakesSpacesAndByteOrderMarksInAnyOrderFromBytes)
{
    EXPECT_EQ(
        StringUtil::trim("\xEF\xBB\xBF \t\xEF\xBB\xBF\xEF\xBB\xBF\n a b \r\xEF\xBB\xBF\v\xEF\xBB\xBF\f"sv),
        "a b");
    EXPECT_EQ(StringUtil::trim("// \xEF\xBB\xBF\r"sv), "//");
}

TEST(StringUtilTrim, LeavesNothingOfBytesThatAreAllBlank)
{
    EXPECT_EQ(StringUtil::trim(" \t\r\n"sv), "");
    EXPECT_EQ(StringUtil::trim("\xEF\xBB\xBF"sv), "");
    EXPECT_EQ(StringUtil::trim(" \xEF\xBB\xBF \xEF\xBB\xBF"sv), "");
}

TEST(StringUtilTrim, KeepsPartsOfAByteOrderMark)
{
    for (const std::string_view part : {"\xEF"sv, "\xEF\xBB"sv, "\xBB\xBF"sv, "\xBF"sv, "\xBF\xBB\xEF"sv}) {
        EXPECT_EQ(StringUtil::trim(part), part);
    }
    EXPECT_EQ(StringUtil::trim("\xEF\xBB\xBF\xBB\xBF"sv), "\xBB\xBF") << "the mark's bytes count once";
    EXPECT_EQ(StringUtil::trim("\xEF\xBB\xEF\xBB\xBF"sv), "\xEF\xBB");
    EXPECT_EQ(StringUtil::trim("\xEF \xBB\xBF"sv), "\xEF \xBB\xBF");
}

TEST(StringUtilTrim, KeepsSpacesBeyondAsciiAndOtherCharactersWhole)
{
    for (const std::string_view kept :
         {"\u00A0", "\u0085", "\u3000", "\u200B", "\uFEFE", "\uFF7F", "\U0001FEFF"}) {
        EXPECT_EQ(StringUtil::trim(kept), kept);
    }
}

// Trimming of code points

TEST(StringUtilTrim, LeavesCodePointsWithoutBlanksAtTheEndsAsTheyAre)
{
    EXPECT_EQ(StringUtil::trim(U""sv), U"");
    EXPECT_EQ(StringUtil::trim(U"a"sv), U"a");
    EXPECT_EQ(StringUtil::trim(U"a \u3000\uFEFF b"sv), U"a \u3000\uFEFF b");
}

TEST(StringUtilTrim, TakesExactlyTheUnicodeWhiteSpaceAndTheByteOrderMarkFromCodePoints)
{
    const std::u32string blanks =
        U"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008"
        U"\u2009\u200A\u2028\u2029\u202F\u205F\u3000\uFEFF";
    for (char32_t value = 0; value <= kLastScalarValue + 1; ++value) {
        const std::u32string text{value, U'a', value};
        const bool isBlank = blanks.find(value) != std::u32string::npos;
        ASSERT_EQ(StringUtil::trim(text), isBlank ? U"a" : text) << static_cast<unsigned>(value);
    }
    EXPECT_EQ(StringUtil::trim(U"\xFFFFFFFF"sv), U"\xFFFFFFFF");
}

TEST(StringUtilTrim, TakesBlanksInAnyOrderFromCodePoints)
{
    EXPECT_EQ(StringUtil::trim(U"\uFEFF \u3000\uFEFF\uFEFF\t a b\u00A0\uFEFF\n\uFEFF\u2028"sv), U"a b");
}

TEST(StringUtilTrim, LeavesNothingOfCodePointsThatAreAllBlank)
{
    EXPECT_EQ(StringUtil::trim(U"\uFEFF"sv), U"");
    EXPECT_EQ(StringUtil::trim(U" \u3000\uFEFF\u0085"sv), U"");
}

} // namespace
