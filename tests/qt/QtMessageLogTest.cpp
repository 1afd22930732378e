#include "qt/HostedConsole.h"
#include "support/ConsoleInside.h"
#include "support/TemporaryDirectory.h"

#include <QSemaphore>

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <mutex>
#include <string>
#include <thread>

namespace zephyr::test {

namespace {

std::mutex heardMutex;
std::vector<std::string> heard;
QtMessageHandler laterNext = nullptr;

void hear(QtMsgType, const QMessageLogContext&, const QString& message)
{
    const std::lock_guard lock(heardMutex);
    heard.push_back(message.toStdString());
}

/// A handler that another library may install later. It calls the handler that was installed before it.
void hearLater(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    laterNext(type, context, "later " + message);
}

/// A handler that calls no other.
void hearAlone(QtMsgType, const QMessageLogContext&, const QString& message)
{
    const std::lock_guard lock(heardMutex);
    heard.push_back("alone " + message.toStdString());
}

using Lines = std::vector<std::string>;

class QtMessageLog : public HostedConsole
{
protected:
    QtMessageLog() : mBefore(qInstallMessageHandler(hear)) { heard.clear(); }

    ~QtMessageLog() override
    {
        host.captureQtMessages(false);
        qInstallMessageHandler(mBefore);
    }

private:
    QtMessageHandler mBefore;
};

TEST_F(QtMessageLog, IsOffUntilAskedFor)
{
    qWarning("not for the console");
    EXPECT_EQ(Lines(), log());
    EXPECT_EQ((Lines{"not for the console"}), heard);
}

TEST_F(QtMessageLog, WritesMessagesOfEveryKind)
{
    host.captureQtMessages(true);
    qDebug("a %d", 1);
    qInfo("b");
    qWarning("c \u00e9");
    qCritical("d");
    const QtMessageHandler ours = qInstallMessageHandler(hear);
    ours(QtFatalMsg, {}, "e"); // as qFatal() does before it ends the program
    qInstallMessageHandler(ours);
    EXPECT_EQ((Lines{"Qt debug: a 1", "Qt info: b", "Qt warning: c \u00e9", "Qt critical: d", "Qt fatal: e"}),
              log());
}

TEST_F(QtMessageLog, WritesAnEntryForEachLineOfAMessage)
{
    host.captureQtMessages(true);
    qWarning("first\n  second\r\n\nlast\n");
    EXPECT_EQ((Lines{"Qt warning: first", "Qt warning:   second", "Qt warning: ", "Qt warning: last"}),
              log());
    EXPECT_EQ((Lines{"first\n  second\r\n\nlast\n"}), heard);
}

TEST_F(QtMessageLog, WritesAnEmptyMessageToo)
{
    host.captureQtMessages(true);
    qInfo("%s", "");
    qInfo("\n");
    EXPECT_EQ((Lines{"Qt info: ", "Qt info: "}), log());
}

TEST_F(QtMessageLog, CallsTheHandlerBeforeIt)
{
    host.captureQtMessages(true);
    qWarning("for both");
    EXPECT_EQ((Lines{"for both"}), heard);
}

TEST_F(QtMessageLog, EndsWhenAskedTo)
{
    host.captureQtMessages(true);
    host.captureQtMessages(false);
    qWarning("not for the console");
    EXPECT_EQ(Lines(), log());
    EXPECT_EQ((Lines{"not for the console"}), heard);
    EXPECT_EQ(&hear, qInstallMessageHandler(hear));
}

TEST_F(QtMessageLog, WritesEachMessageOnceHoweverOftenAskedFor)
{
    host.captureQtMessages(true);
    host.captureQtMessages(true);
    qInfo("once");
    EXPECT_EQ((Lines{"Qt info: once"}), log());
    EXPECT_EQ((Lines{"once"}), heard);
}

TEST_F(QtMessageLog, WritesMessagesFromSeveralThreads)
{
    constexpr int kThreads = 4;
    constexpr int kMessages = 100;
    host.captureQtMessages(true);
    open();
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([i] {
                for (int message = 0; message < kMessages; ++message) {
                    qInfo("%d %d", i, message);
                }
            });
        }
        type("typing on");
    }
    Lines lines = log();
    Lines expected;
    for (int i = 0; i < kThreads; ++i) {
        for (int message = 0; message < kMessages; ++message) {
            expected.push_back("Qt info: " + std::to_string(i) + " " + std::to_string(message));
        }
    }
    std::sort(lines.begin(), lines.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(expected, lines);
    EXPECT_EQ(expected.size(), heard.size());
    EXPECT_EQ("typing on", input());
}

TEST_F(QtMessageLog, MayBeTurnedOnAndOffWhileThreadsTalk)
{
    std::jthread talker([](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            qInfo("talk");
            std::this_thread::yield();
        }
    });
    const auto logSize = [this] { return console->snapshot().lines().size(); };
    for (int i = 0; i < 20; ++i) {
        const std::size_t before = logSize();
        host.captureQtMessages(true);
        while (logSize() == before) {
            std::this_thread::yield();
        }
        host.captureQtMessages(false);
    }
}

