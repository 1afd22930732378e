#include "ViewTestText.h"
#include "view/LogRows.h"

#include <string>
#include <thread>

namespace zephyr::console::qt {
namespace {

/// Follows a log to the entry that `isLast`, row by row as it is written. \return what the rows show.
template <typename IsLast>
std::vector<std::string> follow(const Console& console, const IsLast& isLast)
{
    LogRows rows;
    rows.setFormat(test::monospaced(), 200.0); // a font of this thread's own
    std::vector<std::string> found;
    Row row = rows.rowAt(console, {0, 0});
    found.push_back(test::describe(row));
    while (!isLast(row)) {
        if (const auto after = rows.rowAfter(console, row)) {
            row = *after;
            found.push_back(test::describe(row));
        } else {
            std::this_thread::yield();
        }
    }
    return found;
}

TEST(LogRowsThreads, AgreeWhileTheLogIsWritten)
{
    Console console;
    const auto isLast = [](const Row& row) { return row.text == U"the end"; };
    std::vector<std::string> one;
    std::vector<std::string> other;
    std::thread first([&] { one = follow(console, isLast); });
    std::thread second([&] { other = follow(console, isLast); });
    for (int i = 0; i < 200; ++i) {
        console.write(
            "entry " + std::to_string(i) + " with a few words to wrap\nand \u05E9\u05DC\u05D5\u05DD", Output);
        console.write(std::u32string(static_cast<std::size_t>(i) * 50, U'x'), Output);
    }
    console.write(U"the end", Output);
    first.join();
    second.join();
    EXPECT_EQ(one, other);
    LogRows rows;
    rows.setFormat(test::monospaced(), 200.0);
    EXPECT_EQ(test::describe(test::rowsForwards(rows, console)), one);
}

} // namespace
} // namespace zephyr::console::qt
