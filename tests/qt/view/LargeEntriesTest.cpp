#include "ViewTestText.h"
#include "view/LogRows.h"

#include <algorithm>

namespace zephyr::console::qt {
namespace {

/// Far below what the large entries have, and far above what a window shows.
constexpr std::size_t kBound = 300000;

/// The length after which a long entry has a new row at the latest.
constexpr std::size_t kLongestRow = 4096;

/// Entries that no frame could lay out, in rows of 80 columns.
class ALargeEntry : public testing::Test
{
protected:
    ALargeEntry() { rows.setFormat(font, test::columns(*font, 80)); }

    void write(const std::u32string& text)
    {
        console.write(text, Output);
        size = text.size();
    }

    /// Goes `count` rows up from `row`, and the same way down again. \return the uppermost row.
    Row goUpAndDown(const Row& row, int count)
    {
        std::vector<Row> up = {row};
        for (int i = 0; i < count; ++i) {
            const auto before = rows.rowBefore(console, up.back(), test::kFirstEntry);
            if (!before) {
                break;
            }
            EXPECT_EQ(up.back().begin, before->end);
            up.push_back(*before);
        }
        // Other rows, which have kept none of what was laid out.
        LogRows others;
        others.setFormat(font, test::columns(*font, 80));
        for (auto expected = up.rbegin(); expected + 1 != up.rend(); ++expected) {
            const auto after = others.rowAfter(console, *expected);
            EXPECT_EQ(test::describe(*(expected + 1)), test::describe(after.value()));
        }
        EXPECT_LT(others.keptSize(), kBound);
        return up.back();
    }

    void expectBounded() const { EXPECT_LT(rows.keptSize(), kBound); }

    std::shared_ptr<const ViewFont> font = test::monospaced();
    Console console;
    LogRows rows;
    std::size_t size = 0;
};

TEST_F(ALargeEntry, OfOneLineIsReadWhereItIsLookedAt)
{
    write(std::u32string(5000000, U'x'));
    const Row last = rows.lastRow(console).value();
    EXPECT_EQ(size, last.end);
    expectBounded();
    goUpAndDown(last, 200);
    goUpAndDown(rows.rowAt(console, {test::kFirstEntry, size / 2}), 200);
    const Row first = rows.rowAt(console, {test::kFirstEntry, 0});
    EXPECT_EQ(80U, first.end);
    EXPECT_FALSE(rows.rowBefore(console, first, test::kFirstEntry).has_value());
    expectBounded();
}

TEST_F(ALargeEntry, OfLineFeedsIsReadWhereItIsLookedAt)
{
    write(std::u32string(1000000, U'\n'));
    const Row last = rows.lastRow(console).value();
    EXPECT_EQ(size, last.end);
    EXPECT_EQ(size - 1, last.begin);
    EXPECT_EQ(size - 1001, goUpAndDown(last, 1000).begin);
    EXPECT_EQ(size / 2, rows.rowAt(console, {test::kFirstEntry, size / 2}).begin);
    EXPECT_EQ(size / 2 - 10000, goUpAndDown(rows.rowAt(console, {test::kFirstEntry, size / 2}), 10000).begin);
    EXPECT_EQ(1U, rows.rowAt(console, {test::kFirstEntry, 0}).end);
    expectBounded();
}

TEST_F(ALargeEntry, OfOneGraphemeIsCutAllTheSame)
{
    write(U"e" + std::u32string(100000, U'\u0301'));
    const std::vector<Row> found = test::rowsForwards(rows, console, test::kFirstEntry);
    for (const Row& row : found) {
        EXPECT_LE(row.end - row.begin, kLongestRow);
    }
    EXPECT_EQ(size, found.back().end);
    EXPECT_EQ(test::describe(found), test::describe(test::rowsBackwards(rows, console, test::kFirstEntry)));
}

TEST_F(ALargeEntry, OfBlanksIsCutAllTheSame)
{
    write(std::u32string(100000, U' '));
    const std::vector<Row> found = test::rowsForwards(rows, console, test::kFirstEntry);
    for (const Row& row : found) {
        EXPECT_LE(row.end - row.begin, kLongestRow);
    }
    EXPECT_EQ(size, found.back().end);
}

TEST_F(ALargeEntry, OfShortLinesHasARowForEachLine)
{
    std::u32string text;
    for (int i = 0; i < 3000; ++i) {
        text += std::u32string(static_cast<std::size_t>(i % 70), U'x') + U'\n';
    }
    write(text);
    std::u32string again;
    for (const Row& row : test::rowsForwards(rows, console, test::kFirstEntry)) {
        again += row.text + U'\n';
    }
    EXPECT_EQ(text, again);
}

TEST_F(ALargeEntry, HasNoRowForALineFeedThatEndsAFullSegment)
{
    for (std::size_t length = kLongestRow - 2; length <= kLongestRow + 2; ++length) {
        SCOPED_TRACE(length);
        Console other;
        LogRows otherRows;
        otherRows.setFormat(font, 1e9);
        other.write(std::u32string(length, U'x') + U"\n", Output);
        std::vector<Row> found = test::rowsForwards(otherRows, other, test::kFirstEntry);
        EXPECT_EQ(length + 1, found.back().end);
        EXPECT_TRUE(
            std::none_of(found.begin(), found.end(), [](const Row& row) { return row.text.empty(); }));
        other.write(std::u32string(length, U'x') + U"\n\n" + std::u32string(length, U'y'), Output);
        found = test::rowsForwards(otherRows, other, test::kFirstEntry + 1);
        EXPECT_EQ(1,
                  std::count_if(found.begin(), found.end(), [](const Row& row) { return row.text.empty(); }));
    }
}

TEST_F(ALargeEntry, AndAllOfALongLogKeepABoundedPart)
{
    for (int i = 0; i < 20000; ++i) {
        console.write(std::u32string(100, U'x'), Output);
    }
    EXPECT_EQ(2 + 2 * 20000U, test::rowsBackwards(rows, console).size());
    expectBounded();
}

} // namespace
} // namespace zephyr::console::qt
