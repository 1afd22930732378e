#include "qt/HostedConsole.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QPointingDevice>

namespace zephyr::test {
namespace {

constexpr int kNotch = 15 * 8; // eighths of a degree

class ConsoleHostWheel : public HostedConsole
{
protected:
    ConsoleHostWheel()
    {
        host.setPlain(true);
        for (int i = 0; i < 300; ++i) {
            console->newline();
        }
    }

    void paint()
    {
        QImage frame(640, 400, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&frame);
        host.paint(painter);
    }

    unsigned scrolled() const { return console->snapshot().scrollOffset(); }
};

TEST_F(ConsoleHostWheel, ScrollsTwoLinesANotch)
{
    open();
    turnWheel(window, {0, kNotch});
    EXPECT_EQ(2u, scrolled());
    turnWheel(window, {0, kNotch});
    EXPECT_EQ(4u, scrolled());
    turnWheel(window, {0, -kNotch});
    EXPECT_EQ(2u, scrolled());
}

TEST_F(ConsoleHostWheel, ScrollsAsFarForNotchesThatComeTogether)
{
    open();
    turnWheel(window, {0, 3 * kNotch});
    EXPECT_EQ(6u, scrolled());
}

TEST_F(ConsoleHostWheel, AddsUpTheSmallTurnsOfATouchpad)
{
    open();
    for (int i = 0; i < kNotch; ++i) {
        EXPECT_EQ(i < 60 ? 0u : 1u, scrolled()) << i;
        turnWheel(window, {0, 1});
    }
    EXPECT_EQ(2u, scrolled());
    for (int i = 0; i < kNotch; ++i) {
        turnWheel(window, {0, -1});
    }
    EXPECT_EQ(0u, scrolled());
}

TEST_F(ConsoleHostWheel, ForgetsWhatIsLessThanALineWhenTheDirectionTurns)
{
    open();
    turnWheel(window, {0, kNotch});
    turnWheel(window, {0, 59});
    turnWheel(window, {0, -59});
    EXPECT_EQ(2u, scrolled());
    turnWheel(window, {0, -1});
    EXPECT_EQ(1u, scrolled());
}

TEST_F(ConsoleHostWheel, ForgetsWhatIsLessThanALineWhenAGestureBegins)
{
    open();
    turnWheel(window, {0, 59}, Qt::ScrollUpdate);
    turnWheel(window, {0, 0}, Qt::ScrollEnd);
    turnWheel(window, {0, 0}, Qt::ScrollBegin);
    turnWheel(window, {0, 59}, Qt::ScrollUpdate);
    EXPECT_EQ(0u, scrolled());
}

TEST_F(ConsoleHostWheel, IgnoresSidewaysTurns)
{
    open();
    EXPECT_TRUE(turnWheel(window, {kNotch, 0}));
    EXPECT_EQ(0u, scrolled());
    EXPECT_TRUE(window.received.empty());
}

TEST_F(ConsoleHostWheel, ScrollsByThePixelsOfATouchpadThatTellsNoDegrees)
{
    open();
    paint();
    const int lineHeight = QFontMetrics(*console->snapshot().font()).height();
    const auto move = [this](int pixels) {
        QWheelEvent event({5, 5}, {5, 5}, {0, pixels}, {}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&window, &event);
    };
    move(3 * lineHeight);
    EXPECT_EQ(3u, scrolled());
    move(-lineHeight);
    EXPECT_EQ(2u, scrolled());
}

TEST_F(ConsoleHostWheel, ScrollsWithAFinger)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    static QPointingDevice* const screen = QTest::createTouchDevice(); // Qt may refer to it until the end
    open();
    paint();
    const int lineHeight = QFontMetrics(*console->snapshot().font()).height();
    QTest::touchEvent(&window, screen).press(0, {100, 100});
    QTest::touchEvent(&window, screen).move(0, {100, 100 + 4 * lineHeight});
    EXPECT_EQ(4u, scrolled());
    QTest::touchEvent(&window, screen).move(0, {100, 100 + lineHeight});
    EXPECT_EQ(1u, scrolled());
    QTest::touchEvent(&window, screen).release(0, {100, 100 + lineHeight});
    host.setMouse(ConsoleHost::Mouse::Host);
    QTest::touchEvent(&window, screen).press(0, {100, 100});
    QTest::touchEvent(&window, screen).move(0, {100, 300});
    QTest::touchEvent(&window, screen).release(0, {100, 300});
    EXPECT_EQ(1u, scrolled());
}

TEST_F(ConsoleHostWheel, TurnsForTheHostWhileTheConsoleIsClosed)
{
    turnWheel(window, {0, kNotch});
    EXPECT_EQ(0u, scrolled());
    EXPECT_EQ((std::vector<std::string>{"wheel"}), window.received);
}

TEST_F(ConsoleHostWheel, PagesByWhatTheWindowShows)
{
    const int lineHeight = QFontMetrics(*console->snapshot().font()).height();
    open();
    for (const int height : {300, 100}) {
        window.resize(640, height);
        click(Qt::Key_End); // scrolls to the newest line
        click(Qt::Key_PageUp);
        EXPECT_EQ(static_cast<unsigned>(height / lineHeight), scrolled());
    }
}

TEST_F(ConsoleHostWheel, PagesByTheSizeThatTheWindowHadAtTheStart)
{
    const int lineHeight = QFontMetrics(*console->snapshot().font()).height();
    QWindow sized;
    sized.resize(640, 300);
    ConsoleHost put(console, &sized);
    put.setPlain(true);
    put.setOpen(true);
    sendKey(sized, QEvent::KeyPress, Qt::Key_PageUp);
    EXPECT_EQ(static_cast<unsigned>(300 / lineHeight), scrolled());
}

} // namespace
} // namespace zephyr::test