TEST_F(QtMessageLog, WritesToEveryConsoleThatAskedForIt)
{
    const auto other = std::make_shared<Console>();
    {
        ConsoleHost otherHost(other, &window);
        otherHost.captureQtMessages(true);
        host.captureQtMessages(true);
        qInfo("to both");
    }
    qInfo("to one");
    EXPECT_EQ((Lines{"Qt info: to both"}), ConsoleDriver(*other).log());
    EXPECT_EQ((Lines{"Qt info: to both", "Qt info: to one"}), log());
    EXPECT_EQ((Lines{"to both", "to one"}), heard);
}

TEST_F(QtMessageLog, GoesOnCallingTheHandlerBeforeItWhenTheConsoleIsGone)
{
    host.captureQtMessages(true);
    console.reset();
    qInfo("to one");
    EXPECT_EQ((Lines{"to one"}), heard);
}

TEST_F(QtMessageLog, WritesWhatACommandSaysWhileItRuns)
{
    addCommand(*console, U"talk").onExecute = [](const console::ConsoleArgs&, Console&) { qInfo("talking"); };
    host.captureQtMessages(true);
    open();
    type("talk\n");
    EXPECT_EQ((Lines{"talk", "Qt info: talking", ""}), log());
}

TEST_F(QtMessageLog, CallsTheHandlerBeforeItWithAMessageFromUnderTheConsolesLock)
{
    host.captureQtMessages(true);
    {
        const auto locked = partsOf(*console).lock();
        qInfo("not for the console");
    }
    qInfo("for both");
    EXPECT_EQ((Lines{"Qt info: for both"}), log());
    EXPECT_EQ((Lines{"not for the console", "for both"}), heard);
}

QSemaphore heardInThread;
QSemaphore goesOnInThread;
std::atomic<bool> waits = false;

/// Blocks at the first message after `waits` was set.
void hearAndWait(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    hear(type, context, message);
    if (waits.exchange(false)) {
        heardInThread.release();
        goesOnInThread.acquire();
    }
}

TEST_F(QtMessageLog, MayEndWithItsConsoleWhileAnotherThreadsMessageIsHandled)
{
    qInstallMessageHandler(hearAndWait); // the fixture puts the old one back
    auto other = std::make_shared<Console>();
    const std::weak_ptr<Console> watched = other;
    auto otherHost = std::make_unique<ConsoleHost>(other, &window);
    otherHost->captureQtMessages(true);
    waits = true;
    std::jthread talker([] { qInfo("talk"); });
    heardInThread.acquire();
    otherHost.reset();
    other.reset();
    goesOnInThread.release();
    talker.join();
    EXPECT_FALSE(watched.expired()) << "it ended on the thread that talks";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(watched.expired());
}

TEST_F(QtMessageLog, LeavesAHandlerThatWasInstalledLaterInItsPlace)
{
    host.captureQtMessages(true);
    laterNext = qInstallMessageHandler(hearLater);
    qInfo("one");
    host.captureQtMessages(false);
    qInfo("two");
    EXPECT_EQ((Lines{"Qt info: later one"}), log());
    EXPECT_EQ((Lines{"later one", "later two"}), heard);

    // Each of the two handlers now calls the other.
    host.captureQtMessages(true);
    qInfo("three");
    EXPECT_EQ((Lines{"Qt info: later one", "Qt info: three"}), log());
    EXPECT_EQ((Lines{"later one", "later two", "later three"}), heard);
    host.captureQtMessages(false);
    EXPECT_EQ(&hearLater, qInstallMessageHandler(hear));
}

TEST_F(QtMessageLog, CallsALaterHandlerOnceHoweverOftenItWasTurnedOnAndOff)
{
    host.captureQtMessages(true);
    laterNext = qInstallMessageHandler(hearLater);
    host.captureQtMessages(false);
    host.captureQtMessages(true);
    host.captureQtMessages(false);
    qInfo("x");
    EXPECT_EQ((Lines{"later x"}), heard);
    EXPECT_EQ(&hearLater, qInstallMessageHandler(hear));
}

