#include "qt/HostedConsole.h"
#include "support/LogLine.h"
#include "support/TemporaryDirectory.h"

#include <chrono>
#include <csignal>
#include <thread>

namespace zephyr::test {
namespace {

const std::string kStart = "Zephyr Console:\n\n";

/// Waits until the file `name` holds `text`, without running an event loop.
bool waitForFile(const TemporaryDirectory& directory, const std::string& name, const std::string& text)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (directory.read(name) != text) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

class LogMirror : public HostedConsole
{
protected:
    QString file(const std::string& name) const
    {
        return QString::fromStdString((directory.path() / name).string());
    }

    std::vector<std::string> linesStarting(const std::string& start) const
    {
        std::vector<std::string> found;
        for (const std::string& line : log()) {
            if (line.starts_with(start)) {
                found.push_back(line);
            }
        }
        return found;
    }

    TemporaryDirectory directory;
};

TEST_F(LogMirror, IsOffUntilAskedFor)
{
    open();
    type("help\n");
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST_F(LogMirror, WritesTheLogFromItsBeginning)
{
    console->write(U"before \u6f22", console::Output);
    ASSERT_TRUE(host.mirrorLog(file("log")));
    EXPECT_EQ(kStart + "before \u6f22\n", directory.read("log"));
}

TEST_F(LogMirror, ReplacesTheFile)
{
    directory.write("log", "something long that was there before\n");
    ASSERT_TRUE(host.mirrorLog(file("log")));
    EXPECT_EQ(kStart, directory.read("log"));
}

TEST_F(LogMirror, HoldsWhatAKeyWroteWhenTheKeyIsHandled)
{
    addCommand(*console, U"say").onExecute = [](const console::ConsoleArgs&, Console& running) {
        running.writeIndented(U"said", 4);
    };
    ASSERT_TRUE(host.mirrorLog(file("log")));
    open();
    type("say\n");
    EXPECT_EQ(kStart + ">> say\n    said\n\n", directory.read("log"));
}

TEST_F(LogMirror, FollowsLinesThatNoKeyWrote)
{
    ASSERT_TRUE(host.mirrorLog(file("log")));
    console->write(U"one", console::Output);
    EXPECT_TRUE(waitForFile(directory, "log", kStart + "one\n"));
    std::thread([this] { console->write(U"two", console::Output); }).join();
    EXPECT_TRUE(waitForFile(directory, "log", kStart + "one\ntwo\n"));
}

TEST_F(LogMirror, FollowsACommandWhileItRuns)
{
    bool isMirrored = false;
    addCommand(*console, U"work").onExecute = [&](const console::ConsoleArgs&, Console& running) {
        running.write(U"half done", console::Output);
        isMirrored = waitForFile(directory, "log", kStart + ">> work\nhalf done\n");
    };
    ASSERT_TRUE(host.mirrorLog(file("log")));
    open();
    type("work\n");
    EXPECT_TRUE(isMirrored);
}

TEST_F(LogMirror, WritesEachLineOnceWhoeverWritesThem)
{
    ASSERT_TRUE(host.mirrorLog(file("log")));
    open();
    std::vector<std::jthread> writers;
    for (int i = 0; i < 3; ++i) {
        writers.emplace_back([this] {
            for (int line = 0; line < 300; ++line) {
                console->write(U"a line", console::Output);
            }
        });
    }
    type("\n\n\n");
    writers.clear();
    host.mirrorLog({});
    std::string expected = kStart;
    for (const LogLine& line : logLines(*console)) {
        expected += (line.type == console::Input ? ">> " : "") + line.text + "\n";
    }
    EXPECT_EQ(expected, directory.read("log"));
}

TEST_F(LogMirror, EndsWhenAskedTo)
{
    ASSERT_TRUE(host.mirrorLog(file("log")));
    console->write(U"last", console::Output);
    EXPECT_FALSE(host.mirrorLog({}));
    EXPECT_EQ(kStart + "last\n", directory.read("log"));
    open();
    type("help\n");
    EXPECT_EQ(kStart + "last\n", directory.read("log"));
}

TEST_F(LogMirror, GoesOnInAnotherFile)
{
    ASSERT_TRUE(host.mirrorLog(file("first")));
    ASSERT_TRUE(host.mirrorLog(file("second")));
    open();
    type("\n");
    EXPECT_EQ(kStart, directory.read("first"));
    EXPECT_EQ(kStart + ">> \n", directory.read("second"));
}

TEST_F(LogMirror, SaysWhenAFileCannotBeOpened)
{
    EXPECT_FALSE(host.mirrorLog(file("")));
    EXPECT_FALSE(host.mirrorLog(file("no/such/directory/log")));
    EXPECT_TRUE(log().empty());
}

TEST_F(LogMirror, ReportsAWriteErrorOnce)
{
    host.mirrorLog("/dev/full");
    open();
    type("help\n");
    console->newline();
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return !linesStarting("The log is no longer written").empty(); }, 60000));
    type("help\n");
    ASSERT_TRUE(host.mirrorLog(file("log"))) << "another file may be tried";
    EXPECT_EQ(
        (std::vector<std::string>{"The log is no longer written to '/dev/full': No space left on device"}),
        linesStarting("The log is no longer written"));
    EXPECT_NE(std::string::npos, directory.read("log").find("No space left on device"));
}

/// Runs a command that writes a line, and kills the program as soon as the line is in the file.
[[noreturn]] void writeAndDie(const TemporaryDirectory& directory)
{
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    host.mirrorLog(QString::fromStdString((directory.path() / "log").string()));
    addCommand(*console, U"crash").onExecute = [&](const console::ConsoleArgs&, Console& running) {
        running.write(U"the last words", console::Output);
        waitForFile(directory, "log", kStart + ">> crash\nthe last words\n");
        std::raise(SIGKILL);
    };
    console->open();
    for (const char c : std::string("crash")) {
        sendKey(window, QEvent::KeyPress, Qt::Key_unknown, {}, QString(QLatin1Char(c)));
    }
    sendKey(window, QEvent::KeyPress, Qt::Key_Return, {}, "\r");
    std::_Exit(1);
}

TEST(LogMirrorDeathTest, KeepsTheLogOfAProgramThatDies)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the program has threads
    const TemporaryDirectory directory;
    EXPECT_EXIT(writeAndDie(directory), testing::KilledBySignal(SIGKILL), "");
}

} // namespace
} // namespace zephyr::test
