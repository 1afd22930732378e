#include "support/AssertRecorder.h"
#include "support/ComparedRenderers.h"
#include "support/ConsoleDriver.h"

#include "zephyr/common/Assert.h"
#include "zephyr/console/Console.h"

#include <QPen>
#include <QPicture>
#include <QPixmap>

#include <string>
#include <utility>
#include <vector>

namespace zephyr::test {
namespace {

using console::ConsoleRenderer;
using console::LogEntry;
using namespace std::string_literals;

const QString kEmptyPrompt = QStringLiteral(">> \u2588");

/// A scene whose colours differ from pixel to pixel, and whose alpha differs from line to line.
QImage gradientScene(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixelColor(x, y, QColor(x % 256, 3 * y % 256, (x + y) % 256, 255 - y % 200));
        }
    }
    return image;
}

/// Whether a log of this one entry shows `lines`, with the prompt below.
testing::AssertionResult showsLines(const LogEntry& entry, std::vector<QString> lines)
{
    lines.push_back(kEmptyPrompt);
    const QImage canvas = sceneOfLines(8);
    return samePixels(drawn({.log = {entry}}, canvas), linesByHand(canvas, lines));
}

// The background and the prompt.

TEST(ConsoleRenderer, ShowsOnlyThePromptAtTheFirstBaselineOfAnEmptyLog)
{
    const QImage canvas = sceneOfLines(3);
    const QImage expected = drawnByHand(canvas, canvas.size(), {{lineHeight(), QStringLiteral(">> \u2588")}});
    EXPECT_TRUE(samePixels(drawn({}, canvas), expected));
    EXPECT_TRUE(matchesPlain({}, canvas));
}

TEST(ConsoleRenderer, ShowsTheInputBehindThePrompt)
{
    const QImage canvas = sceneOfLines(3);
    const QImage picture = drawn({.input = U"run startup", .cursor = 11}, canvas);
    EXPECT_TRUE(samePixels(picture, linesByHand(canvas, {QStringLiteral(">> run startup\u2588")})));
}

TEST(ConsoleRenderer, ShowsTheInputOnOneLineWhateverItHolds)
{
    for (const std::u32string& input :
         {U"a\nb"s, U"a\tb"s, U"a\0b"s, U"<b>a</b>"s, U"e\u0301"s, U"\U0001F600"s,
          std::u32string{U'a', 0xD800, 0xFFFF, 0x110000, 0xFFFFFFFF}}) {
        for (std::uint32_t cursor = 0; cursor <= input.size(); ++cursor) {
            EXPECT_TRUE(matchesPlain({.input = input, .cursor = cursor}, sceneOfLines(3)));
        }
    }
    const QImage canvas = sceneOfLines(3);
    EXPECT_TRUE(samePixels(drawn({.input = U"<b>a</b>", .cursor = 8}, canvas),
                           linesByHand(canvas, {QStringLiteral(">> <b>a</b>\u2588")})));
}

TEST(ConsoleRenderer, BlendsTheBackgroundOverTheScene)
{
    const QImage canvas = gradientScene(QSize(300, 200));
    EXPECT_TRUE(samePixels(drawn({}, canvas), linesByHand(canvas, {kEmptyPrompt})));
    EXPECT_TRUE(matchesPlain({.log = numberedLog(4)}, canvas));
}

TEST(ConsoleRenderer, LeavesTheSceneUnderATransparentBackground)
{
    const QImage canvas = sceneOfLines(4);
    const QImage picture = drawn({.text = Color(9, 8, 7, 0), .background = Color(1, 2, 3, 0)}, canvas);
    EXPECT_TRUE(samePixels(picture, canvas));
}

TEST(ConsoleRenderer, TakesEachChannelOfTheColours)
{
    const ConsoleView view{.text = Color(250, 20, 130, 255), .background = Color(10, 90, 200, 255)};
    QImage canvas = sceneOfLines(4);
    const QImage picture = drawn(view, canvas);
    EXPECT_EQ(picture.pixelColor(239, 0), QColor(10, 90, 200));

    // The middle of the cursor's full block.
    const QFontMetrics metrics(*consoleFont());
    const int x = metrics.horizontalAdvance(QStringLiteral(">> ")) + metrics.horizontalAdvance(kCursor) / 2;
    EXPECT_EQ(picture.pixelColor(x, lineHeight() - metrics.ascent() / 2), QColor(250, 20, 130));
    EXPECT_TRUE(matchesPlain({.log = numberedLog(2), .text = Color(250, 20, 130, 100)}, canvas));
}

TEST(ConsoleRenderer, DrawsEveryTypeInTheOneTextColour)
{
    const QImage canvas = sceneOfLines(8);
    const std::vector<LogEntry> log{echo(U"in"),
                                    output(U"out"),
                                    {U"what", console::Prompt, 0},
                                    {U"unknown", static_cast<console::ConsoleMessageType>(7), 0}};
    EXPECT_TRUE(samePixels(drawn({.log = log}, canvas),
                           linesByHand(canvas, {">> in", "out", "what", "unknown", kEmptyPrompt})));
}

TEST(ConsoleRenderer, DrawsCachedLinesInTheColourAndFontOfTheFrame)
{
    ComparedRenderers renderers;
    ConsoleView view{.log = numberedLog(3)};
    EXPECT_TRUE(renderers.agreeOn(view, sceneOfLines(8)));
    view.text = Color(255, 255, 0);
    view.background = Color(0, 0, 90);
    EXPECT_TRUE(renderers.agreeOn(view, sceneOfLines(8)));
    view.font->setPixelSize(24);
    view.font->setBold(true);
    EXPECT_TRUE(renderers.agreeOn(view, sceneOfLines(12)));
    view.font = std::make_shared<QFont>(QStringLiteral("DejaVu Serif"), 7);
    EXPECT_TRUE(renderers.agreeOn(view, sceneOfLines(8)));
}