TEST_F(QtMessageLog, GoesOnWhenAskedForAgainAfterALaterHandlerTookItsPlace)
{
    host.captureQtMessages(true);
    qInstallMessageHandler(hearAlone);
    qInfo("one");
    host.captureQtMessages(true);
    qInfo("two");
    EXPECT_EQ((Lines{"Qt info: two"}), log());
    EXPECT_EQ((Lines{"alone one", "alone two"}), heard);
    host.captureQtMessages(false);
    EXPECT_EQ(&hearAlone, qInstallMessageHandler(hear));
}

TEST_F(QtMessageLog, BeginsAgainAfterALaterHandlerTookItsPlace)
{
    host.captureQtMessages(true);
    qInstallMessageHandler(hearAlone);
    host.captureQtMessages(false);
    qInfo("one");
    host.captureQtMessages(true);
    qInfo("two");
    EXPECT_EQ((Lines{"Qt info: two"}), log());
    EXPECT_EQ((Lines{"alone one", "alone two"}), heard);
}

TEST_F(QtMessageLog, GoesOnForAllWhenAnotherConsoleAsksForIt)
{
    const auto other = std::make_shared<Console>();
    ConsoleHost otherHost(other, &window);
    host.captureQtMessages(true);
    qInstallMessageHandler(hearAlone);
    otherHost.captureQtMessages(true);
    qInfo("to both");
    EXPECT_EQ((Lines{"Qt info: to both"}), log());
    EXPECT_EQ((Lines{"Qt info: to both"}), ConsoleDriver(*other).log());
}

TEST_F(QtMessageLog, WritesEachMessageOnceWhenAskedForAgainAboveAHandlerThatCallsIt)
{
    host.captureQtMessages(true);
    laterNext = qInstallMessageHandler(hearLater);
    host.captureQtMessages(true);
    qInfo("once");
    EXPECT_EQ((Lines{"Qt info: once"}), log());
    EXPECT_EQ((Lines{"later once"}), heard);
}

TEST_F(QtMessageLog, CallsTheHandlerThatWasInPlaceWhenItTookOverAnew)
{
    host.captureQtMessages(true);
    host.captureQtMessages(false);
    qInstallMessageHandler(hearAlone);
    host.captureQtMessages(true);
    laterNext = qInstallMessageHandler(hearLater);
    host.captureQtMessages(true);
    qInfo("once");
    EXPECT_EQ((Lines{"alone later once"}), heard);
}

QtMessageHandler latestNext = nullptr;

/// A handler that is installed later still.
void hearLatest(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    latestNext(type, context, "latest " + message);
}

TEST_F(QtMessageLog, CallsEachOfSeveralLaterHandlersOnce)
{
    host.captureQtMessages(true);
    laterNext = qInstallMessageHandler(hearLater);
    host.captureQtMessages(true);
    latestNext = qInstallMessageHandler(hearLatest);
    host.captureQtMessages(true);
    qInfo("one");
    host.captureQtMessages(false);
    qInfo("two");
    EXPECT_EQ((Lines{"Qt info: one"}), log());
    EXPECT_EQ((Lines{"later latest one", "later latest two"}), heard);
    EXPECT_EQ(&hearLatest, qInstallMessageHandler(hear));
}

TEST_F(QtMessageLog, ComesToAnEndWhereTheHandlerBeforeItWasInstalledAgain)
{
    laterNext = qInstallMessageHandler(hearLater);
    host.captureQtMessages(true);
    const QtMessageHandler first = laterNext;
    laterNext = qInstallMessageHandler(hearLater); // which now calls the one that calls it
    qInfo("x");
    EXPECT_EQ((Lines{"Qt info: later x"}), log());
    qInstallMessageHandler(first);
}

TEST_F(QtMessageLog, LetsAnObserverOfTheConsoleLog)
{
    console->setObserver([] { qInfo("seen"); });
    host.captureQtMessages(true);
    qInfo("one");
    console->write(U"two", console::Output);
    console->setObserver({});
    // Qt passes no message to a handler that comes from inside of one.
    EXPECT_EQ((Lines{"Qt info: one", "two", "Qt info: seen"}), log());
}

/// Forks. \return the exit code of the child, which logs `message` after `begin` has been called, or -1 if a signal
/// ended it.
int exitCodeOfAChildThatLogs(const char* message, const std::function<void()>& begin = {})
{
    constexpr unsigned kTooLong = 20; // seconds
    const pid_t child = fork();
    if (child == 0) {
        alarm(kTooLong);
        if (begin) {
            begin();
        }
        qInfo("%s", message);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(QtMessageLog, HoldsUpNoForkedChildThatLogs)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // without a lock
    host.captureQtMessages(true);
    std::jthread talker([](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            qInfo("talk");
        }
    });
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(0, exitCodeOfAChildThatLogs("in the child"));
    }
}

