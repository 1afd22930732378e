#include "view/TextMatcher.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

constexpr bool kCaseMatters = true;

/// Where matches begin.
std::vector<std::size_t> matches(const TextMatcher& matcher, const std::u32string& text)
{
    std::vector<std::size_t> found;
    std::size_t matched = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (matcher.step(text[i], matched)) {
            found.push_back(i + 1 - matcher.length());
        }
    }
    return found;
}

using Offsets = std::vector<std::size_t>;

TEST(TextMatcher, FindsEachMatchThatDoesNotOverlapTheOneBefore)
{
    EXPECT_EQ((Offsets{0, 2}), matches(TextMatcher(U"aa", kCaseMatters), U"aaaaa"));
    EXPECT_EQ((Offsets{1}), matches(TextMatcher(U"aba", kCaseMatters), U"xababa"));
    EXPECT_EQ((Offsets{2}), matches(TextMatcher(U"abac", kCaseMatters), U"ababac"));
}

TEST(TextMatcher, FindsAnEmptyQueryNowhere)
{
    EXPECT_EQ(Offsets{}, matches(TextMatcher(U"", kCaseMatters), U"abc"));
    EXPECT_EQ(Offsets{}, matches(TextMatcher(), U"abc"));
    EXPECT_FALSE(TextMatcher().isIn(U""));
}

TEST(TextMatcher, FoldsCaseUnlessItMatters)
{
    EXPECT_TRUE(TextMatcher(U"\u00c4\u03a3\U00010400z", !kCaseMatters).isIn(U"\u00e4\u03c2\U00010428Z"));
    EXPECT_FALSE(TextMatcher(U"Z", kCaseMatters).isIn(U"z"));
    EXPECT_TRUE(TextMatcher(U"Z", kCaseMatters).isIn(U"yZ"));
}

TEST(TextMatcher, KeepsPlacesWhereFoldingMakesTextLonger)
{
    EXPECT_EQ((Offsets{2}), matches(TextMatcher(U"X", !kCaseMatters), U"\u00df\u0130x"));
}

TEST(TextMatcher, ComparesWhatIsNoCharacterAsItIs)
{
    const std::u32string odd{char32_t{0xffffffff}, char32_t{0xd800}};
    EXPECT_TRUE(TextMatcher(odd, !kCaseMatters).isIn(U"a" + odd));
    EXPECT_FALSE(TextMatcher(odd, !kCaseMatters).isIn(U"\U0010ffff"));
}

TEST(TextMatcher, FindsWhatASimpleSearchFinds)
{
    std::mt19937 random(1);
    const auto textOf = [&](std::size_t length) {
        std::u32string text;
        for (std::size_t i = 0; i < length; ++i) {
            text += U"ab"[random() % 2];
        }
        return text;
    };
    for (int round = 0; round < 2000; ++round) {
        const std::u32string query = textOf(1 + random() % 6);
        const std::u32string text = textOf(random() % 60);
        Offsets expected;
        for (std::size_t at = text.find(query); at != std::u32string::npos;
             at = text.find(query, at + query.size())) {
            expected.push_back(at);
        }
        EXPECT_EQ(expected, matches(TextMatcher(query, kCaseMatters), text));
    }
}

} // namespace
} // namespace zephyr::console::qt