TEST(ConsoleRenderer, DrawsTheSameFrameAgainAndAgain)
{
    ConsoleRenderer renderer;
    const ConsoleView view{.log = numberedLog(2)};
    const QImage canvas = sceneOfLines(5);
    const QImage first = drawnBy(renderer, view, canvas);
    EXPECT_TRUE(samePixels(drawnBy(renderer, view, canvas), first));
    EXPECT_TRUE(samePixels(drawnBy(renderer, view, canvas), first));
}

// The lines of an entry.

TEST(ConsoleRenderer, ShowsAnEchoedLineBehindThePrompt)
{
    EXPECT_TRUE(showsLines(echo(U"help"), {">> help"}));
}

TEST(ConsoleRenderer, ShowsThePromptOfAnEmptyEchoedLine)
{
    EXPECT_TRUE(showsLines(echo(U""), {">> "}));
    EXPECT_TRUE(showsLines(echo(U"\n"), {">> "}));
    EXPECT_TRUE(showsLines(echo(U"\n\nx"), {">> ", "", "x"}));
}

TEST(ConsoleRenderer, LinesUpContinuationLinesWithTheIndent)
{
    EXPECT_TRUE(showsLines(output(U"    a\nb", 4), {"    a", "    b"}));
    EXPECT_TRUE(showsLines(output(U"  a\nb\n c", 2), {"  a", "  b", "   c"}));
}

TEST(ConsoleRenderer, AddsNoIndentToTheFirstLine)
{
    EXPECT_TRUE(showsLines(output(U"a", 4), {"a"}));
    EXPECT_TRUE(showsLines(output(U"a\nb", 4), {"a", "    b"}));
}

TEST(ConsoleRenderer, IndentsAnEchoedContinuationLineWithoutAPrompt)
{
    EXPECT_TRUE(showsLines(echo(U"a\nb", 2), {">> a", "  b"}));
}

TEST(ConsoleRenderer, AddsNoLineForATrailingLineFeed)
{
    EXPECT_TRUE(showsLines(output(U"x\n"), {"x"}));
    EXPECT_TRUE(showsLines(output(U"x\n\n"), {"x", ""}));
    EXPECT_TRUE(showsLines(output(U"\n"), {""}));
    EXPECT_TRUE(showsLines(output(U"\n\n", 4), {"", ""}));
}

TEST(ConsoleRenderer, KeepsAnInnerEmptyLine)
{
    EXPECT_TRUE(showsLines(output(U"x\n\ny"), {"x", "", "y"}));
    EXPECT_TRUE(showsLines(output(U"\ny"), {"", "y"}));
    EXPECT_TRUE(showsLines(output(U"    x\n\ny", 4), {"    x", "", "    y"}));
}

TEST(ConsoleRenderer, GivesAnEmptyEntryALine)
{
    EXPECT_TRUE(showsLines(output(U""), {""}));
    EXPECT_TRUE(showsLines(output(U"", 4), {""}));
    const QImage canvas = sceneOfLines(6);
    EXPECT_TRUE(samePixels(drawn({.log = {output(U"a"), output(U""), output(U"b")}}, canvas),
                           linesByHand(canvas, {"a", "", "b", kEmptyPrompt})));
}

TEST(ConsoleRenderer, ShowsMarkupAsWritten)
{
    EXPECT_TRUE(showsLines(output(U"<b>x</b>"), {"<b>x</b>"}));
    EXPECT_TRUE(
        showsLines(output(U"<html><body>x<br>y</body></html>"), {"<html><body>x<br>y</body></html>"}));
    EXPECT_TRUE(showsLines(echo(U"&lt;<i>"), {">> &lt;<i>"}));
    EXPECT_TRUE(showsLines(output(U"a\n<b>x</b>"), {"a", "<b>x</b>"}));
}

TEST(ConsoleRenderer, TakesAnyCodePoint)
{
    const std::vector<std::u32string> texts{U"a\0b"s,
                                            U"\0"s,
                                            U"a\tb\t\tc"s,
                                            U"a\rb"s,
                                            U"a\u2028b"s,
                                            U"a\u2029b"s,
                                            U"e\u0301"s,
                                            U"\u0301"s,
                                            U"\U0001F600"s,
                                            U"\U0001F468\u200D\U0001F469\u200D\U0001F467"s,
                                            U"\u05D0\u05D1 ab"s,
                                            U"\uFEFF\uFFFF\uFFFE"s,
                                            {0xD800, 0xDC00, 0xDFFF},
                                            {0x110000, 0x7FFFFFFF, 0xFFFFFFFF}};
    ConsoleView view;
    for (const std::u32string& text : texts) {
        EXPECT_TRUE(matchesPlain({.log = {output(text), echo(text)}}, sceneOfLines(6)));
        view.log.push_back(output(text));
    }
    EXPECT_TRUE(matchesPlain(view, sceneOfLines(30)));
}

TEST(ConsoleRenderer, ClipsALineLongerThanTheDevice)
{
    const QImage canvas = sceneOfLines(4);
    EXPECT_TRUE(samePixels(drawn({.log = {output(std::u32string(500, U'W'))}}, canvas),
                           linesByHand(canvas, {QString(500, 'W'), kEmptyPrompt})));
}

// What fits.

TEST(ConsoleRenderer, SkipsTheOldestEntriesOfALogThatOverflows)
{
    const QImage canvas = sceneOfLines(5);
    EXPECT_TRUE(samePixels(drawn({.log = numberedLog(10)}, canvas),
                           linesByHand(canvas, {"line 7", "line 8", "line 9", kEmptyPrompt})));
    EXPECT_TRUE(matchesPlain({.log = numberedLog(10)}, canvas));
}

