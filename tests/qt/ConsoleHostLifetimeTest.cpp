#include "qt/HostedConsole.h"
#include "support/MortalCommand.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/qt/Look.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QRasterWindow>

#include <atomic>
#include <future>
#include <stdexcept>
#include <thread>

namespace zephyr::test {
namespace {

/// A console, its window and its host, each of which a test may destroy at any time.
class ConsoleHostLifetime : public testing::Test
{
protected:
    ConsoleHostLifetime() { host->setOpen(true); }

    void key(int code, const QString& text = {})
    {
        sendKey(*window, QEvent::KeyPress, code, {}, text);
        if (window) {
            sendKey(*window, QEvent::KeyRelease, code, {}, text);
        }
    }

    /// Types and runs the line `x`.
    void runX()
    {
        key(Qt::Key_X, "x");
        key(Qt::Key_Return, "\r");
    }

    void paint()
    {
        QImage frame(160, 90, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&frame);
        host->paint(painter);
    }

    /// Calls every function of the host.
    void useHost()
    {
        host->setOpen(true);
        paint();
        host->copyLog();
        host->copyLastAnswer();
        host->captureQtMessages(true);
        host->mirrorLog(QString::fromStdString((directory.path() / "log").string()));
        host->mirrorLog({});
        host->captureQtMessages(false);
        host->setOpen(false);
    }

    TemporaryDirectory directory;
    std::shared_ptr<Console> console = std::make_shared<Console>();
    std::unique_ptr<RecordingWindow> window = std::make_unique<RecordingWindow>();
    std::unique_ptr<ConsoleHost> host = std::make_unique<ConsoleHost>(console, window.get());
};

TEST_F(ConsoleHostLifetime, DoesNotKeepTheConsoleAlive)
{
    const std::weak_ptr<Console> watch = console;
    paint();
    key(Qt::Key_A, "a");
    EXPECT_EQ(1, console.use_count());
    console.reset();
    EXPECT_TRUE(watch.expired());
}

TEST_F(ConsoleHostLifetime, OutlivesTheConsole)
{
    QSignalSpy toggles(host.get(), &ConsoleHost::openChanged);
    paint();
    console.reset();
    EXPECT_FALSE(host->isOpen());
    ASSERT_TRUE(QTest::qWaitFor([&] { return toggles.size() == 1; }, 60000));
    key(Qt::Key_A, "a");
    key(Qt::Key_QuoteLeft, "`");
    turnWheel(*window, {0, 120});
    commit(*window, "a");
    window->resize(100, 100);
    useHost();
    EXPECT_FALSE(host->isOpen());
    EXPECT_EQ((std::vector<std::string>{"press A", "release A", "press `", "release `", "wheel"}),
              window->received);
}

TEST_F(ConsoleHostLifetime, OutlivesTheConsoleWithItsServicesOn)
{
    host->captureQtMessages(true);
    ASSERT_TRUE(host->mirrorLog(QString::fromStdString((directory.path() / "log").string())));
    const std::weak_ptr<Console> gone = console;
    console.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return gone.expired(); }, 60000)); // the mirror may still be reading it
    qInfo("to nobody");
    host.reset();
    EXPECT_EQ("Zephyr Console:\n\n", directory.read("log"));
}

TEST_F(ConsoleHostLifetime, OutlivesTheWindow)
{
    window.reset();
    useHost();
    EXPECT_FALSE(console->isOpen());
    host->setOpen(true);
    EXPECT_TRUE(console->isOpen());
}

TEST_F(ConsoleHostLifetime, EndsBeforeConsoleAndWindow)
{
    host.reset();
    key(Qt::Key_A, "a");
    window->resize(100, 100);
    EXPECT_EQ((std::vector<std::string>{"press A", "release A"}), window->received);
    EXPECT_EQ(U"", console->activeInput());
}

TEST_F(ConsoleHostLifetime, EndsWithTheWindowThatItIsAChildOf)
{
    host.reset();
    const QPointer<ConsoleHost> child = new ConsoleHost(console, window.get(), window.get());
    child->setOpen(true);
    window.reset();
    EXPECT_FALSE(child);
    EXPECT_TRUE(console->isOpen());
}

TEST_F(ConsoleHostLifetime, EndsInEveryOrderWithConsoleAndWindow)
{
    for (const std::string order : {"chw", "cwh", "hcw", "hwc", "wch", "whc"}) {
        console = std::make_shared<Console>();
        window = std::make_unique<RecordingWindow>();
        host = std::make_unique<ConsoleHost>(console, window.get());
        host->setOpen(true);
        host->captureQtMessages(true);
        ASSERT_TRUE(host->mirrorLog(QString::fromStdString((directory.path() / order).string())));
        paint();
        key(Qt::Key_A, "a");
        for (const char next : order) {
            next == 'c' ? console.reset() : next == 'w' ? window.reset() : host.reset();
            QCoreApplication::processEvents();
        }
        EXPECT_EQ("Zephyr Console:\n\n", directory.read(order)) << order;
    }
}

