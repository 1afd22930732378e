#include "view/TextMatcher.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

constexpr bool kMatchCase = true;

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

using Places = std::vector<std::size_t>;

TEST(TextMatcher, FindsEachMatchThatDoesNotOverlapTheOneBefore)
{
    EXPECT_EQ((Places{0, 2}), matches(TextMatcher(U"aa", kMatchCase), U"aaaaa"));
    EXPECT_EQ((Places{1}), matches(TextMatcher(U"aba", kMatchCase), U"xababa"));
    EXPECT_EQ((Places{2}), matches(TextMatcher(U"abac", kMatchCase), U"ababac"));
}

TEST(TextMatcher, FindsAnEmptyQueryNowhere)
{
    EXPECT_EQ(Places{}, matches(TextMatcher(U"", kMatchCase), U"abc"));
    EXPECT_EQ(Places{}, matches(TextMatcher(), U"abc"));
    EXPECT_FALSE(TextMatcher().isIn(U""));
}

TEST(TextMatcher, FoldsCaseUnlessItMatters)
{
    EXPECT_TRUE(TextMatcher(U"\u00c4\u03a3\U00010400z", !kMatchCase).isIn(U"\u00e4\u03c2\U00010428Z"));
    EXPECT_FALSE(TextMatcher(U"Z", kMatchCase).isIn(U"z"));
    EXPECT_TRUE(TextMatcher(U"Z", kMatchCase).isIn(U"yZ"));
}

TEST(TextMatcher, KeepsPlacesWhereFoldingMakesTextLonger)
{
    EXPECT_EQ((Places{2}), matches(TextMatcher(U"X", !kMatchCase), U"\u00df\u0130x"));
}

TEST(TextMatcher, ComparesWhatIsNoCharacterAsItIs)
{
    const std::u32string odd{char32_t{0xffffffff}, char32_t{0xd800}};
    EXPECT_TRUE(TextMatcher(odd, !kMatchCase).isIn(U"a" + odd));
    EXPECT_FALSE(TextMatcher(odd, !kMatchCase).isIn(U"\U0010ffff"));
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
        Places expected;
        for (std::size_t at = text.find(query); at != std::u32string::npos;
             at = text.find(query, at + query.size())) {
            expected.push_back(at);
        }
        EXPECT_EQ(expected, matches(TextMatcher(query, kMatchCase), text));
    }
}

} // namespace
} // namespace zephyr::console::qt