TEST(ConsoleRenderer, FitsLinesThatFillTheHeightExactly)
{
    const std::vector<LogEntry> log = numberedLog(10);
    const QImage exact = sceneOfLines(5, 0);
    EXPECT_TRUE(samePixels(drawn({.log = log}, exact),
                           linesByHand(exact, {"line 7", "line 8", "line 9", kEmptyPrompt})));
    const QImage tooLow = sceneOfLines(5, -1);
    EXPECT_TRUE(
        samePixels(drawn({.log = log}, tooLow), linesByHand(tooLow, {"line 8", "line 9", kEmptyPrompt})));
    const QImage almostNext = sceneOfLines(6, -1);
    EXPECT_TRUE(samePixels(drawn({.log = log}, almostNext),
                           linesByHand(almostNext, {"line 7", "line 8", "line 9", kEmptyPrompt})));
}

TEST(ConsoleRenderer, AnchorsAShortLogAtTheTop)
{
    const QImage canvas = sceneOfLines(20);
    EXPECT_TRUE(samePixels(drawn({.log = numberedLog(2)}, canvas),
                           linesByHand(canvas, {"line 0", "line 1", kEmptyPrompt})));
}

TEST(ConsoleRenderer, CountsAnEntryOnlyWithAllItsLines)
{
    const std::vector<LogEntry> log{output(U"old"), output(U"a\nb\nc"), output(U"new")};
    const QImage fits = sceneOfLines(6);
    EXPECT_TRUE(
        samePixels(drawn({.log = log}, fits), linesByHand(fits, {"a", "b", "c", "new", kEmptyPrompt})));
    const QImage doesNot = sceneOfLines(6, -1);
    EXPECT_TRUE(samePixels(drawn({.log = log}, doesNot), linesByHand(doesNot, {"new", kEmptyPrompt})));
}

TEST(ConsoleRenderer, ShowsNothingOlderThanAnEntryThatDoesNotFit)
{
    const std::vector<LogEntry> log{output(U"old"), output(U"a\nb\nc\nd\ne\nf"), output(U"new")};
    const QImage canvas = sceneOfLines(5);
    EXPECT_TRUE(samePixels(drawn({.log = log}, canvas), linesByHand(canvas, {"new", kEmptyPrompt})));
}

TEST(ConsoleRenderer, ShowsOnlyThePromptBelowAnEntryTallerThanTheDevice)
{
    const QImage canvas = sceneOfLines(5);
    const std::vector<LogEntry> log{output(U"old"), output(U"a\nb\nc\nd")};
    EXPECT_TRUE(samePixels(drawn({.log = log}, canvas), linesByHand(canvas, {kEmptyPrompt})));
}

TEST(ConsoleRenderer, ShowsOnlyThePromptOnADeviceLowerThanThreeLines)
{
    for (const int height : {1, lineHeight() - 1, lineHeight(), 2 * lineHeight(), 3 * lineHeight() - 1}) {
        const QImage canvas = scene(QSize(200, height));
        EXPECT_TRUE(samePixels(drawn({.log = numberedLog(4)}, canvas), linesByHand(canvas, {kEmptyPrompt})))
            << height;
    }
}

TEST(ConsoleRenderer, TakesTenThousandLinesInOneEntry)
{
    std::u32string text;
    for (int i = 0; i < 10000; ++i) {
        text += QStringLiteral("row %1\n").arg(i).toStdU32String();
    }
    const QImage canvas = sceneOfLines(3);
    ConsoleView view{.log = {output(U"old"), output(text, 2), output(U"new")}, .scroll = 0};
    EXPECT_TRUE(samePixels(drawn(view, canvas), linesByHand(canvas, {"new", kEmptyPrompt})));
    view.scroll = 2;
    EXPECT_TRUE(samePixels(drawn(view, canvas), linesByHand(canvas, {"old", "row 0", "  row 1", "  row 2"})));
    view.scroll = 1;
    EXPECT_TRUE(samePixels(drawn(view, canvas), linesByHand(canvas, {"new", kEmptyPrompt})));
    EXPECT_TRUE(matchesPlain(view, scene(QSize(100, 10003 * lineHeight()))));
}

// Scrolled back.

TEST(ConsoleRenderer, KeepsNoRoomForThePromptWhenScrolledBack)
{
    const QImage canvas = sceneOfLines(5);
    EXPECT_TRUE(
        samePixels(drawn({.log = numberedLog(20), .scroll = 4}, canvas),
                   linesByHand(canvas, {"line 11", "line 12", "line 13", "line 14", "line 15", "line 16"})));
    EXPECT_TRUE(matchesPlain({.log = numberedLog(20), .scroll = 4}, canvas));
}

TEST(ConsoleRenderer, FitsScrolledLinesThatFillTheHeightExactly)
{
    const std::vector<LogEntry> log = numberedLog(9);
    const QImage exact = sceneOfLines(3);
    EXPECT_TRUE(samePixels(drawn({.log = log, .scroll = 2}, exact),
                           linesByHand(exact, {"line 4", "line 5", "line 6", "line 7"})));
    const QImage tooLow = sceneOfLines(3, -1);
    EXPECT_TRUE(samePixels(drawn({.log = log, .scroll = 2}, tooLow),
                           linesByHand(tooLow, {"line 5", "line 6", "line 7"})));
}

TEST(ConsoleRenderer, ShowsWhatLiesBelowTheScrollPositionWhereThereIsRoom)
{
    const QImage canvas = sceneOfLines(8);
    EXPECT_TRUE(samePixels(drawn({.log = numberedLog(3), .scroll = 1}, canvas),
                           linesByHand(canvas, {"line 0", "line 1", "line 2", kEmptyPrompt})));
    const std::vector<LogEntry> log{output(U"1\n2\n3\n4\n5\n6\n7\n8"), output(U"a"), output(U"b")};
    EXPECT_TRUE(
        samePixels(drawn({.log = log, .scroll = 1}, canvas), linesByHand(canvas, {"a", "b", kEmptyPrompt})));
}