TEST_F(ConsoleHostLifetime, MayBeEndedByACommandThatRuns)
{
    addCommand(*console, U"x").onExecute = [this](const console::ConsoleArgs&, Console& running) {
        host.reset();
        running.write(U"still here", console::Output);
    };
    host->captureQtMessages(true);
    ASSERT_TRUE(host->mirrorLog(QString::fromStdString((directory.path() / "log").string())));
    runX();
    EXPECT_EQ((std::vector<std::string>{"x", "still here", ""}), ConsoleDriver(*console).log());
    EXPECT_EQ("Zephyr Console:\n\n>> x\n", directory.read("log"));
    key(Qt::Key_B, "b");
    EXPECT_EQ((std::vector<std::string>{"release Return", "press B", "release B"}), window->received);
}

TEST_F(ConsoleHostLifetime, MayBeEndedByACommandThatThrows)
{
    addCommand(*console, U"x").onExecute = [this](const console::ConsoleArgs&, Console&) {
        host.reset();
        throw std::runtime_error("too late");
    };
    runX();
    EXPECT_EQ((std::vector<std::string>{"x", "The console caught an exception: too late"}),
              ConsoleDriver(*console).log());
}

TEST_F(ConsoleHostLifetime, MayBeEndedByACompletion)
{
    addCommand(*console, U"x").onComplete = [this](const console::ConsoleArgs&) {
        host.reset();
        return std::vector<std::u32string>{U"done"};
    };
    key(Qt::Key_X, "x");
    key(Qt::Key_Tab, "\t");
    EXPECT_EQ(U"x done", console->activeInput());
}

TEST_F(ConsoleHostLifetime, OutlivesTheWindowThatACommandDestroys)
{
    addCommand(*console, U"x").onExecute = [this](const console::ConsoleArgs&, Console&) { window.reset(); };
    runX();
    useHost();
    EXPECT_FALSE(host->isOpen());
}

TEST_F(ConsoleHostLifetime, KeepsTheConsoleThatACommandLetsGoOfUntilTheCommandHasRun)
{
    const std::weak_ptr<Console> watch = console;
    addCommand(*console, U"x").onExecute = [this](const console::ConsoleArgs&, Console& running) {
        console.reset();
        running.write(U"still here", console::Output);
    };
    runX();
    EXPECT_TRUE(watch.expired());
    EXPECT_FALSE(host->isOpen());
}

TEST_F(ConsoleHostLifetime, MayBeEndedByTheReceiverOfAnySignal)
{
    const auto reset = [this] { host.reset(); };
    const auto remake = [this] { host = std::make_unique<ConsoleHost>(console, window.get()); };

    QObject::connect(host.get(), &ConsoleHost::openChanged, window.get(), reset);
    host->setOpen(false);
    EXPECT_FALSE(host);

    remake();
    QObject::connect(host.get(), &ConsoleHost::openChanged, window.get(), reset);
    key(Qt::Key_QuoteLeft, "`");
    EXPECT_FALSE(host);

    remake();
    QObject::connect(host.get(), &ConsoleHost::repaintNeeded, window.get(), reset);
    key(Qt::Key_A, "a");
    EXPECT_FALSE(host);

    remake();
    QObject::connect(host.get(), &ConsoleHost::exceptionCaught, window.get(), reset);
    addCommand(*console, U"ax").onExecute = [](const console::ConsoleArgs&, Console&) { throw 1; };
    runX();
    EXPECT_FALSE(host);
}

TEST_F(ConsoleHostLifetime, MayBeEndedByTheReceiverWhenTheLogGrowsOrTheCursorBlinks)
{
    for (const bool isPainted : {false, true}) {
        host = std::make_unique<ConsoleHost>(console, window.get());
        isPainted ? paint() : void();
        QObject::connect(host.get(), &ConsoleHost::repaintNeeded, window.get(), [this] { host.reset(); });
        isPainted ? void() : console->newline();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !host; }, 60000)) << isPainted;
    }
}

