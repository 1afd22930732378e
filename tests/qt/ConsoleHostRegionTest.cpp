#include "qt/HostedConsole.h"
#include "qt/SteadyCursors.h"
#include "zephyr/console/qt/Look.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QRegion>
#include <QSignalBlocker>

#include <functional>
#include <optional>

namespace zephyr::test {
namespace {

constexpr QSize kSize(400, 200);
constexpr QRgb kScene = qRgb(40, 80, 120);
constexpr int kMostPixels = (1 << 24) - 1; // Qt's limit for the sides of a widget

/// A program that repaints as widgets do: no more of its frame than changed.
class ConsoleHostRegion : public HostedConsole
{
protected:
    ConsoleHostRegion()
    {
        QObject::connect(&host, &ConsoleHost::repaintNeeded, &window, [this] { repaint(); });
    }

    void repaint()
    {
        if (const QRegion changed = host.changedRegion(); !changed.isEmpty()) {
            told = changed;
            paint(screen, changed);
        }
    }

    void paint(QImage& image, const QRegion& region)
    {
        QPainter painter(&image);
        painter.setClipRegion(region);
        painter.fillRect(image.rect(), QColor(kScene));
        whatThePictureBelowDoes();
        host.paint(painter);
        ++paints;
    }

    QImage wholeFrame()
    {
        QImage image(screen.size(), screen.format());
        paint(image, image.rect());
        return image;
    }

    void openAndPaint()
    {
        open();
        paint(screen, screen.rect());
        told = {};
    }

    /// Lets time pass until all that was asked for is done.
    static void settle() { QTest::qWait(0); }