TEST(ConsoleRenderer, ShowsTheLogFromItsBeginningWhenScrolledPastAllEntries)
{
    const QImage canvas = sceneOfLines(4);
    const QImage expected = linesByHand(canvas, {"line 0", "line 1", "line 2", "line 3", "line 4"});
    EXPECT_TRUE(samePixels(drawn({.log = numberedLog(9), .scroll = 9}, canvas), expected));
    EXPECT_TRUE(samePixels(drawn({.log = numberedLog(9), .scroll = 8}, canvas), expected));
    EXPECT_TRUE(samePixels(drawn({.log = numberedLog(9), .scroll = 10}, canvas), expected));
    EXPECT_TRUE(samePixels(drawn({.log = numberedLog(9), .scroll = kFarAway}, canvas), expected));
}

TEST(ConsoleRenderer, ShowsThePromptOfAnEmptyLogAtAnyScrollOffset)
{
    const QImage canvas = sceneOfLines(4);
    for (const std::uint32_t scroll : {1U, 5U, kFarAway}) {
        EXPECT_TRUE(samePixels(drawn({.scroll = scroll}, canvas), linesByHand(canvas, {kEmptyPrompt})));
    }
}

TEST(ConsoleRenderer, DrawsEveryScrollOffsetAsThePlainRenderer)
{
    std::vector<LogEntry> log = numberedLog(6);
    log.insert(log.begin() + 3, {output(U"  a\nb\nc", 2), output(U""), echo(U"x\n\ny"), output(U"\n")});
    ComparedRenderers renderers;
    for (std::uint32_t scroll = 0; scroll < 13; ++scroll) {
        for (const int lines : {1, 3, 7, 20}) {
            EXPECT_TRUE(renderers.agreeOn({.log = log, .scroll = scroll}, sceneOfLines(lines, 5)))
                << scroll << " back on " << lines << " lines";
        }
    }
}

/// "A" with `marks` grave accents, which DejaVu Sans stacks on top of each other.
std::u32string towerOf(std::size_t marks) { return U"A" + std::u32string(marks, U'\u0300'); }

/// A log scrolled back so that its first four lines fill four lines, with towers far below them.
ConsoleView viewOfTowers(std::size_t marks)
{
    ConsoleView view{.log = numberedLog(30), .cursor = kFarAway, .scroll = 26};
    view.log[15].text = towerOf(marks);
    view.log[20].text = U"b\n" + towerOf(marks);
    view.font = std::make_shared<QFont>(QStringLiteral("DejaVu Sans"), 10);
    return view;
}

TEST(ConsoleRenderer, ShowsInkThatReachesUpFromBelowTheEdge)
{
    const int height = 4 * QFontMetrics(*viewOfTowers(0).font).height();
    const QImage canvas = scene(QSize(240, height));
    const QImage without = drawn(viewOfTowers(0), canvas);
    for (const std::size_t marks : {10U, 60U, 100U, 200U, 400U}) {
        EXPECT_TRUE(matchesPlain(viewOfTowers(marks), canvas)) << marks;
    }
    EXPECT_FALSE(samePixels(drawn(viewOfTowers(200), canvas), without)) << "no tower reaches the device";
}

TEST(ConsoleRenderer, ShowsAPromptThatReachesUpFromBelowTheEdge)
{
    ConsoleView view = viewOfTowers(0);
    const QImage canvas = scene(QSize(240, 4 * QFontMetrics(*view.font).height()));
    const QImage without = drawn(view, canvas);
    view.input = towerOf(400);
    EXPECT_TRUE(matchesPlain(view, canvas));
    EXPECT_FALSE(samePixels(drawn(view, canvas), without)) << "the tower does not reach the device";
}

// Devices.

TEST(ConsoleRenderer, CountsInLogicalPixelsOnADenseScreen)
{
    const QImage canvas = scene(QSize(1600, 1200), 2.0);
    const std::vector<LogEntry> log = numberedLog(100);
    const int fitting = 600 / lineHeight() - 2;
    std::vector<PlacedText> texts;
    for (int k = 0; k < fitting; ++k) {
        texts.push_back({(k + 1) * lineHeight(), QStringLiteral("line %1").arg(100 - fitting + k)});
    }
    texts.push_back({(fitting + 1) * lineHeight(), kEmptyPrompt});
    EXPECT_TRUE(samePixels(drawn({.log = log}, canvas), drawnByHand(canvas, QSize(800, 600), texts)));
    EXPECT_TRUE(matchesPlain({.log = log}, canvas));
}

TEST(ConsoleRenderer, TakesAFractionalRatioAsItIs)
{
    // Heights of 6 and of 4 lines in logical pixels.
    const int h = lineHeight();
    const QImage dense = scene(QSize(300, 9 * h), 1.5);
    EXPECT_TRUE(samePixels(drawn({.log = numberedLog(20)}, dense), drawnByHand(dense, QSize(200, 6 * h),
                                                                               {{h, "line 16"},
                                                                                {2 * h, "line 17"},
                                                                                {3 * h, "line 18"},
                                                                                {4 * h, "line 19"},
                                                                                {5 * h, kEmptyPrompt}})));
    const QImage coarse = scene(QSize(100, 2 * h), 0.5);
    EXPECT_TRUE(samePixels(
        drawn({.log = numberedLog(20)}, coarse),
        drawnByHand(coarse, QSize(200, 4 * h), {{h, "line 18"}, {2 * h, "line 19"}, {3 * h, kEmptyPrompt}})));
}

TEST(ConsoleRenderer, TruncatesTheLogicalSizeToWholePixels)
{
    const QImage canvas = scene(QSize(101, 63), 2.0);
    const QImage picture = drawn({.background = Color(0, 0, 255)}, canvas);
    EXPECT_EQ(picture.pixelColor(99, 61), QColor(0, 0, 255));
    EXPECT_EQ(picture.pixelColor(100, 61), kSceneColor);
    EXPECT_EQ(picture.pixelColor(99, 62), kSceneColor);
    EXPECT_TRUE(
        samePixels(drawn({}, canvas), drawnByHand(canvas, QSize(50, 31), {{lineHeight(), kEmptyPrompt}})));
}