TEST_F(ConsoleHostLifetime, MayBeEndedByTheReceiverWhileADragScrolls)
{
    for (int i = 0; i < 200; ++i) {
        console->write(U"line", console::Output);
    }
    window->resize(160, 90);
    paint();
    QCoreApplication::processEvents(); // hears of the lines
    const auto send = [this](QEvent::Type type, QPoint place, Qt::MouseButton button) {
        QMouseEvent event(type, place, window->mapToGlobal(place), button, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
    };
    send(QEvent::MouseButtonPress, {20, 40}, Qt::LeftButton);
    send(QEvent::MouseMove, {20, -30}, Qt::NoButton);
    paint();
    QObject::connect(host.get(), &ConsoleHost::repaintNeeded, window.get(), [this] { host.reset(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !host; }, 60000));
}

TEST_F(ConsoleHostLifetime, MayBeEndedByTheReceiverWhileItSearches)
{
    paint();
    sendKey(*window, QEvent::KeyPress, Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_X, "x");
    int asked = 0;
    QObject::connect(host.get(), &ConsoleHost::repaintNeeded, window.get(), [&] {
        if (++asked == 2) { // the first one is for the line, the second one for the hit in it
            host.reset();
        }
    });
    console->write(U"x", console::Output);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !host; }, 60000));
}

TEST_F(ConsoleHostLifetime, MayBeEndedByTheReceiverWhenTheLookOrTheViewIsChanged)
{
    console->write(U"line", console::Output);
    const auto remake = [this] {
        host = std::make_unique<ConsoleHost>(console, window.get());
        QObject::connect(host.get(), &ConsoleHost::repaintNeeded, window.get(), [this] { host.reset(); });
    };
    remake();
    console::qt::Look look = host->look();
    look.fontSize = 30.0;
    host->setLook(look);
    EXPECT_FALSE(host);
    remake();
    host->clearView();
    EXPECT_FALSE(host);
    remake();
    host->setPlain(true);
    EXPECT_FALSE(host);
}

TEST_F(ConsoleHostLifetime, MayBeEndedWhileItPaintsByTheReceiverOfOpenChanged)
{
    host->setOpen(false);
    QObject::connect(host.get(), &ConsoleHost::openChanged, window.get(), [this] { host.reset(); });
    console->open();
    paint();
    EXPECT_FALSE(host);
}

/// An image that, once armed, blocks whoever asks for its height until the test lets them go on.
class SlowImage : public QImage
{
public:
    SlowImage() : QImage(32, 20, QImage::Format_ARGB32_Premultiplied) {}

    bool isArmed = false;
    std::promise<void> asked;
    std::promise<void> goesOn;

protected:
    int metric(PaintDeviceMetric what) const override
    {
        if (what == PdmHeight && isArmed) {
            auto* self = const_cast<SlowImage*>(this);
            self->isArmed = false;
            self->asked.set_value();
            self->goesOn.get_future().wait();
        }
        return QImage::metric(what);
    }
};

TEST_F(ConsoleHostLifetime, HasTheConsoleDestroyedOnItsThreadWhileItIsPainted)
{
    std::thread::id endedOn;
    Life life = addMortalCommand(*console, U"x", {}, [&] { endedOn = std::this_thread::get_id(); });
    SlowImage frame;
    std::thread renderer([&] {
        QPainter painter(&frame);
        frame.isArmed = true;
        host->paint(painter);
    });
    frame.asked.get_future().wait();
    console.reset();
    EXPECT_FALSE(life.expired());
    frame.goesOn.set_value();
    renderer.join();
    EXPECT_TRUE(QTest::qWaitFor([&] { return life.expired(); }, 60000));
    EXPECT_EQ(std::this_thread::get_id(), endedOn);
}

/// A thread may borrow the console just before, while or just after the test lets go of it.
TEST_F(ConsoleHostLifetime, HasTheConsoleDestroyedOnItsThreadWheneverThatHappens)
{
    for (int i = 0; i < 300; ++i) {
        std::thread::id endedOn;
        std::shared_ptr<Console> mine = std::make_shared<Console>();
        const Life life = addMortalCommand(*mine, U"x", {}, [&] { endedOn = std::this_thread::get_id(); });
        ConsoleHost onMine(mine, window.get());
        onMine.setOpen(true);
        std::atomic<bool> paints{false};
        std::atomic<bool> stops{false};
        std::thread renderer([&] {
            QImage frame(8, 8, QImage::Format_ARGB32_Premultiplied);
            while (!stops) {
                QPainter painter(&frame);
                onMine.paint(painter);
                paints = true;
            }
        });
        while (!paints) {
            std::this_thread::yield();
        }
        mine.reset();
        stops = true;
        renderer.join();
        ASSERT_TRUE(QTest::qWaitFor([&] { return life.expired(); }, 60000));
        ASSERT_EQ(std::this_thread::get_id(), endedOn);
    }
}

} // namespace
} // namespace zephyr::test
