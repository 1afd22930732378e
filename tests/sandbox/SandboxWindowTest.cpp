#include "sandbox/program/SandboxWindow.h"

#include "sandbox/SandboxFixture.h"
#include "sandbox/program/KeyTyping.h"
#include "support/SystemText.h"
#include "support/TemporaryDirectory.h"
#include "support/WaitUntil.h"

#include <QColor>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QRect>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <functional>
#include <set>
#include <vector>

namespace zephyr::test {
namespace {

/// A window that calls back whenever it has been painted.
class PaintedWindow : public sandbox::SandboxWindow
{
public:
    using sandbox::SandboxWindow::SandboxWindow;

    std::function<void()> whenPainted = [] {};

protected:
    void paintEvent(QPaintEvent* event) override
    {
        sandbox::SandboxWindow::paintEvent(event);
        whenPainted();
    }
};

/// The part of a frame that neither the window's texts nor a short log cover.
QRect bareArea(const QImage& frame)
{
    return {frame.width() / 2, frame.height() / 2, frame.width() / 2, frame.height() / 4};
}

class SandboxWindow : public SandboxFixture
{
protected:
    SandboxWindow()
    {
        window.resize(640, 360);
        window.whenShown([this] { ++shown; });
        window.show();
        waitUntil("the window is shown", [this] { return shown > 0; });
    }

    /// Presses and releases a key. \return whether the press was accepted.
    bool press(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               quint32 scanCode = 0)
    {
        QKeyEvent down(QEvent::KeyPress, key, modifiers, scanCode, 0, 0, text);
        QCoreApplication::sendEvent(&window, &down);
        QKeyEvent up(QEvent::KeyRelease, key, modifiers, scanCode, 0, 0, text);
        QCoreApplication::sendEvent(&window, &up);
        return down.isAccepted();
    }

    void pause()
    {
        sandbox.clock().setPaused(true);
        window.update();
        waitForPainting(); // of the last movement
    }

    /// Waits for a few ticks of the window's timer. \return how often the window was painted meanwhile.
    int paintingsInSomeTicks()
    {
        int paintings = 0;
        int ticks = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
        window.whenPainted = [&] { ++paintings; };
        timer.start(20); // milliseconds, longer than the window's interval
        waitUntil("time has passed", [&] { return ticks == 10; });
        window.whenPainted = [] {};
        return paintings;
    }

    void waitForPainting()
    {
        bool isPainted = false;
        window.whenPainted = [&] { isPainted = true; };
        waitUntil("the window is painted", [&] { return isPainted; });
        window.whenPainted = [] {};
    }

    /// Types a line into the open console and runs it.
    void enter(const QString& line) { sandbox::typeInto(window, line + '\n'); }

    /// Number of lines in the log that begin with `beginning`.
    std::size_t countOf(const std::string& beginning)
    {
        const Lines log = driver.log();
        return static_cast<std::size_t>(std::count_if(
            log.begin(), log.end(), [&](const std::string& line) { return line.starts_with(beginning); }));
    }

    void turnWheel(int eighths)
    {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, eighths), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&window, &event);
    }

    void letRun()
    {
        const auto before = sandbox.simulation().stepCount();
        waitUntil("the simulation has run", [&] { return sandbox.simulation().stepCount() >= before + 5; });
    }

    void fillLog()
    {
        for (int i = 0; i < 200; ++i) {
            sandbox.console().newline();
        }
    }

    unsigned scrollOffset() { return sandbox.console().snapshot().scrollOffset(); }

    int shown = 0;
    PaintedWindow window{sandbox, true};
};

TEST_F(SandboxWindow, ReportsOnceThatItIsShown)
{
    letRun();
    EXPECT_EQ(1, shown);
}

TEST_F(SandboxWindow, RunsTheSimulationWhetherTheConsoleIsOpenOrNot)
{
    letRun();
    press(Qt::Key_QuoteLeft, "`");
    ASSERT_TRUE(sandbox.console().isOpen());
    letRun();
}