TEST(ConsoleRenderer, TruncatesTheHeightBeforeItCountsTheLines)
{
    // One device pixel less than a whole number of lines needs.
    const QImage canvas = scene(QSize(400, 2 * 5 * lineHeight() - 1), 2.0);
    const QSize size(200, 5 * lineHeight() - 1);
    EXPECT_TRUE(samePixels(
        drawn({.log = numberedLog(9)}, canvas),
        drawnByHand(
            canvas, size,
            {{lineHeight(), "line 7"}, {2 * lineHeight(), "line 8"}, {3 * lineHeight(), kEmptyPrompt}})));
}

TEST(ConsoleRenderer, DrawsAnySizeAndRatioAsThePlainRenderer)
{
    ComparedRenderers renderers;
    const ConsoleView newest{.log = numberedLog(80), .input = U"abc", .cursor = 2};
    ConsoleView oldest = newest;
    oldest.scroll = 80;
    for (const double ratio : {0.5, 1.0, 1.1, 1.25, 1.3, 1.5, 1.75, 2.0, 2.5, 3.0}) {
        for (const QSize& size : {QSize(1, 1), QSize(97, 53), QSize(301, 199), QSize(640, 480)}) {
            for (const ConsoleView& view : {newest, oldest}) {
                EXPECT_TRUE(renderers.agreeOn(view, scene(size, ratio)))
                    << size.width() << " x " << size.height() << " at " << ratio << ", " << view.scroll
                    << " back";
            }
        }
    }
}

/// `canvas` as a device with `times` as many dots in a metre, on which text of a given point size is larger.
QImage withResolution(QImage canvas, int times)
{
    canvas.setDotsPerMeterX(times * canvas.dotsPerMeterX());
    canvas.setDotsPerMeterY(times * canvas.dotsPerMeterY());
    return canvas;
}

TEST(ConsoleRenderer, SpacesLinesByTheFontAloneOnADeviceOfAnotherResolution)
{
    const QImage canvas = withResolution(sceneOfLines(10), 2);
    EXPECT_TRUE(matchesPlain({.log = numberedLog(20)}, canvas));
    EXPECT_TRUE(samePixels(drawn({}, canvas), linesByHand(canvas, {kEmptyPrompt})));
}

TEST(ConsoleRenderer, ShowsTheLargePromptOfAFineDeviceFromBelowTheEdge)
{
    const QImage canvas = withResolution(sceneOfLines(6), 6);
    for (std::uint32_t scroll = 1; scroll < 6; ++scroll) {
        const ConsoleView view{.log = numberedLog(20), .scroll = scroll, .cursorChar = U'_'};
        EXPECT_TRUE(matchesPlain(view, canvas)) << scroll;
    }
}

/// What `render` draws on a pixmap with the scene.
template <typename Render>
QImage drawnOnPixmap(Render render)
{
    QPixmap pixmap = QPixmap::fromImage(sceneOfLines(5));
    QPainter p(&pixmap);
    render(p);
    p.end();
    return pixmap.toImage();
}

TEST(ConsoleRenderer, DrawsOnAPixmap)
{
    const ConsoleView view{.log = numberedLog(9)};
    const QImage actual =
        drawnOnPixmap([&view](QPainter& p) { ConsoleRenderer().render(seconds(0.0), view.snapshot(), p); });
    const QImage expected =
        drawnOnPixmap([&view](QPainter& p) { PlainRenderer().render(0.0, view.snapshot(), p); });
    EXPECT_TRUE(samePixels(actual, expected));
}

/// An image that reports one of its metrics wrongly.
class ImageWithClaim : public QImage
{
public:
    ImageWithClaim(const QImage& image, PaintDeviceMetric measure, int claim)
        : QImage(image), mMeasure(measure), mClaim(claim)
    {}

protected:
    int metric(PaintDeviceMetric measure) const override
    {
        return measure == mMeasure ? mClaim : QImage::metric(measure);
    }

private:
    PaintDeviceMetric mMeasure;
    int mClaim;
};

TEST(ConsoleRenderer, FitsNoLineOnADeviceOfNoHeight)
{
    const ImageWithClaim flat(sceneOfLines(5), QPaintDevice::PdmHeight, 0);
    for (const std::uint32_t scroll : {0U, 1U, 4U, 9U, kFarAway}) {
        EXPECT_TRUE(matchesPlain({.log = numberedLog(9), .scroll = scroll}, flat)) << scroll;
    }
}

/// A device that reports its size in logical pixels and whose painter draws into an image, as Qt's windows
/// do.
class Window : public QImage
{
public:
    explicit Window(const QImage& pixels) : QImage(pixels), mPixels(pixels) {}

    const QImage& pixels() const { return mPixels; }

protected:
    int metric(PaintDeviceMetric measure) const override
    {
        const bool isLength = measure == PdmWidth || measure == PdmHeight;
        return QImage::metric(measure) / (isLength ? static_cast<int>(devicePixelRatio()) : 1);
    }

    QPaintDevice* redirected(QPoint*) const override { return &mPixels; }

private:
    mutable QImage mPixels;
};

TEST(ConsoleRenderer, DrawsToTheEdgeOfAWindowThatCountsLogicalPixelsItself)
{
    const QImage canvas = scene(2 * sceneOfLines(12).size(), 2.0);
    for (const std::uint32_t scroll : {0U, 12U, 30U}) {
        const ConsoleView view{.log = numberedLog(30), .scroll = scroll};
        Window actual(canvas);
        QPainter p(&actual);
        ConsoleRenderer().render(seconds(0.0), view.snapshot(), p);
        p.end();
        Window expected(canvas);
        p.begin(&expected);
        PlainRenderer().render(0.0, view.snapshot(), p);
        p.end();
        EXPECT_TRUE(samePixels(actual.pixels(), expected.pixels())) << scroll;
        EXPECT_NE(actual.pixels(), canvas);
    }
}

