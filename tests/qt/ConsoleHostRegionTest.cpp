#include "qt/HostedConsole.h"
#include "qt/SteadyCursors.h"
#include "zephyr/console/qt/Look.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QRegion>
#include <QSignalBlocker>

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
        told = host.changedRegion();
        paint(screen, told);
    }

    void paint(QImage& image, const QRegion& region)
    {
        QPainter painter(&image);
        painter.setClipRegion(region);
        painter.fillRect(image.rect(), QColor(kScene));
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
    int paints = 0;
    SteadyCursors steady; // whose end repaints
};

TEST_F(ConsoleHostRegion, IsMoreThanAnyWidgetWhereNothingIsKnown)
{
    const QRect everything(0, 0, kMostPixels, kMostPixels);
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

TEST_F(ConsoleHostRegion, AsksForWhatAClipLeftOut)
{
    openAndPaint();
    ASSERT_TRUE(host.changedRegion().isEmpty());
    paint(screen, screen.rect());
    {
        const QSignalBlocker blocker(host);
        type("a");
    }
    paint(screen, QRect(0, 0, 1, 1)); // as where a part of the window was uncovered
    settle();
    EXPECT_FALSE(told.isEmpty());
    EXPECT_EQ(wholeFrame(), screen);
}

TEST_F(ConsoleHostRegion, KeepsNoProgramBusyThatLogsInEachFrame)
{
    openAndPaint();
    QObject::disconnect(&host, &ConsoleHost::repaintNeeded, &window, nullptr);
    QObject::connect(&host, &ConsoleHost::repaintNeeded, &window, [this] {
        repaint();
        console->newline();
    });
    type("a");
    const int asked = paints;
    QTest::qWait(200); // the frames that mustn't come have nothing to wait for
    EXPECT_LE(paints - asked, 1);
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