TEST_F(SandboxWindow, RunsTheSimulationNoFasterThanTheClock)
{
    const auto begin = std::chrono::steady_clock::now();
    const double simulatedBefore = sandbox.simulation().time();
    letRun();
    letRun();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    // The first tick may still bring the time of a frame that began earlier.
    EXPECT_LE(sandbox.simulation().time() - simulatedBefore, passed.count() + 0.11);
}

TEST_F(SandboxWindow, GivesKeysToTheSimulationWhileTheConsoleIsClosed)
{
    EXPECT_TRUE(press(Qt::Key_Space, " "));
    EXPECT_TRUE(sandbox.clock().isPaused());
    EXPECT_TRUE(press(Qt::Key_Space, " "));
    EXPECT_FALSE(sandbox.clock().isPaused());

    press(Qt::Key_Space, " ");
    EXPECT_TRUE(press(Qt::Key_G, "g"));
    EXPECT_EQ(15.0, sandbox.simulation().gust());
    EXPECT_TRUE(press(Qt::Key_Up));
    EXPECT_TRUE(press(Qt::Key_Right));
    EXPECT_EQ(13.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(95.0, sandbox.simulation().wind().heading);
    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_TRUE(press(Qt::Key_Left));
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(90.0, sandbox.simulation().wind().heading);
    EXPECT_TRUE(press(Qt::Key_R, "r"));
    EXPECT_EQ(0U, sandbox.simulation().stepCount());
    EXPECT_FALSE(press(Qt::Key_X, "x"));
    EXPECT_EQ("", driver.input());
}

TEST_F(SandboxWindow, LeavesKeysAloneThatAreCommands)
{
    const double speed = sandbox.simulation().wind().speed;
    for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
        EXPECT_FALSE(press(Qt::Key_Up, {}, modifier));
        sandbox.console().open();
        EXPECT_FALSE(press(Qt::Key_Space, " ", modifier));
        sandbox.console().close();
    }
    EXPECT_EQ(speed, sandbox.simulation().wind().speed);
    EXPECT_FALSE(sandbox.clock().isPaused());
}