    QImage screen{kSize, QImage::Format_ARGB32_Premultiplied};
    QRegion told;
    std::function<void()> whatThePictureBelowDoes = [] {};
    int paints = 0;
    std::optional<SteadyCursors> steady{std::in_place}; // whose end repaints
};

TEST_F(ConsoleHostRegion, IsMoreThanAnyWidgetWhereNothingIsKnown)
{
    const QRegion everything(0, 0, kMostPixels, kMostPixels);
    QObject::disconnect(&host, &ConsoleHost::repaintNeeded, &window, nullptr);
    EXPECT_EQ(everything, host.changedRegion()) << "closed";
    open();
    EXPECT_EQ(everything, host.changedRegion()) << "never painted";
    host.setPlain(true);
    paint(screen, screen.rect());
    EXPECT_EQ(everything, host.changedRegion()) << "the renderer tells nothing";
}

TEST_F(ConsoleHostRegion, IsEmptyWhereNothingChanged)
{
    openAndPaint();
    EXPECT_TRUE(host.changedRegion().isEmpty());
}

TEST_F(ConsoleHostRegion, IsTheInputLineForAKeyThatTypes)
{
    openAndPaint();
    type("zzzz"); // of which no list is offered
    const int line = QFontMetrics(*console->snapshot().font()).height();
    type("z");
    ASSERT_FALSE(told.isEmpty());
    EXPECT_LE(told.boundingRect().height(), line + 4);
    EXPECT_EQ(wholeFrame(), screen);
}

TEST_F(ConsoleHostRegion, HoldsAllThatChanged)
{
    const QString lines = QStringLiteral("one two three\n");
    openAndPaint();
    const auto expectWhole = [this](const char* what) {
        settle();
        EXPECT_EQ(wholeFrame(), screen) << what;
        settle(); // what is logged before is logged in a frame
    };
    type("he");
    expectWhole("a list of offers");
    click(Qt::Key_Left);
    expectWhole("the cursor");
    type("\n");
    expectWhole("a line that ran");
    for (int i = 0; i < 30; ++i) {
        console->write(U"line " + StringUtil::toU32String(std::to_string(i)), console::Output);
    }
    expectWhole("lines that the program wrote");
    click(Qt::Key_PageUp);
    expectWhole("a page up");
    turnWheel(window, {0, 120});
    expectWhole("the wheel");
    click(Qt::Key_F, Qt::ControlModifier);
    type("line");
    expectWhole("the find bar and its hits");
    click(Qt::Key_Escape);
    expectWhole("without the find bar");
    host.clearView();
    expectWhole("an empty view");
    console::qt::Look look;
    look.fontSize = 20.0;
    look.text = Qt::yellow;
    host.setLook(look);
    expectWhole("another look");
    look.part = console::qt::Look::Part::UpperHalf;
    host.setLook(look);
    expectWhole("a smaller part");
    look.part = console::qt::Look::Part::Whole;
    host.setLook(look);
    expectWhole("the whole");
}

TEST_F(ConsoleHostRegion, IsShownByTheNextPaintAndNothingNewer)
{
    openAndPaint();
    const QImage before = wholeFrame();
    ASSERT_TRUE(host.changedRegion().isEmpty());
    const QSignalBlocker blocker(host);
    console->write(U"newer", console::Output);
    EXPECT_EQ(before, wholeFrame());
    EXPECT_NE(before, wholeFrame());
}

TEST_F(ConsoleHostRegion, IsToldOnceMoreForAFrameThatNobodyAskedFor)
{
    openAndPaint();
    ASSERT_TRUE(host.changedRegion().isEmpty());
    paint(screen, screen.rect());
    {
        const QSignalBlocker blocker(host);
        type("a");
    }
    wholeFrame(); // as where somebody takes a picture
    settle();
    EXPECT_EQ(wholeFrame(), screen);

    {
        const QSignalBlocker blocker(host);
        type("b");
    }
    paint(screen, QRect(0, 0, 1, 1)); // as where a part of the window is uncovered
    settle();
    EXPECT_EQ(wholeFrame(), screen);
}

TEST_F(ConsoleHostRegion, KeepsNoProgramBusyThatLogsAfterEachFrame)
{
    openAndPaint();
    QObject::connect(&host, &ConsoleHost::repaintNeeded, &window, [this] { console->newline(); });
    type("a");
    const int asked = paints;
    QTest::qWait(200); // the frames that mustn't come have nothing to wait for
    EXPECT_LE(paints - asked, 2);
}

TEST_F(ConsoleHostRegion, KeepsNoProgramBusyThatLogsWhileItPaintsWhatLiesBelow)
{
    openAndPaint();
    whatThePictureBelowDoes = [this] { console->newline(); };
    type("a");
    const int asked = paints;
    QTest::qWait(200); // the frames that mustn't come have nothing to wait for
    EXPECT_LE(paints - asked, 2);
}

TEST_F(ConsoleHostRegion, HoldsWhatWasLoggedInAFrame)
{
    openAndPaint();
    ASSERT_TRUE(host.changedRegion().isEmpty());
    whatThePictureBelowDoes = [this] { console->write(U"below", console::Output); };
    paint(screen, screen.rect());
    whatThePictureBelowDoes = [] {};
    console->write(U"after", console::Output);
    const int before = paints;
    ASSERT_TRUE(QTest::qWaitFor([&] { return paints > before; }, 60000));
    EXPECT_EQ(wholeFrame(), screen);
}

TEST_F(ConsoleHostRegion, LetsTheCursorBlinkAfterAFrameThatWasAskedForInVain)
{
    openAndPaint();
    steady.reset();
    for (int i = 0; i < 3; ++i) {
        const int before = paints;
        ASSERT_TRUE(QTest::qWaitFor([&] { return paints > before; }, 60000));
        type("z"); // before the phase ends that the last frame began, and so the wait for its end
    }
    const int typed = paints;
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints >= typed + 3; }, 60000));
}

TEST_F(ConsoleHostRegion, HoldsAllWhereTheRendererHasPainted)
{
    openAndPaint();
    type("a");
    host.setPlain(true);
    settle();
    host.setPlain(false);
    settle();
    EXPECT_EQ(wholeFrame(), screen);
}

TEST_F(ConsoleHostRegion, HoldsThePixelsOfADenserDevice)
{
    screen = QImage(kSize * 2, QImage::Format_ARGB32_Premultiplied);
    screen.setDevicePixelRatio(2.0);
    openAndPaint();
    const auto wholeFrame = [this] {
        QImage image(screen.size(), screen.format());
        image.setDevicePixelRatio(2.0);
        paint(image, QRect(QPoint(0, 0), kSize));
        return image;
    };
    type("ab");
    EXPECT_EQ(wholeFrame(), screen);
}

} // namespace
} // namespace zephyr::test