TEST(ConsoleRenderer, TakesARatioThatIsNotPositiveForOne)
{
    const ConsoleView view{.log = numberedLog(9)};
    ImageWithClaim image(sceneOfLines(5), QPaintDevice::PdmDevicePixelRatioScaled, 0);
    QPainter p(&image);
    ConsoleRenderer().render(seconds(0.0), view.snapshot(), p);
    p.end();
    EXPECT_TRUE(samePixels(image, drawn(view, sceneOfLines(5))));
}

/// The picture that `render` records, played over `canvas`.
template <typename Render>
QImage playedBack(QImage canvas, Render render)
{
    QPicture picture;
    QPainter p(&picture);
    render(p);
    p.end();
    p.begin(&canvas);
    p.drawPicture(0, 0, picture);
    p.end();
    return canvas;
}

/// Whether the pictures that both renderers record look the same over `canvas`.
testing::AssertionResult recordsAsPlain(const ConsoleView& view, const QImage& canvas)
{
    const QImage actual = playedBack(
        canvas, [&view](QPainter& p) { ConsoleRenderer().render(seconds(0.0), view.snapshot(), p); });
    const QImage expected =
        playedBack(canvas, [&view](QPainter& p) { PlainRenderer().render(0.0, view.snapshot(), p); });
    if (expected == canvas) {
        return testing::AssertionFailure() << "nothing was recorded";
    }
    return samePixels(actual, expected);
}

TEST(ConsoleRenderer, RecordsThePromptInAPictureThatHasNoSizeYet)
{
    EXPECT_TRUE(recordsAsPlain({.log = numberedLog(9), .input = U"abc"}, sceneOfLines(5)));
}

TEST(ConsoleRenderer, RecordsTheEntriesBelowTheScrollPositionInAPicture)
{
    EXPECT_TRUE(recordsAsPlain({.log = numberedLog(40), .scroll = 30}, sceneOfLines(40)));
}

TEST(ConsoleRenderer, FollowsTheTransformationOfThePainter)
{
    const std::vector<PainterSetUp> setUps{[](QPainter& p) { p.translate(7.0, 20.0); },
                                           [](QPainter& p) { p.translate(0.0, -6.0 * lineHeight()); },
                                           [](QPainter& p) { p.scale(0.5, 0.5); },
                                           [](QPainter& p) { p.scale(2.0, 1.5); },
                                           [](QPainter& p) { p.scale(1.0, -1.0); },
                                           [](QPainter& p) { p.rotate(-20.0); },
                                           [](QPainter& p) { p.shear(0.0, -0.5); },
                                           [](QPainter& p) { p.setWindow(0, 0, 480, 400); },
                                           [](QPainter& p) { p.setViewport(0, -90, 240, 200); }};
    for (std::size_t i = 0; i < setUps.size(); ++i) {
        for (const std::uint32_t scroll : {0U, 3U, 9U}) {
            const ConsoleView view{.log = numberedLog(20), .input = U"abc", .scroll = scroll};
            EXPECT_TRUE(matchesPlain(view, sceneOfLines(6), setUps[i]))
                << "set-up " << i << ", offset " << scroll;
        }
    }
}

/// `view` drawn over `canvas` so small that each line of the font takes `pixels`.
QImage drawnSmall(const ConsoleView& view, QImage canvas, double pixels)
{
    QPainter p(&canvas);
    const double scale = pixels / QFontMetrics(*view.font).height();
    p.scale(scale, scale);
    ConsoleRenderer().render(seconds(0), view.snapshot(), p);
    p.end();
    return canvas;
}

TEST(ConsoleRenderer, DrawsNoLineAtAPositionThatNoIntegerHolds)
{
    ConsoleView view{.scroll = kFarAway, .background = Color(0, 0, 0, 0)};
    view.font->setPixelSize(1 << 14);
    // In 32 bits the last line's position wraps around to the second line's.
    const std::int64_t wrapped = (std::int64_t{1} << 32) / QFontMetrics(*view.font).height() + 1;
    view.log.resize(static_cast<std::size_t>(wrapped), output(U""));
    view.log.push_back(output(U"MMMM"));
    const QImage canvas = scene(QSize(90, 60)); // two lines high
    EXPECT_TRUE(samePixels(drawnSmall(view, canvas, 30), canvas));

    view.log.erase(view.log.begin(), view.log.end() - 2);
    EXPECT_NE(drawnSmall(view, canvas, 30), canvas);
}

TEST(ConsoleRenderer, FollowsClippingOpacityAndCompositionOfThePainter)
{
    const ConsoleView view{.log = numberedLog(20), .scroll = 2};
    EXPECT_TRUE(matchesPlain(view, sceneOfLines(6), [](QPainter& p) { p.setClipRect(5, 10, 60, 50); }));
    EXPECT_TRUE(matchesPlain(view, sceneOfLines(6), [](QPainter& p) { p.setOpacity(0.4); }));
    EXPECT_TRUE(matchesPlain(view, sceneOfLines(6),
                             [](QPainter& p) { p.setCompositionMode(QPainter::CompositionMode_Plus); }));
    EXPECT_TRUE(matchesPlain(view, sceneOfLines(6), [](QPainter& p) {
        p.setBackgroundMode(Qt::OpaqueMode);
        p.setBackground(Qt::blue);
    }));
}

// The painter after the call.

TEST(ConsoleRenderer, LeavesPenFontAndHintChanged)
{
    QImage canvas = sceneOfLines(5);
    QPainter p(&canvas);
    p.setRenderHint(QPainter::TextAntialiasing, false);
    p.setRenderHint(QPainter::Antialiasing, false);
    const ConsoleView view{.text = Color(1, 2, 3, 200)};
    ConsoleRenderer().render(seconds(0.0), view.snapshot(), p);
    EXPECT_EQ(p.pen().color(), QColor(1, 2, 3, 200));
    EXPECT_EQ(p.font(), *view.font);
    EXPECT_TRUE(p.testRenderHint(QPainter::TextAntialiasing));
    EXPECT_FALSE(p.testRenderHint(QPainter::Antialiasing));
}

