#include "qt/HostedConsole.h"
#include "support/LogLine.h"
#include "support/NamedPipe.h"
#include "support/TemporaryDirectory.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <thread>

namespace zephyr::test {
namespace {

const std::string kStart = "Zephyr Console:\n\n";
constexpr std::chrono::milliseconds kPatience{800}; // less than a mirror waits for a file that hangs

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

    /// The whole log as the mirror should hold it.
    std::string wholeLog() const
    {
        std::string text = kStart;
        for (const LogLine& line : logLines(*console)) {
            text += (line.type == console::Input ? ">> " : "") + line.text + "\n";
        }
        return text;
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
    EXPECT_EQ(kStart + "one\n", directory.read("log"));
    std::thread([this] {
        console->write(U"two", console::Output);
        EXPECT_EQ(kStart + "one\ntwo\n", directory.read("log"));
    }).join();
}

TEST_F(LogMirror, FollowsACommandWhileItRuns)
{
    std::string mirrored;
    addCommand(*console, U"work").onExecute = [&](const console::ConsoleArgs&, Console& running) {
        running.write(U"half done", console::Output);
        mirrored = directory.read("log");
    };
    ASSERT_TRUE(host.mirrorLog(file("log")));
    open();
    type("work\n");
    EXPECT_EQ(kStart + ">> work\nhalf done\n", mirrored);
}

TEST_F(LogMirror, WritesEachLineOnceWhoeverWritesThem)
{
    ASSERT_TRUE(host.mirrorLog(file("log")));
    open();
    std::vector<std::jthread> writers;
    for (int i = 0; i < 3; ++i) {
        writers.emplace_back([this, i] {
            for (int line = 0; line < 300; ++line) {
                const std::string text = "line " + std::to_string(line) + " of " + std::to_string(i);
                console->write(text, console::Output);
                EXPECT_NE(std::string::npos, directory.read("log").find(text + "\n"));
            }
        });
    }
    type("\n\n\n");
    writers.clear();
    EXPECT_EQ(wholeLog(), directory.read("log"));
    host.mirrorLog({});
    EXPECT_EQ(wholeLog(), directory.read("log"));
}

TEST_F(LogMirror, HoldsWhatOtherObserversWrite)
{
    console->addObserver([this] { console->write(U"an older one", console::Output); });
    ASSERT_TRUE(host.mirrorLog(file("log")));
    console->addObserver([this] { console->write(U"a newer one", console::Output); });
    console->write(U"one", console::Output);
    EXPECT_EQ(wholeLog(), directory.read("log"));
    EXPECT_GE(log().size(), 3U);
}

TEST_F(LogMirror, LeavesTheProgramsOwnObserverAlone)
{
    int calls = 0;
    console->setObserver([&] { ++calls; });
    ASSERT_TRUE(host.mirrorLog(file("log")));
    console->write(U"one", console::Output);
    host.mirrorLog({});
    console->write(U"two", console::Output);
    EXPECT_EQ(2, calls);
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

TEST_F(LogMirror, BeginsTheSameFileAnew)
{
    ASSERT_TRUE(host.mirrorLog(file("log")));
    console->write(U"one", console::Output);
    ASSERT_TRUE(host.mirrorLog(file("log")));
    console->write(U"two", console::Output);
    EXPECT_EQ(kStart + "one\ntwo\n", directory.read("log"));
}

TEST_F(LogMirror, ReportsAWriteErrorOnce)
{
    EXPECT_FALSE(host.mirrorLog("/dev/full"));
    const std::vector<std::string> reported{
        "The log is no longer written to '/dev/full': No space left on device"};
    EXPECT_EQ(reported, log());
    open();
    type("help\n");
    console->newline();
    ASSERT_TRUE(host.mirrorLog(file("log"))) << "another file may be tried";
    EXPECT_EQ(reported, linesStarting("The log is no longer written"));
    EXPECT_NE(std::string::npos, directory.read("log").find("No space left on device"));
}

TEST_F(LogMirror, MayBeEndedByAnObserverThatHearsOfAWriteError)
{
    const NamedPipe pipe(directory.path() / "pipe");
    auto reader = std::make_optional<PipeReader>(pipe);
    ASSERT_TRUE(host.mirrorLog(file("pipe")));
    console->addObserver([this] { host.mirrorLog({}); });
    reader.reset();
    console->write(U"one", console::Output);
    EXPECT_EQ(1U, linesStarting("The log is no longer written").size());
}

TEST_F(LogMirror, KeepsNoLogInAPipeWithoutAReader)
{
    const NamedPipe pipe(directory.path() / "pipe");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(host.mirrorLog(file("pipe")));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kPatience) << "it waits for none";
    EXPECT_TRUE(log().empty());
}

TEST_F(LogMirror, EndsWithOneLineWhenTheReaderOfAPipeGoesAway)
{
    const NamedPipe pipe(directory.path() / "pipe");
    auto reader = std::make_optional<PipeReader>(pipe);
    ASSERT_TRUE(host.mirrorLog(file("pipe")));
    console->write(U"one", console::Output);
    EXPECT_EQ(kStart + "one\n", reader->read());
    reader.reset();
    console->write(U"two", console::Output);
    console->write(U"three", console::Output);
    const std::string report =
        "The log is no longer written to '" + file("pipe").toStdString() + "': Broken pipe";
    EXPECT_EQ((std::vector<std::string>{"one", "two", report, "three"}), log());
}

TEST_F(LogMirror, WaitsForNoReaderOfAPipeThatStopsReading)
{
    const NamedPipe pipe(directory.path() / "pipe");
    PipeReader reader(pipe);
    ASSERT_TRUE(host.mirrorLog(file("pipe")));
    const std::string line(1000, 'x');
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 1000; ++i) { // more than a pipe holds
        console->write(std::to_string(i) + line, console::Output);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
    std::string read;
    while (read.size() < wholeLog().size()) {
        read += reader.read();
    }
    EXPECT_EQ(wholeLog(), read);
    console->write(U"last", console::Output);
    EXPECT_EQ("last\n", reader.read()) << "it is as good as any other again";
}

TEST_F(LogMirror, EndsWhileNobodyReadsAPipe)
{
    const NamedPipe pipe(directory.path() / "pipe");
    const PipeReader reader(pipe);
    ASSERT_TRUE(host.mirrorLog(file("pipe")));
    console->write(std::string(1000000, 'x'), console::Output);
    const auto begin = std::chrono::steady_clock::now();
    host.mirrorLog({});
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kPatience);
    EXPECT_EQ(1U, log().size()) << "there is no word of it in the log";
}

/// Waits for a child process. \return its exit code, or -1 if a signal ended it.
int exitCodeOf(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(LogMirror, LeavesTheLinesOfAForkedChildOut)
{
    constexpr unsigned kTooLong = 20; // seconds
    ASSERT_TRUE(host.mirrorLog(file("log")));
    console->write(U"before", console::Output);
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        alarm(kTooLong);
        console->write(U"in the child", console::Output);
        host.mirrorLog({});
        _exit(0);
    }
    EXPECT_EQ(0, exitCodeOf(child));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kPatience) << "the child waits for no thread";
    console->write(U"after", console::Output);
    EXPECT_EQ(kStart + "before\nafter\n", directory.read("log"));
}