TEST_F(SandboxWindow, KeepsTheWindInItsLimitsWhenKeysChangeIt)
{
    sandbox.simulation().setWind({59.5, 357.0});
    press(Qt::Key_Up);
    press(Qt::Key_Right);
    EXPECT_EQ(60.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(2.0, sandbox.simulation().wind().heading);

    sandbox.simulation().setWind({0.5, 2.0});
    press(Qt::Key_Down);
    press(Qt::Key_Left);
    EXPECT_EQ(0.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(357.0, sandbox.simulation().wind().heading);
}

TEST_F(SandboxWindow, HidesKeysThatTheConsoleTakesFromTheSimulation)
{
    press(Qt::Key_QuoteLeft, "`");
    const sandbox::Wind before = sandbox.simulation().wind();
    EXPECT_TRUE(press(Qt::Key_Space, " "));
    EXPECT_TRUE(press(Qt::Key_G, "g"));
    EXPECT_TRUE(press(Qt::Key_R, "r"));
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
        EXPECT_TRUE(press(key));
    }

    EXPECT_EQ(" gr", driver.input());
    EXPECT_FALSE(sandbox.clock().isPaused());
    EXPECT_EQ(0.0, sandbox.simulation().gust());
    EXPECT_EQ(before.speed, sandbox.simulation().wind().speed);
    EXPECT_EQ(before.heading, sandbox.simulation().wind().heading);
}

TEST_F(SandboxWindow, IsTypedIntoKeyByKey)
{
    sandbox::typeInto(window, QString::fromUtf8("`wind set 5\\nhelp wind set\nÄ\U0001F600 X"));

    EXPECT_TRUE(sandbox.console().isOpen());
    EXPECT_EQ("wind set 5", driver.log()[0]);
    EXPECT_EQ("help wind set", driver.log()[3]);
    EXPECT_EQ("Ä\U0001F600 X", driver.input());
}

TEST_F(SandboxWindow, OpensItsConsoleWithTheKeyLeftOfOneAndWithShiftEscape)
{
    press(Qt::Key_Dead_Circumflex, {}, Qt::NoModifier, 49);
    EXPECT_TRUE(sandbox.console().isOpen());
    press(Qt::Key_Dead_Circumflex, {}, Qt::NoModifier, 49);
    EXPECT_FALSE(sandbox.console().isOpen());

    press(Qt::Key_Escape, "\x1b", Qt::ShiftModifier);
    EXPECT_TRUE(sandbox.console().isOpen());
    press(Qt::Key_Escape, "\x1b", Qt::ShiftModifier);
    EXPECT_FALSE(sandbox.console().isOpen());
}

TEST_F(SandboxWindow, TypesWhatAnInputMethodCommits)
{
    press(Qt::Key_QuoteLeft, "`");
    QInputMethodEvent event;
    event.setCommitString("\u00ea\u00e9");
    QCoreApplication::sendEvent(&window, &event);
    EXPECT_EQ("\u00ea\u00e9", driver.input());
}

TEST_F(SandboxWindow, ForwardsTheWheelInDegrees)
{
    fillLog();
    turnWheel(120);
    EXPECT_EQ(0U, scrollOffset());

    press(Qt::Key_QuoteLeft, "`");
    turnWheel(120);
    EXPECT_EQ(2U, scrollOffset());
    turnWheel(-120);
    EXPECT_EQ(0U, scrollOffset());
}

TEST_F(SandboxWindow, ForwardsItsSize)
{
    const int lineHeight = QFontMetrics(*sandbox.console().snapshot().font()).height();
    fillLog();
    press(Qt::Key_QuoteLeft, "`");
    press(Qt::Key_PageUp);
    EXPECT_EQ(static_cast<unsigned>(360 / lineHeight), scrollOffset());

    press(Qt::Key_PageDown);
    window.resize(640, 200);
    waitUntil("the window has its size", [this] { return window.frame().height() == 200; });
    QCoreApplication::processEvents();
    press(Qt::Key_PageUp);
    EXPECT_EQ(static_cast<unsigned>(200 / lineHeight), scrollOffset());
}

TEST_F(SandboxWindow, DrawsTheSameFrameWhileNothingMoves)
{
    press(Qt::Key_Space, " ");
    EXPECT_EQ(QSize(640, 360), window.frame().size());
    EXPECT_EQ(window.frame(), window.frame());

    const QImage before = window.frame();
    sandbox.simulation().step();
    EXPECT_NE(before, window.frame());
}

TEST_F(SandboxWindow, LetsTheSimulationShineThroughTheConsole)
{
    press(Qt::Key_Space, " ");
    QImage expected = window.frame();
    press(Qt::Key_QuoteLeft, "`");
    const QImage open = window.frame();

    QPainter(&expected).fillRect(expected.rect(), QColor(0, 0, 0, 204));
    EXPECT_EQ(expected.copy(bareArea(open)), open.copy(bareArea(open)));

    press(Qt::Key_QuoteLeft, "`");
    EXPECT_NE(open, window.frame());
}

TEST_F(SandboxWindow, DrawsParticlesWhereTheyAre)
{
    press(Qt::Key_Space, " ");
    sandbox.simulation().setParticleCount(0);
    const QImage empty = window.frame();
    sandbox.simulation().setParticleCount(1);
    const QImage one = window.frame();

    const glm::dvec2 place = sandbox.simulation().particles().front().position;
    const QPoint pixel =
        QPointF(place.x * 4.0, place.y * 4.0).toPoint(); // 160 m by 90 m on 640 by 360 pixels
    const QRect around = QRect(pixel, QSize(1, 1)).adjusted(-9, -9, 9, 9);
    EXPECT_NE(empty.copy(around), one.copy(around));

    QImage erased = one;
    QPainter(&erased).drawImage(around, empty, around);
    EXPECT_EQ(empty.copy(0, 28, 640, 304),
              erased.copy(0, 28, 640, 304)); // without the texts at the top and the bottom
}

TEST_F(SandboxWindow, IsPaintedAtTheSimulationsRate) { EXPECT_GT(paintingsInSomeTicks(), 2); }

TEST_F(SandboxWindow, IsPaintedOnlyWhenSomethingChangesWhileTheSimulationIsPaused)
{
    pause();
    EXPECT_EQ(0, paintingsInSomeTicks());

    press(Qt::Key_QuoteLeft, "`");
    waitForPainting();
    sandbox.console().write("from nobody's key", console::Output);
    waitForPainting();
    press(Qt::Key_QuoteLeft, "`");
    waitForPainting();
    EXPECT_EQ(0, paintingsInSomeTicks());

    press(Qt::Key_Right);
    waitForPainting();
}

TEST_F(SandboxWindow, PassesNothingToTheConsoleAfterATypedQuit)
{
    int quits = 0;
    std::vector<std::string> logAtQuit;
    sandbox.whenQuitting([&] {
        ++quits;
        logAtQuit = driver.log();
    });
    sandbox::typeInto(window, "`quit\nwind set 5\nquit\n");
    EXPECT_TRUE(sandbox.isQuitting());
    EXPECT_EQ(1, quits);
    EXPECT_EQ(Lines({"quit"}), logAtQuit);
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
}

TEST_F(SandboxWindow, RunsNothingAfterAQuitInAnAliasOrAFile)
{
    const TemporaryDirectory directory;
    directory.write("end.console", "alias done \"quit; wind set 5\"\ndone\nwind set 6\n");
    sandbox.console().appendRunpath(directory.path());
    sandbox::typeInto(window, "`run end\n");
    EXPECT_TRUE(sandbox.isQuitting());
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
}

class Recording : public SandboxWindow
{
protected:
    Recording()
    {
        sandbox.restart();
        sandbox.simulation().setParticleCount(100); // keeps the steps short
        press(Qt::Key_QuoteLeft, "`");
    }

    void start(const std::string& file, unsigned steps)
    {
        enter(QString("sim record /path=%1 /steps=%2").arg(QString::fromStdString(pathOf(file))).arg(steps));
    }

    std::string pathOf(const std::string& file) const { return (directory.path() / file).string(); }

    std::size_t rowsOf(const std::string& file) const
    {
        const std::string text = directory.read(file);
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }

    void waitForSteps()
    {
        waitUntil("a thousand steps are recorded", [&] { return countOf("        step 1000 of") == 1; });
    }

    void waitForEnd()
    {
        waitUntil("the recording is done", [&] { return !isWorking(); });
    }

    bool isWorking() { return sandbox.recording().isWorking(); }

    const TemporaryDirectory directory;
};

TEST_F(Recording, ReportsProgressWhileTheWindowKeepsBeingPainted)
{
    std::set<std::size_t> painted; // numbers of progress lines seen while painting
    start("a.csv", 600);
    EXPECT_TRUE(isWorking());
    window.whenPainted = [&] {
        if (isWorking()) {
            painted.insert(countOf("        step "));
        }
    };
    waitForEnd();

    EXPECT_GT(painted.size(), 4U);
    EXPECT_EQ(10U, countOf("        step "));
    EXPECT_EQ(1U, countOf("        step 60 of 600"));
    EXPECT_EQ(1U, countOf("    Recording to '" + pathOf("a.csv") + "', 600 steps."));
    EXPECT_EQ("    Wrote steps 1 to 600 to '" + pathOf("a.csv") + "'.", driver.log().back());
    EXPECT_EQ(1U + 600U * 100U, rowsOf("a.csv"));
}

TEST_F(Recording, IsTheOnlyOneThatMovesTheSimulationOn)
{
    const auto before = sandbox.simulation().stepCount();
    start("a.csv", 300);
    enter("sim step 5");
    waitForEnd();
    EXPECT_EQ(before + 300, sandbox.simulation().stepCount());
    EXPECT_EQ(1U, countOf("    Still recording to '" + pathOf("a.csv") + "', step 0 of 300."));
    letRun();
}

TEST_F(Recording, RefusesASecondOneMeanwhile)
{
    start("a.csv", 300);
    start("b.csv", 300);
    EXPECT_FALSE(directory.has("b.csv"));
    EXPECT_EQ(1U, countOf("    Still recording to '" + pathOf("a.csv") +
                          "', step 0 of 300.  'sim reset' ends that."));

    waitForEnd();
    start("b.csv", 1);
    waitForEnd();
    EXPECT_EQ(101U, rowsOf("b.csv"));
}

TEST_F(Recording, EndsEarlyOnAReset)
{
    start("a.csv", 10000);
    waitForSteps();
    enter("sim reset");
    EXPECT_FALSE(isWorking());
    EXPECT_EQ(1U, countOf("    The recording to '" + pathOf("a.csv") + "' ended early, at step "));
    EXPECT_EQ(0U, sandbox.simulation().stepCount());
    EXPECT_GE(rowsOf("a.csv"), 1U + 1000U * 100U);

    start("b.csv", 10000);
    press(Qt::Key_QuoteLeft, "`");
    press(Qt::Key_R, "r");
    EXPECT_FALSE(isWorking());
    EXPECT_EQ(1U, countOf("    The recording to '" + pathOf("b.csv") + "' ended early, at step 0 of 10000."));
}

TEST_F(Recording, EndsEarlyWhenTheProgramQuits)
{
    start("a.csv", 10000);
    waitForSteps();
    enter("quit");
    EXPECT_FALSE(isWorking());
    EXPECT_EQ(1U, countOf("    The recording to '" + pathOf("a.csv") + "' ended early, at step "));
    EXPECT_GE(rowsOf("a.csv"), 1U + 1000U * 100U);
}

TEST_F(Recording, SaysThatTheDiskIsFullWhenItEndsEarly)
{
    enter("sim record /path=/dev/full");
    enter("sim reset"); // before the first rows reach the device
    EXPECT_FALSE(isWorking());
    EXPECT_EQ(1U, countOf("    Can't write '/dev/full': " + systemText(std::errc::no_space_on_device) + "."));
    EXPECT_EQ(0U, countOf("    The recording to "));
}

TEST_F(Recording, EndsWithALineWhenTheDiskIsFull)
{
    enter("sim record /path=/dev/full");
    waitForEnd();
    EXPECT_EQ("    Can't write '/dev/full': " + systemText(std::errc::no_space_on_device) + ".",
              driver.log().back());

    enter("sim record /path=" + QString::fromStdString(pathOf("no/a.csv")));
    EXPECT_FALSE(isWorking());
    EXPECT_EQ(1U, countOf("    Can't write '" + pathOf("no/a.csv") +
                          "': " + systemText(std::errc::no_such_file_or_directory) + "."));
}

TEST_F(Recording, CallsBackWhenItHasEnded)
{
    int calls = 0;
    window.whenNotRecording([&] { ++calls; });
    EXPECT_EQ(1, calls);

    start("a.csv", 100);
    window.whenNotRecording([&] {
        EXPECT_FALSE(isWorking());
        ++calls;
    });
    EXPECT_EQ(1, calls);
    waitUntil("the second callback is called", [&] { return calls > 1; });
    EXPECT_EQ(1U + 100U * 100U, rowsOf("a.csv"));
}

} // namespace
} // namespace zephyr::test
