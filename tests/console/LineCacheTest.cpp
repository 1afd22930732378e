#include "zephyr/console/detail/LineCache.h"

#include "support/ConsoleView.h"

#include <string>
#include <vector>

namespace zephyr::test {
namespace {

using console::LogEntry;
using console::detail::LineCache;

std::vector<std::string> linesOf(LineCache& cache, const std::vector<LogEntry>& log, std::size_t index)
{
    std::vector<std::string> texts;
    for (const QStaticText& line : cache.displayLines(log, index)) {
        texts.push_back(line.text().toStdString());
    }
    return texts;
}

std::vector<std::string> linesOf(const LogEntry& entry)
{
    LineCache cache;
    return linesOf(cache, {entry}, 0);
}

using Texts = std::vector<std::string>;

TEST(LineCache, LaysOutOneLineForEachLineOfTheText)
{
    EXPECT_EQ(linesOf(output(U"a")), Texts({"a"}));
    EXPECT_EQ(linesOf(output(U"a\n\nb\n")), Texts({"a", "", "b"}));
}

TEST(LineCache, GivesAnEmptyEntryOneLine)
{
    EXPECT_EQ(linesOf(output(U"")), Texts({""}));
    EXPECT_EQ(linesOf(output(U"\n", 4)), Texts({""}));
}

TEST(LineCache, PutsThePromptInFrontOfAnEcho)
{
    EXPECT_EQ(linesOf(echo(U"help")), Texts({">> help"}));
    EXPECT_EQ(linesOf(echo(U"a\nb", 2)), Texts({">> a", "  b"}));
}

TEST(LineCache, IndentsEveryLineButTheFirst)
{
    EXPECT_EQ(linesOf(output(U"  a\nb\n c", 2)), Texts({"  a", "  b", "   c"}));
}

TEST(LineCache, TakesMarkupForText)
{
    LineCache cache;
    EXPECT_EQ(cache.displayLines({output(U"<b>x</b>")}, 0).front().textFormat(), Qt::PlainText);
}

TEST(LineCache, LaysAnEntryOutOnce)
{
    LineCache cache;
    EXPECT_EQ(linesOf(cache, {output(U"first")}, 0), Texts({"first"}));
    EXPECT_EQ(linesOf(cache, {output(U"other")}, 0), Texts({"first"}));
}

TEST(LineCache, KeepsEachEntryUnderItsIndexWhereverItBegins)
{
    LineCache cache;
    const std::vector<LogEntry> log = numberedLog(40);
    const std::vector<LogEntry> other(40, output(U"laid out again"));
    const std::vector<std::size_t> order{20, 19, 21, 10, 39, 0, 5, 30, 1};
    for (const std::size_t index : order) {
        EXPECT_EQ(linesOf(cache, log, index), Texts({"line " + std::to_string(index)}));
    }
    for (const std::size_t index : order) {
        EXPECT_EQ(linesOf(cache, other, index), Texts({"line " + std::to_string(index)}));
    }
}

TEST(LineCache, IsIndependentOfItsCopies)
{
    LineCache cache;
    EXPECT_EQ(linesOf(cache, {output(U"a"), output(U"b")}, 0), Texts({"a"}));
    LineCache copy = cache;
    EXPECT_EQ(linesOf(copy, {output(U"x"), output(U"y")}, 1), Texts({"y"}));
    EXPECT_EQ(linesOf(cache, {output(U"a"), output(U"b")}, 1), Texts({"b"}));
    EXPECT_EQ(linesOf(copy, {output(U"x"), output(U"y")}, 0), Texts({"a"}));
}

} // namespace
} // namespace zephyr::test