TEST_F(LogMirror, WritesAFileOfItsOwnInAForkedChild)
{
    constexpr unsigned kTooLong = 20; // seconds
    ASSERT_TRUE(host.mirrorLog(file("log")));
    const pid_t child = fork();
    if (child == 0) {
        alarm(kTooLong);
        const bool isMirrored = host.mirrorLog(file("child"));
        console->write(U"in the child", console::Output);
        _exit(isMirrored ? 0 : 1);
    }
    EXPECT_EQ(0, exitCodeOf(child));
    EXPECT_EQ(kStart, directory.read("log"));
    EXPECT_EQ(kStart + "in the child\n", directory.read("child"));
}

/// How a program ends.
using End = std::function<void()>;

/// Runs the command "end", which writes a line and then ends the program in its way.
[[noreturn]] void endIn(const std::filesystem::path& mirror, const End& end)
{
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    host.mirrorLog(QString::fromStdString(mirror.string()));
    addCommand(*console, U"end").onExecute = [&](const console::ConsoleArgs&, Console& running) {
        running.write(U"the last words", console::Output);
        end();
    };
    console->open();
    for (const char c : std::string("end")) {
        sendKey(window, QEvent::KeyPress, Qt::Key_unknown, {}, QString(QLatin1Char(c)));
    }
    sendKey(window, QEvent::KeyPress, Qt::Key_Return, {}, "\r");
    std::_Exit(1);
}

