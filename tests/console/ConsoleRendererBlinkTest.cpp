#include "support/ConsoleView.h"

#include "zephyr/console/ConsoleRenderer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace zephyr::test {
namespace {

using console::ConsoleRenderer;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Whether the picture shows this prompt line and nothing else.
bool showsPromptLine(const QImage& picture, const QString& promptLine)
{
    return picture == linesByHand(sceneOfLines(3), {promptLine});
}

/// Draws frames of the input "abc" and reads from the pixels whether the cursor is shown.
class BlinkingInput
{
public:
    explicit BlinkingInput(double blinkRate) { mView.blinkRate = blinkRate; }

    /// The cursor in the next frame, `elapsed` seconds after the previous one: "shown", "hidden" or
    /// "neither".
    std::string next(double elapsed, std::uint32_t cursor)
    {
        mView.cursor = cursor;
        const QImage picture = drawnBy(mRenderer, mView, sceneOfLines(3), elapsed);
        if (showsPromptLine(picture, QStringLiteral(">> abc"))) {
            return "hidden";
        }
        QString covered = QStringLiteral(">> abc");
        covered.replace(3 + static_cast<int>(std::min(cursor, 3U)), 1, kCursor);
        return showsPromptLine(picture, covered) ? "shown" : "neither";
    }

private:
    ConsoleRenderer mRenderer;
    ConsoleView mView{.input = U"abc"};
};

/// The cursor in a renderer's first frame. It is at 0, where a new renderer expects it.
std::string firstFrame(double elapsed, double blinkRate) { return BlinkingInput(blinkRate).next(elapsed, 0); }

TEST(ConsoleRendererBlinking, ShowsTheCursorInTheFirstOfEachTwoThirdsOfASecond)
{
    EXPECT_EQ(firstFrame(0.0, 3.0), "shown");
    EXPECT_EQ(firstFrame(0.3, 3.0), "shown");
    EXPECT_EQ(firstFrame(0.4, 3.0), "hidden");
    EXPECT_EQ(firstFrame(0.6, 3.0), "hidden");
    EXPECT_EQ(firstFrame(0.7, 3.0), "shown");
    EXPECT_EQ(firstFrame(0.9, 3.0), "shown");
    EXPECT_EQ(firstFrame(1.1, 3.0), "hidden");
    EXPECT_EQ(firstFrame(1.5, 3.0), "shown");
}

TEST(ConsoleRendererBlinking, ChangesPhaseExactlyAtTheBoundary)
{
    EXPECT_EQ(firstFrame(std::nextafter(0.25, 0.0), 4.0), "shown");
    EXPECT_EQ(firstFrame(0.25, 4.0), "hidden");
    EXPECT_EQ(firstFrame(std::nextafter(0.5, 0.0), 4.0), "hidden");
    EXPECT_EQ(firstFrame(0.5, 4.0), "shown");
    EXPECT_EQ(firstFrame(std::nextafter(1.0 / 3.0, 0.0), 3.0), "shown");
    EXPECT_EQ(firstFrame(1.0 / 3.0, 3.0), "hidden");
    EXPECT_EQ(firstFrame(2.0 / 3.0, 3.0), "shown");
    EXPECT_EQ(firstFrame(1.0, 3.0), "hidden");
}

TEST(ConsoleRendererBlinking, AddsUpTheTimeOfFramesWithoutAMove)
{
    BlinkingInput input(4.0);
    EXPECT_EQ(input.next(0.125, 0), "shown");
    EXPECT_EQ(input.next(0.125, 0), "hidden");
    EXPECT_EQ(input.next(0.125, 0), "hidden");
    EXPECT_EQ(input.next(0.125, 0), "shown");
    EXPECT_EQ(input.next(0.125, 0), "shown");
    EXPECT_EQ(input.next(0.125, 0), "hidden");
}

TEST(ConsoleRendererBlinking, CountsTheFirstFrameOnlyIfItsCursorIsAtTheStart)
{
    EXPECT_EQ(BlinkingInput(4.0).next(0.25, 0), "hidden");
    EXPECT_EQ(BlinkingInput(4.0).next(0.25, 1), "shown");
}

TEST(ConsoleRendererBlinking, StartsAgainWhenTheCursorMoves)
{
    BlinkingInput input(4.0);
    EXPECT_EQ(input.next(0.25, 0), "hidden");
    EXPECT_EQ(input.next(0.25, 2), "shown");
    EXPECT_EQ(input.next(0.125, 2), "shown");
    EXPECT_EQ(input.next(0.125, 2), "hidden");
    EXPECT_EQ(input.next(0.0, 1), "shown");
    EXPECT_EQ(input.next(0.25, 1), "hidden");
}

TEST(ConsoleRendererBlinking, DoesNotStartAgainWhenOnlyTheInputChanges)
{
    ConsoleRenderer renderer;
    drawnBy(renderer, ConsoleView{.input = U"abc", .blinkRate = 4.0}, sceneOfLines(3), 0.125);
    const QImage picture =
        drawnBy(renderer, ConsoleView{.input = U"xyz", .blinkRate = 4.0}, sceneOfLines(3), 0.125);
    EXPECT_TRUE(showsPromptLine(picture, QStringLiteral(">> xyz")));
}

TEST(ConsoleRendererBlinking, TakesTheRateOfTheFrameForTheWholeTime)
{
    ConsoleRenderer renderer;
    drawnBy(renderer, ConsoleView{.input = U"abc", .blinkRate = 1.0}, sceneOfLines(3), 1.0);
    const QImage picture =
        drawnBy(renderer, ConsoleView{.input = U"abc", .blinkRate = 2.0}, sceneOfLines(3), 0.0);
    EXPECT_TRUE(showsPromptLine(picture, QStringLiteral(">> \u2588bc")));
}

TEST(ConsoleRendererBlinking, KeepsTheCursorShownAtRateZero)
{
    BlinkingInput input(0.0);
    for (const double elapsed : {0.0, 0.4, 0.4, 1.0, 1e12}) {
        EXPECT_EQ(input.next(elapsed, 0), "shown");
    }
}

TEST(ConsoleRendererBlinking, TruncatesTowardZeroWhereTimeRunsBackwards)
{
    EXPECT_EQ(firstFrame(-0.2, 4.0), "shown");
    EXPECT_EQ(firstFrame(-0.25, 4.0), "hidden");
    EXPECT_EQ(firstFrame(-0.4, 4.0), "hidden");
    EXPECT_EQ(firstFrame(-0.5, 4.0), "shown");
    EXPECT_EQ(firstFrame(0.25, -4.0), "hidden");
}

TEST(ConsoleRendererBlinking, CountsPhasesBeyondThirtyTwoBits)
{
    EXPECT_EQ(firstFrame(4294967296.0, 1.0), "shown");
    EXPECT_EQ(firstFrame(4294967297.0, 1.0), "hidden");
    EXPECT_EQ(firstFrame(-4294967297.0, 1.0), "hidden");
    EXPECT_EQ(firstFrame(9007199254740991.0, 1.0), "hidden");
    EXPECT_EQ(firstFrame(9007199254740992.0, 1.0), "shown");
}

TEST(ConsoleRendererBlinking, SurvivesTimesThatNoPhaseCanCount)
{
    for (const double elapsed : {1e300, -1e300, kInfinity, -kInfinity, kNaN}) {
        BlinkingInput input(3.0);
        EXPECT_NE(input.next(elapsed, 0), "neither") << elapsed;
        EXPECT_EQ(input.next(0.1, 1), "shown") << elapsed;
        EXPECT_EQ(input.next(0.4, 1), "hidden") << elapsed;
    }
}

TEST(ConsoleRendererBlinking, SurvivesRatesThatNoPhaseCanCount)
{
    for (const double rate : {1e300, -1e300, kInfinity, -kInfinity, kNaN}) {
        EXPECT_NE(firstFrame(1e300, rate), "neither") << rate;
        EXPECT_NE(firstFrame(0.0, rate), "neither") << rate;
    }
}

TEST(ConsoleRendererCursor, CoversTheCodePointUnderIt)
{
    EXPECT_TRUE(showsPromptLine(drawn({.input = U"abc", .cursor = 0}, sceneOfLines(3)), ">> \u2588bc"));
    EXPECT_TRUE(showsPromptLine(drawn({.input = U"abc", .cursor = 1}, sceneOfLines(3)), ">> a\u2588c"));
    EXPECT_TRUE(showsPromptLine(drawn({.input = U"abc", .cursor = 2}, sceneOfLines(3)), ">> ab\u2588"));
}

TEST(ConsoleRendererCursor, IsAppendedWhereItStandsBehindTheInput)
{
    EXPECT_TRUE(showsPromptLine(drawn({.input = U"abc", .cursor = 3}, sceneOfLines(3)), ">> abc\u2588"));
    EXPECT_TRUE(showsPromptLine(drawn({.input = U"abc", .cursor = 4}, sceneOfLines(3)), ">> abc\u2588"));
    EXPECT_TRUE(
        showsPromptLine(drawn({.input = U"abc", .cursor = kFarAway}, sceneOfLines(3)), ">> abc\u2588"));
}

TEST(ConsoleRendererCursor, LeavesTheInputAsItIsWhileHidden)
{
    ConsoleRenderer renderer;
    const ConsoleView view{.input = U"abc", .cursor = 3};
    drawnBy(renderer, view, sceneOfLines(3));
    EXPECT_TRUE(showsPromptLine(drawnBy(renderer, view, sceneOfLines(3), 0.5), ">> abc"));
}

TEST(ConsoleRendererCursor, CountsCodePointsWhereAnEmojiOrAMarkStands)
{
    const std::u32string input = U"\U0001F600e\u0301x";
    EXPECT_TRUE(showsPromptLine(drawn({.input = input, .cursor = 0}, sceneOfLines(3)), ">> \u2588e\u0301x"));
    EXPECT_TRUE(showsPromptLine(drawn({.input = input, .cursor = 2}, sceneOfLines(3)),
                                QString::fromStdU32String(U">> \U0001F600e\u2588x")));
    EXPECT_TRUE(showsPromptLine(drawn({.input = input, .cursor = 3}, sceneOfLines(3)),
                                QString::fromStdU32String(U">> \U0001F600e\u0301\u2588")));
}

TEST(ConsoleRendererCursor, IsTheCodePointOfTheSnapshot)
{
    EXPECT_TRUE(showsPromptLine(drawn({.input = U"abc", .cursor = 1, .cursorChar = U'_'}, sceneOfLines(3)),
                                ">> a_c"));
    EXPECT_TRUE(
        showsPromptLine(drawn({.input = U"abc", .cursor = 3, .cursorChar = U'\U0001F600'}, sceneOfLines(3)),
                        QString::fromStdU32String(U">> abc\U0001F600")));
}

} // namespace
} // namespace zephyr::test
