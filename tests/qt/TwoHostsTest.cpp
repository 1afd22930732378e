// Two hosts of one console, and a program that opens the console itself.

#include "qt/HostedConsole.h"

#include <QImage>
#include <QPainter>

#include <thread>

namespace zephyr::test {
namespace {

class TwoHosts : public HostedConsole
{
protected:
    RecordingWindow otherWindow;
    ConsoleHost other{console, &otherWindow};
    QSignalSpy otherToggles{&other, &ConsoleHost::openChanged};
    QSignalSpy otherRepaints{&other, &ConsoleHost::repaintNeeded};
};

TEST_F(TwoHosts, KnowAtOnceThatTheOtherOpened)
{
    host.setOpen(true);
    EXPECT_TRUE(other.isOpen());
    sendKey(otherWindow, QEvent::KeyPress, Qt::Key_A, {}, "a");
    EXPECT_EQ("a", input());
    EXPECT_EQ(1, otherToggles.size());
    other.setOpen(false);
    EXPECT_FALSE(host.isOpen());
    click(Qt::Key_A, {}, "a");
    EXPECT_EQ((std::vector<std::string>{"press A", "release A"}), window.received);
}

TEST_F(TwoHosts, AnnounceAtTheNextEventThatTheOtherOpened)
{
    host.setOpen(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(1, otherToggles.size());
    EXPECT_EQ(1, otherRepaints.size());
    host.setOpen(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(2, otherToggles.size());
}

TEST_F(TwoHosts, RepaintWhatTheOtherTyped)
{
    host.setOpen(true);
    QCoreApplication::processEvents();
    otherRepaints.clear();
    type("a");
    QCoreApplication::processEvents();
    EXPECT_EQ(1, otherRepaints.size());
}

TEST_F(TwoHosts, KnowAtOnceThatTheProgramOpenedTheConsole)
{
    console->open();
    EXPECT_TRUE(host.isOpen());
    EXPECT_TRUE(other.isOpen());
    QCoreApplication::processEvents();
    EXPECT_EQ(1, toggles.size());
    EXPECT_EQ(1, otherToggles.size());
    console->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(2, toggles.size());
}

TEST_F(TwoHosts, OfOneWindowActOnceForAKey)
{
    ConsoleHost again(console, &window);
    click(Qt::Key_QuoteLeft, {}, "`");
    EXPECT_TRUE(console->isOpen());
    type("x");
    EXPECT_EQ("x", input());
}

TEST_F(TwoHosts, LeaveThePlaceOfTheProgramsObserverToIt)
{
    int calls = 0;
    console->setObserver([&] { ++calls; });
    host.setOpen(true);
    EXPECT_EQ(1, calls);
    QCoreApplication::processEvents();
    EXPECT_EQ(1, otherToggles.size());
    console->setObserver({});
}

/// A host whose frames log.
class ALoggingHost : public HostedConsole
{
protected:
    void paint()
    {
        QImage frame(160, 90, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&frame);
        console->write(U"before", console::Output);
        host.paint(painter);
        console->write(U"after", console::Output);
        ++frames;
    }

    int frames = 0;
};

TEST_F(ALoggingHost, IsNotKeptBusyByWhatItsFramesLog)
{
    host.setOpen(true);
    QObject::connect(&host, &ConsoleHost::repaintNeeded, &window, [this] { paint(); }, Qt::QueuedConnection);
    paint();
    for (int i = 0; i < 200; ++i) {
        QCoreApplication::processEvents();
    }
    EXPECT_LE(frames, 3) << "the first, and one or two for the cursor";
    console->write(U"by others", console::Output);
    const int before = frames;
    EXPECT_TRUE(QTest::qWaitFor([&] { return frames > before; }, 60000));
}

TEST_F(ALoggingHost, IsNotKeptBusyByWhatAThreadThatPaintsLogs)
{
    host.setOpen(true);
    repaints.clear();
    std::thread([this] {
        paint();
        paint();
    }).join();
    QCoreApplication::processEvents();
    EXPECT_LE(repaints.size(), 1) << "for what was logged before the first frame";
}

} // namespace
} // namespace zephyr::test