const char* const kMirrorVariable = "ZEPHYR_TEST_MIRROR";

/// A program that ends, and the file that it mirrors its log in. The program runs the test's code from the start, as
/// Google Test has it where there are threads, and so gets the file's name from the environment.
class LogMirrorDeathTest : public testing::Test
{
protected:
    LogMirrorDeathTest()
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        setenv(kMirrorVariable, (directory.path() / "log").c_str(), 0);
    }

    ~LogMirrorDeathTest() override { unsetenv(kMirrorVariable); }

    static std::filesystem::path mirror() { return std::getenv(kMirrorVariable); }

    void expectLastWords() const { EXPECT_EQ(kStart + ">> end\nthe last words\n", directory.read("log")); }

    TemporaryDirectory directory;
};

TEST_F(LogMirrorDeathTest, KeepsTheLogOfAProgramThatAborts)
{
    EXPECT_EXIT(endIn(mirror(), [] { std::abort(); }), testing::KilledBySignal(SIGABRT), "");
    expectLastWords();
}

TEST_F(LogMirrorDeathTest, KeepsTheLogOfAProgramThatExits)
{
    EXPECT_EXIT(endIn(mirror(), [] { std::exit(3); }), testing::ExitedWithCode(3), "");
    expectLastWords();
}

TEST_F(LogMirrorDeathTest, KeepsTheLogOfAProgramThatIsKilled)
{
    EXPECT_EXIT(endIn(mirror(), [] { std::raise(SIGKILL); }), testing::KilledBySignal(SIGKILL), "");
    expectLastWords();
}

/// Ends the program in the program's own observer.
[[noreturn]] void abortInObserver(const std::filesystem::path& mirror)
{
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    console->setObserver([] { std::abort(); });
    host.mirrorLog(QString::fromStdString(mirror.string()));
    console->write(U"the last words", console::Output);
    std::_Exit(1);
}

TEST_F(LogMirrorDeathTest, KeepsTheLineAtWhichTheProgramsOwnObserverEndsIt)
{
    EXPECT_EXIT(abortInObserver(mirror()), testing::KilledBySignal(SIGABRT), "");
    EXPECT_EQ(kStart + "the last words\n", directory.read("log"));
}

/// Fills a file up to the size that the program may give one, and says what the log says of it.
[[noreturn]] void outgrowTheLimit(const std::filesystem::path& mirror)
{
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    const rlimit limit{4096, 4096};
    setrlimit(RLIMIT_FSIZE, &limit);
    host.mirrorLog(QString::fromStdString(mirror.string()));
    console->write(std::string(5000, 'x'), console::Output);
    std::cerr << ConsoleDriver(*console).log().back() << std::endl;
    std::_Exit(0);
}

TEST_F(LogMirrorDeathTest, LetsAProgramGoOnThatMayNotWriteLargerFiles)
{
    EXPECT_EXIT(outgrowTheLimit(mirror()), testing::ExitedWithCode(0),
                "The log is no longer written to '.*/log': File too large");
}

} // namespace
} // namespace zephyr::test
