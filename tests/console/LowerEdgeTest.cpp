#include "zephyr/console/detail/LowerEdge.h"

#include "support/ConsoleView.h"

#include <QPicture>

#include <functional>

namespace zephyr::test {
namespace {

using console::detail::LowerEdge;

constexpr int kHeight = 100; // pixels
const std::u32string kPromptLine = U">> ";

/// "a" with `count` marks on it.
std::u32string marked(std::size_t count) { return U"a" + std::u32string(count, U'\u0301'); }

/// The edge on an image of kHeight pixels whose painter has been set up.
std::int64_t edgeOf(LowerEdge& edge, const ConsoleView& view, const std::u32string& promptLine = kPromptLine,
                    const std::function<void(QPainter&)>& setUp = {}, std::size_t first = 0)
{
    QImage canvas = scene(QSize(60, kHeight));
    QPainter p(&canvas);
    if (setUp) {
        setUp(p);
    }
    return edge.position(view.snapshot(), first, promptLine, kHeight, p);
}

/// How many lines the edge of a view that is scrolled back, with the entry `first` at its top, lies below the device.
std::int64_t linesBelow(LowerEdge& edge, const std::vector<console::LogEntry>& log,
                        const std::u32string& promptLine = kPromptLine, std::size_t first = 0)
{
    const std::int64_t below = edgeOf(edge, {.log = log, .scroll = 1}, promptLine, {}, first) - kHeight;
    EXPECT_EQ(below % lineHeight(), 0);
    return below / lineHeight();
}

TEST(LowerEdge, LiesOneLineBelowTheDeviceWhereNoTextHasMarks)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, numberedLog(3)), 1);
    EXPECT_EQ(linesBelow(edge, {}), 1);
}

TEST(LowerEdge, LiesALineLowerForEachMarkOfTheMostMarkedEntry)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, {output(marked(2)), output(marked(7)), output(U"b")}), 1 + 7);
}

TEST(LowerEdge, CountsNoLetterBeyondAsciiAsAMark)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, {output(U"\u00E9\u4E2D\U0001F600\xD800\xFFFF")}), 1);
}

TEST(LowerEdge, CountsTheMarksOfEntriesThatWereAdded)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, {output(marked(2))}), 1 + 2);
    EXPECT_EQ(linesBelow(edge, {output(marked(2)), output(marked(5))}), 1 + 5);
    EXPECT_EQ(linesBelow(edge, {output(marked(2)), output(marked(5)), output(marked(1))}), 1 + 5);
}

TEST(LowerEdge, CountsAnEntryOnce)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, {output(U"a")}), 1);
    EXPECT_EQ(linesBelow(edge, {output(marked(9))}), 1);
}

/// A thousand short lines, and a marked one at `index`.
std::vector<console::LogEntry> logWithMarksAt(std::size_t index, std::size_t marks)
{
    std::vector<console::LogEntry> log(1000, output(U"b"));
    log[index] = output(marked(marks));
    return log;
}

TEST(LowerEdge, LooksAsFarDownAsAShortTextCouldReach)
{
    const auto fitting = static_cast<std::size_t>(kHeight / lineHeight());
    LowerEdge near;
    EXPECT_EQ(linesBelow(near, logWithMarksAt(fitting + 255, 255)), 1 + 255);
    LowerEdge far;
    EXPECT_EQ(linesBelow(far, logWithMarksAt(fitting + 270, 255)), 1);
}

TEST(LowerEdge, LooksAtEachLongText)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, logWithMarksAt(999, 256)), 1 + 256);
}

TEST(LowerEdge, LooksBelowTheTopOfTheView)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, logWithMarksAt(400, 3), kPromptLine, 401), 1);
    EXPECT_EQ(linesBelow(edge, logWithMarksAt(400, 3), kPromptLine, 400), 1 + 3);
}

TEST(LowerEdge, CountsMarksAgainWhereTheViewJumps)
{
    const std::vector<console::LogEntry> log = logWithMarksAt(900, 3);
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, log), 1);
    EXPECT_EQ(linesBelow(edge, log, kPromptLine, 899), 1 + 3);
    EXPECT_EQ(linesBelow(edge, log), 1);
}

TEST(LowerEdge, TakesAViewFromBeyondTheLog)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, {output(marked(2))}, kPromptLine, 5), 1);
}

TEST(LowerEdge, CountsThePromptLineOfTheFrameOnly)
{
    LowerEdge edge;
    EXPECT_EQ(linesBelow(edge, {output(marked(2))}, marked(6)), 1 + 6);
    EXPECT_EQ(linesBelow(edge, {output(marked(2))}), 1 + 2);
}

TEST(LowerEdge, IsLowestWhereTheViewIsNotScrolledBack)
{
    LowerEdge edge;
    EXPECT_EQ(edgeOf(edge, {.log = numberedLog(3)}), LowerEdge::kLowest);
}

TEST(LowerEdge, IsLowestWhereThePainterIsTransformed)
{
    LowerEdge edge;
    const ConsoleView view{.log = numberedLog(3), .scroll = 1};
    EXPECT_EQ(edgeOf(edge, view, kPromptLine, [](QPainter& p) { p.translate(0, -1); }), LowerEdge::kLowest);
    EXPECT_EQ(edgeOf(edge, view, kPromptLine, [](QPainter& p) { p.setViewport(0, -9, 60, kHeight); }),
              LowerEdge::kLowest);
}

TEST(LowerEdge, IsLowestOnADeviceThatRecords)
{
    LowerEdge edge;
    QPicture picture;
    QPainter p(&picture);
    EXPECT_EQ(edge.position(ConsoleView{.scroll = 1}.snapshot(), 0, kPromptLine, kHeight, p),
              LowerEdge::kLowest);
}

TEST(LowerEdge, LiesBelowTheLargerOfTheLogicalHeightAndTheDevices)
{
    LowerEdge edge;
    QImage canvas = scene(QSize(60, kHeight));
    QPainter p(&canvas);
    const console::ConsoleSnapshot snapshot = ConsoleView{.scroll = 1}.snapshot();
    EXPECT_EQ(edge.position(snapshot, 0, kPromptLine, kHeight / 2, p), kHeight + lineHeight());
    EXPECT_EQ(edge.position(snapshot, 0, kPromptLine, kHeight * 2, p), kHeight * 2 + lineHeight());
}

TEST(LowerEdge, IsNeverLowerThanTheLowest)
{
    LowerEdge edge;
    ConsoleView view{.log = {output(marked(300000))}, .scroll = 1};
    view.font->setPixelSize(1 << 14);
    EXPECT_EQ(edgeOf(edge, view), LowerEdge::kLowest);
}

} // namespace
} // namespace zephyr::test
