#include "view/EditDistance.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h> // needs the header above

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

TEST(EditDistance, CountsInsertionsErasuresReplacementsAndExchangedNeighbours)
{
    EXPECT_EQ(0U, editDistance(U"help", U"help", 3));
    EXPECT_EQ(1U, editDistance(U"hlp", U"help", 3));
    EXPECT_EQ(1U, editDistance(U"heelp", U"help", 3));
    EXPECT_EQ(1U, editDistance(U"halp", U"help", 3));
    EXPECT_EQ(1U, editDistance(U"hepl", U"help", 3));
    EXPECT_EQ(3U, editDistance(U"kitten", U"sitting", 3));
    EXPECT_EQ(2U, editDistance(U"", U"ab", 3));
}

TEST(EditDistance, IsNothingBeyondTheLimit)
{
    EXPECT_EQ(std::nullopt, editDistance(U"kitten", U"sitting", 2));
    EXPECT_EQ(std::nullopt, editDistance(U"", U"abcd", 3));
    EXPECT_EQ(std::nullopt, editDistance(U"a", U"b", 0));
    EXPECT_EQ(0U, editDistance(U"", U"", 0));
}

/// The same without a limit, by the plain table.
std::size_t plainDistance(const std::u32string& a, const std::u32string& b)
{
    std::vector<std::vector<std::size_t>> table(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                table[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = table[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            table[i][j] = std::min({replaced, table[i - 1][j] + 1, table[i][j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + 1);
            }
        }
    }
    return table[a.size()][b.size()];
}

RC_GTEST_PROP(EditDistance, IsThatOfTheWholeTableUpToTheLimit, ())
{
    const auto text = rc::gen::container<std::u32string>(rc::gen::element(U'a', U'b', U'c'));
    const std::u32string a = *text;
    const std::u32string b = *text;
    const std::size_t limit = *rc::gen::inRange<std::size_t>(0, 8);
    const std::size_t plain = plainDistance(a, b);
    const std::optional<std::size_t> distance = editDistance(a, b, limit);
    RC_ASSERT(distance == (plain > limit ? std::nullopt : std::optional(plain)));
}

} // namespace
} // namespace zephyr::console::qt