TEST(ConsoleRenderer, ChangesOnlyTheColourOfThePen)
{
    QImage canvas = sceneOfLines(5);
    QPainter p(&canvas);
    const QPen pen(Qt::red, 7.5, Qt::DashDotLine, Qt::RoundCap, Qt::BevelJoin);
    p.setPen(pen);
    ConsoleRenderer().render(seconds(0.0), ConsoleView{.log = numberedLog(2)}.snapshot(), p);
    QPen expected = pen;
    expected.setColor(kTextColor);
    EXPECT_EQ(p.pen(), expected);
    EXPECT_EQ(p.pen().widthF(), 7.5);
}

TEST(ConsoleRenderer, LeavesTheRestOfThePainterAlone)
{
    QImage canvas = sceneOfLines(5);
    QPainter p(&canvas);
    p.setBrush(Qt::yellow);
    p.setOpacity(0.5);
    p.translate(3.0, 4.0);
    p.setClipRect(1, 2, 30, 40);
    const QTransform transformation = p.worldTransform();
    ConsoleRenderer().render(seconds(0.0), ConsoleView{.log = numberedLog(9), .scroll = 2}.snapshot(), p);
    EXPECT_TRUE(p.isActive());
    EXPECT_EQ(p.brush(), QBrush(Qt::yellow));
    EXPECT_EQ(p.opacity(), 0.5);
    EXPECT_EQ(p.worldTransform(), transformation);
    EXPECT_EQ(p.clipBoundingRect(), QRectF(1, 2, 30, 40));
}

TEST(ConsoleRenderer, DrawsNoTextWithAPenThatDrawsNothing)
{
    const auto withoutPen = [](QPainter& p) { p.setPen(Qt::NoPen); };
    EXPECT_TRUE(matchesPlain({.log = numberedLog(3)}, sceneOfLines(6), withoutPen));
}

// What is kept between frames.

TEST(ConsoleRenderer, LaysAnEntryOutOnlyOnce)
{
    ConsoleRenderer renderer;
    const QImage canvas = sceneOfLines(6);
    drawnBy(renderer, {.log = {output(U"first\nsecond")}}, canvas);
    const QImage picture = drawnBy(renderer, {.log = {echo(U"other"), output(U"new")}}, canvas);
    EXPECT_TRUE(samePixels(picture, linesByHand(canvas, {"first", "second", "new", kEmptyPrompt})));
}

TEST(ConsoleRenderer, KeepsALaidOutEntryThroughAShorterLog)
{
    ConsoleRenderer renderer;
    const QImage canvas = sceneOfLines(6);
    drawnBy(renderer, {.log = {output(U"first")}}, canvas);
    drawnBy(renderer, {}, canvas);
    const QImage picture = drawnBy(renderer, {.log = {output(U"other")}}, canvas);
    EXPECT_TRUE(samePixels(picture, linesByHand(canvas, {"first", kEmptyPrompt})));
}

TEST(ConsoleRenderer, TakesItsLinesAndItsClockAlongWhenCopiedOrMoved)
{
    ConsoleRenderer renderer;
    const QImage canvas = sceneOfLines(6);
    drawnBy(renderer, {.log = {output(U"first")}, .blinkRate = 4.0}, canvas, 0.125);
    ConsoleRenderer copy = renderer;
    ConsoleRenderer moved = std::move(renderer);
    for (ConsoleRenderer* each : {&copy, &moved}) {
        const QImage picture = drawnBy(*each, {.log = {output(U"other")}, .blinkRate = 4.0}, canvas, 0.125);
        EXPECT_TRUE(samePixels(picture, linesByHand(canvas, {"first", ">> "})));
    }
}

TEST(ConsoleRenderer, DrawsALogThatGrowsBetweenFrames)
{
    ComparedRenderers renderers;
    ConsoleView view;
    for (int i = 0; i < 12; ++i) {
        EXPECT_TRUE(renderers.agreeOn(view, sceneOfLines(6)));
        view.log.push_back(i % 3 == 0 ? output(U"  a\nb", 2) : echo(U"x"));
    }
}

TEST(ConsoleRenderer, ShowsEntriesThatCameWhileOthersWereInView)
{
    ComparedRenderers renderers;
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(3)}, sceneOfLines(6)));
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(60)}, sceneOfLines(6)));
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(60), .scroll = 30}, sceneOfLines(6)));
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(60)}, sceneOfLines(100)));
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(6000)}, sceneOfLines(6)));
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(6000), .scroll = 40}, sceneOfLines(6)));
}

TEST(ConsoleRenderer, TakesAShorterLogAfterALongerOne)
{
    ComparedRenderers renderers;
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(50)}, sceneOfLines(60)));
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(2)}, sceneOfLines(60)));
    EXPECT_TRUE(renderers.agreeOn({.scroll = 4}, sceneOfLines(60)));
    EXPECT_TRUE(renderers.agreeOn({.log = numberedLog(51), .scroll = 7}, sceneOfLines(9)));
}

TEST(ConsoleRenderer, DrawsOneLogOnDevicesOfSeveralRatios)
{
    ComparedRenderers renderers;
    const ConsoleView view{.log = numberedLog(6)};
    for (const double ratio : {1.0, 2.0, 1.0, 1.5, 3.0, 1.0}) {
        EXPECT_TRUE(renderers.agreeOn(view, scene(QSize(400, 300), ratio))) << ratio;
    }
}

TEST(ConsoleRenderer, DrawsWhatAConsoleShows)
{
    console::Console console;
    console.open();
    ConsoleDriver driver(console);
    driver.type("nonsense\nsome <b>input</b>");
    driver.press(Qt::Key_Left);

    QImage actual = sceneOfLines(9);
    QPainter p(&actual);
    ConsoleRenderer().render(seconds(0.0), console.snapshot(), p);
    p.end();
    const QImage expected = linesByHand(
        sceneOfLines(9), {"Zephyr Console:", "", ">> nonsense",
                          "'nonsense' is not a recognized command.  Type 'help' to list available commands.",
                          "", QStringLiteral(">> some <b>input</b\u2588")});
    EXPECT_TRUE(samePixels(actual, expected));
}