std::atomic<int> heardHere = 0;

TEST_F(QtMessageLog, LeavesMessagesOfAForkedChildToTheHandlerBefore)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++heardHere; });
    host.captureQtMessages(true);
    const int code = exitCodeOfAChildThatLogs("in the child", [this] {
        qInfo("one");
        _exit(heardHere == 1 && log().empty() ? 0 : 1);
    });
    EXPECT_EQ(0, code);
}

TEST_F(QtMessageLog, BeginsInAForkedChildWhenAskedForThere)
{
    host.captureQtMessages(true);
    const int code = exitCodeOfAChildThatLogs("in the child", [this] {
        host.captureQtMessages(true);
        qInfo("one");
        const bool isWritten = log() == Lines{"Qt info: one"};
        host.captureQtMessages(false);
        qInfo("two");
        _exit(isWritten && log().size() == 1 ? 0 : 1);
    });
    EXPECT_EQ(0, code);
    qInfo("three");
    EXPECT_EQ(Lines{"Qt info: three"}, log());
}

TEST_F(QtMessageLog, WritesEachMessageOnceWhenItsHandlerWasPutBackByHand)
{
    host.captureQtMessages(true);
    laterNext = qInstallMessageHandler(hearLater);
    host.captureQtMessages(false);
    qInstallMessageHandler(laterNext);
    host.captureQtMessages(true);
    qInfo("once");
    EXPECT_EQ((Lines{"Qt info: once"}), log());
    EXPECT_EQ((Lines{"once"}), heard);
}

TEST_F(QtMessageLog, WritesEachMessageOnceForSeveralHostsOfOneConsole)
{
    ConsoleHost second(console, &window);
    host.captureQtMessages(true);
    second.captureQtMessages(true);
    qInfo("one");
    second.captureQtMessages(false);
    qInfo("two");
    EXPECT_EQ((Lines{"Qt info: one", "Qt info: two"}), log());
}

TEST_F(QtMessageLog, EndsForTheHostThatEndsAndNotForAnother)
{
    const auto other = std::make_shared<Console>();
    host.captureQtMessages(true);
    {
        ConsoleHost otherHost(other, &window);
        otherHost.captureQtMessages(true);
    }
    qInfo("to one");
    EXPECT_TRUE(ConsoleDriver(*other).log().empty());
    EXPECT_EQ((Lines{"Qt info: to one"}), log());
}

std::string mirrorFile;

/// The last handler that is called before the program ends. Prints what the mirror holds by then.
void showMirror(QtMsgType, const QMessageLogContext&, const QString&)
{
    std::ifstream file(mirrorFile);
    std::cerr << file.rdbuf();
}

[[noreturn]] void dieOfAMessage()
{
    const TemporaryDirectory directory;
    mirrorFile = (directory.path() / "log").string();
    qInstallMessageHandler(showMirror);
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    host.captureQtMessages(true);
    host.mirrorLog(QString::fromStdString(mirrorFile));
    qFatal("the reason");
}

TEST(QtMessageLogDeathTest, KeepsTheMessageThatEndsTheProgramInTheMirror)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the program has threads
    for (int i = 0; i < 5; ++i) {
        EXPECT_DEATH(dieOfAMessage(), "Zephyr Console:\n\nQt fatal: the reason\n");
    }
}

/// Logs at the very end of a program.
class LastMessage
{
public:
    LastMessage() = default;
    ~LastMessage() { qInfo("the last message"); }
    LastMessage(const LastMessage&) = delete;
    LastMessage& operator=(const LastMessage&) = delete;
};

[[noreturn]] void logWhileStaticObjectsAreDestroyed()
{
    static const LastMessage message;
    const TemporaryDirectory directory;
    mirrorFile = (directory.path() / "log").string();
    qInstallMessageHandler(showMirror);
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    host.captureQtMessages(true);
    host.mirrorLog(QString::fromStdString(mirrorFile));
    std::exit(0);
}

TEST(QtMessageLogDeathTest, WritesMessagesWhileStaticObjectsAreDestroyed)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the program has threads
    EXPECT_EXIT(logWhileStaticObjectsAreDestroyed(), testing::ExitedWithCode(0),
                "Zephyr Console:\n\nQt info: the last message\n");
}

} // namespace
} // namespace zephyr::test