// Without a device or a font.

/// The frame, with its cursor hidden, that a renderer draws after two frames by `failing`: one in which time
/// passes, and one in which the cursor moves.
template <typename FailingFrame>
QImage frameAfter(FailingFrame failing)
{
    ConsoleRenderer renderer;
    drawnBy(renderer, {.input = U"abc", .blinkRate = 4.0}, sceneOfLines(4), 0.375);
    failing(renderer, {.log = {output(U"other")}, .input = U"abc", .blinkRate = 4.0});
    failing(renderer, {.log = {output(U"other")}, .input = U"abc", .cursor = 2, .blinkRate = 4.0});
    return drawnBy(renderer, {.log = {output(U"first")}, .input = U"abc", .blinkRate = 4.0}, sceneOfLines(4));
}

const QString kInputWithoutCursor = QStringLiteral(">> abc");

void renderWithoutDevice(ConsoleRenderer& renderer, const ConsoleView& view)
{
    QPainter inactive;
    renderer.render(seconds(0.125), view.snapshot(), inactive);
}

void renderWithoutFont(ConsoleRenderer& renderer, ConsoleView view)
{
    view.font.reset();
    QImage canvas = sceneOfLines(4);
    QPainter p(&canvas);
    const QPen pen(Qt::red, 3.0);
    p.setPen(pen);
    p.setRenderHint(QPainter::TextAntialiasing, false);
    const QFont font = p.font();
    renderer.render(seconds(0.125), view.snapshot(), p);
    EXPECT_EQ(p.pen(), pen);
    EXPECT_EQ(p.font(), font);
    EXPECT_FALSE(p.testRenderHint(QPainter::TextAntialiasing));
    p.end();
    EXPECT_TRUE(samePixels(canvas, sceneOfLines(4)));
}

TEST(ConsoleRendererAssertion, ReportsAPainterWithoutADevice)
{
    const AssertRecorder recorder;
    ConsoleRenderer renderer;
    renderWithoutDevice(renderer, {.log = numberedLog(3)});
    EXPECT_EQ(recorder.failures(), std::vector<std::string>{"ConsoleRenderer:33: p.device()"});
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{""});
}

TEST(ConsoleRendererAssertion, ReportsASnapshotWithoutAFont)
{
    const AssertRecorder recorder;
    ConsoleRenderer renderer;
    renderWithoutFont(renderer, {.log = numberedLog(3)});
    EXPECT_EQ(recorder.failures(), std::vector<std::string>{"ConsoleRenderer:35: snapshot.font()"});
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{""});
}

TEST(ConsoleRendererAssertion, ReportsOnlyTheDeviceWhereBothAreMissing)
{
    const AssertRecorder recorder;
    ConsoleRenderer renderer;
    renderWithoutDevice(renderer, {.font = nullptr});
    EXPECT_EQ(recorder.failures(), std::vector<std::string>{"ConsoleRenderer:33: p.device()"});
}

TEST(ConsoleRendererAssertion, ReportsEveryFrameThatFails)
{
    const AssertRecorder recorder;
    ConsoleRenderer renderer;
    renderWithoutFont(renderer, {});
    renderWithoutFont(renderer, {});
    EXPECT_EQ(recorder.failures().size(), 2U);
}

TEST(ConsoleRendererAssertion, ReportsNothingForAFrameThatIsDrawn)
{
    const AssertRecorder recorder;
    drawn({.log = numberedLog(3), .scroll = 1}, sceneOfLines(4));
    EXPECT_TRUE(recorder.failures().empty());
}

TEST(ConsoleRendererAssertion, KeepsClockAndLinesThroughFramesWithoutADevice)
{
    const AssertRecorder recorder;
    EXPECT_TRUE(samePixels(frameAfter(renderWithoutDevice),
                           linesByHand(sceneOfLines(4), {"first", kInputWithoutCursor})));
}

TEST(ConsoleRendererAssertion, KeepsClockAndLinesThroughFramesWithoutAFont)
{
    const AssertRecorder recorder;
    EXPECT_TRUE(samePixels(frameAfter(renderWithoutFont),
                           linesByHand(sceneOfLines(4), {"first", kInputWithoutCursor})));
}

/// Turns off the reports of assertions during its lifetime.
class SilentAssertions
{
public:
    SilentAssertions() { Assert::setShowQAVerify(false); }
    ~SilentAssertions() { Assert::setShowQAVerify(true); }
    SilentAssertions(const SilentAssertions&) = delete;
    SilentAssertions& operator=(const SilentAssertions&) = delete;
};

TEST(ConsoleRendererAssertion, KeepsSilentWhereTheHostWantsNoReports)
{
    const AssertRecorder recorder;
    const SilentAssertions silence;
    ConsoleRenderer renderer;
    renderWithoutDevice(renderer, {.log = numberedLog(3)});
    renderWithoutFont(renderer, {.log = numberedLog(3)});
    EXPECT_TRUE(recorder.failures().empty());
}

void refuseAssertions()
{
    Assert::setHandler([](const AssertFailure&) { return false; });
}

TEST(ConsoleRendererDeathTest, DiesWithoutADeviceWhereTheHandlerRefuses)
{
    ConsoleRenderer renderer;
    EXPECT_DEATH(
        {
            refuseAssertions();
            renderWithoutDevice(renderer, {});
        },
        "p\\.device\\(\\)");
}

TEST(ConsoleRendererDeathTest, DiesWithoutAFontWhereTheHandlerRefuses)
{
    ConsoleRenderer renderer;
    EXPECT_DEATH(
        {
            refuseAssertions();
            renderWithoutFont(renderer, {});
        },
        "snapshot\\.font\\(\\)");
}

} // namespace
} // namespace zephyr::test
