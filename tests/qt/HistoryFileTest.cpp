#include "qt/HostedConsole.h"
#include "support/TemporaryDirectory.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::test {
namespace {

using Texts = std::vector<std::string>;

/// A window with a console, as another program has it.
struct Program
{
    Program() { host->setOpen(true); }

    void type(const std::string& line) const
    {
        for (const char32_t c : StringUtil::toU32String(line)) {
            press(0, QString::fromUcs4(&c, 1));
        }
        press(Qt::Key_Return, "\r");
    }

    void press(int key, const QString& text = {}) const
    {
        sendKey(*window, QEvent::KeyPress, key, {}, text);
        sendKey(*window, QEvent::KeyRelease, key, {}, text);
    }

    Texts history() const
    {
        Texts lines;
        for (const std::u32string& line : console->history()) {
            lines.push_back(StringUtil::toString(line));
        }
        return lines;
    }

    Texts log() const { return ConsoleDriver(*console).log(); }

    std::shared_ptr<Console> console = std::make_shared<Console>();
    std::unique_ptr<QWindow> window = std::make_unique<QWindow>();
    std::optional<ConsoleHost> host{std::in_place, console, window.get()};
};

class HistoryFile : public testing::Test
{
protected:
    QString file(const std::string& name = "history") const
    {
        return QString::fromStdString((directory.path() / name).string());
    }

    /// Waits until the file holds `text`. \return what it holds.
    std::string waitForFile(const std::string& text) const
    {
        const auto isWritten = [&] { return directory.has("history") && directory.read("history") == text; };
        static_cast<void>(QTest::qWaitFor(isWritten, kTooLong));
        return directory.has("history") ? directory.read("history") : "no file";
    }

    static constexpr int kTooLong = 30000; // ms

    TemporaryDirectory directory;
    Program program;
};

TEST_F(HistoryFile, IsOffUntilAskedFor)
{
    program.type("help");
    program.host.reset();
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST_F(HistoryFile, GetsEachLineAsItIsTyped)
{
    EXPECT_TRUE(program.host->setHistoryFile(file()));
    EXPECT_FALSE(directory.has("history")) << "nothing is typed";
    program.type("help");
    EXPECT_EQ("help\n", waitForFile("help\n"));
    program.type(" say \"a  b\" \xe6\xbc\xa2\\ ");
    const std::string both = "help\n say \"a  b\" \xe6\xbc\xa2\\\\ \n";
    EXPECT_EQ(both, waitForFile(both));
    EXPECT_EQ((Texts{"help", " say \"a  b\" \xe6\xbc\xa2\\ "}), program.history());
}

TEST_F(HistoryFile, BringsTheLinesBack)
{
    program.host->setHistoryFile(file());
    program.type("one");
    program.type("two");
    program.host.reset();

    Program next;
    EXPECT_TRUE(next.host->setHistoryFile(file()));
    EXPECT_EQ((Texts{"one", "two"}), next.history());
    next.press(Qt::Key_Up);
    EXPECT_EQ(U"two", next.console->activeInput());
    EXPECT_EQ("one\ntwo\n", directory.read("history")) << "recalled lines aren't written again";
}

TEST_F(HistoryFile, AddsItsLinesBehindWhatWasTyped)
{
    directory.write("history", "one\nzero\ntwo\none\n");
    program.type("zero");
    program.host->setHistoryFile(file());
    EXPECT_EQ((Texts{"zero", "one", "two", "one"}), program.history()) << "but for what is there already";
    program.type("three");
    EXPECT_EQ("one\nzero\ntwo\none\nthree\n", waitForFile("one\nzero\ntwo\none\nthree\n"));
}

TEST_F(HistoryFile, LeavesOutWhatIsNotRecorded)
{
    program.host->setHistoryFile(file());
    program.console->addToHistory(U"added by the program");
    program.console->execute(U"run by the program");
    program.type("");
    program.type("alias greet help");
    program.type("greet");
    program.type("end");
    EXPECT_EQ("alias greet help\nend\n", waitForFile("alias greet help\nend\n"));
}

TEST_F(HistoryFile, LeavesOutWhatACommandAddsToTheHistory)
{
    addCommand(*program.console, U"add").onExecute = [](const console::ConsoleArgs&, Console& running) {
        running.addToHistory(U"added");
    };
    program.host->setHistoryFile(file());
    program.type("alias a add");
    program.type("a");
    program.type("add");
    EXPECT_EQ("alias a add\nadd\n", waitForFile("alias a add\nadd\n"));
    EXPECT_EQ((Texts{"alias a add", "added", "add", "added"}), program.history());
}

TEST_F(HistoryFile, HasNoLineTwiceInARow)
{
    program.host->setHistoryFile(file());
    for (const char* const line : {"one", "one", "two", "one"}) {
        program.type(line);
    }
    EXPECT_EQ("one\ntwo\none\n", waitForFile("one\ntwo\none\n"));
}

TEST_F(HistoryFile, KeepsTheNewestLines)
{
    constexpr int kMost = 2;
    program.host->setHistoryFile(file(), kMost);
    for (const char* const line : {"one", "two", "three"}) {
        program.type(line);
    }
    EXPECT_EQ("two\nthree\n", waitForFile("two\nthree\n"));
}

TEST_F(HistoryFile, KeepsAThousandLinesUnlessAskedOtherwise)
{
    EXPECT_EQ(1000, ConsoleHost::kDefaultHistoryLines);
    std::string text;
    for (int i = 0; i < 1001; ++i) {
        text += std::to_string(i) + "\n";
    }
    directory.write("history", text);
    program.host->setHistoryFile(file());
    EXPECT_EQ(1000U, program.history().size());
    EXPECT_EQ("1", program.history().front());
}

TEST_F(HistoryFile, IsShared)
{
    Program other;
    program.host->setHistoryFile(file());
    other.host->setHistoryFile(file());
    Texts expected;
    for (int i = 0; i < 50; ++i) {
        program.type("a" + std::to_string(i));
        other.type("b" + std::to_string(i));
        expected.push_back("a" + std::to_string(i));
        expected.push_back("b" + std::to_string(i));
    }
    program.host.reset();
    other.host.reset();
    Program last;
    ASSERT_TRUE(last.host->setHistoryFile(file()));
    Texts kept = last.history();
    std::ranges::sort(kept);
    std::ranges::sort(expected);
    EXPECT_EQ(expected, kept);
}

TEST_F(HistoryFile, EndsWhenAskedTo)
{
    program.host->setHistoryFile(file());
    program.type("one");
    EXPECT_FALSE(program.host->setHistoryFile({}));
    EXPECT_EQ("one\n", directory.read("history")) << "what was typed is written at the end";
    program.type("two");
    program.host.reset();
    EXPECT_EQ("one\n", directory.read("history"));
}

TEST_F(HistoryFile, IsReplacedByAnother)
{
    directory.write("second", "two\n");
    program.host->setHistoryFile(file("history"));
    program.type("one");
    EXPECT_TRUE(program.host->setHistoryFile(file("second")));
    program.type("three");
    program.host.reset();
    EXPECT_EQ("one\n", directory.read("history"));
    EXPECT_EQ("two\nthree\n", directory.read("second"));
    EXPECT_EQ((Texts{"one", "two", "three"}), program.history());
}

TEST_F(HistoryFile, AddsItsLinesOnceToAConsoleThatGetsAnotherHost)
{
    directory.write("history", "one\n");
    program.host->setHistoryFile(file());
    program.type("two");
    program.host.emplace(program.console, program.window.get());
    EXPECT_TRUE(program.host->setHistoryFile(file()));
    EXPECT_EQ((Texts{"one", "two"}), program.history());
}

TEST_F(HistoryFile, AddsItsLinesOnceThoughItIsSetAgain)
{
    directory.write("history", "one\n");
    program.host->setHistoryFile(file());
    program.host->setHistoryFile({});
    EXPECT_TRUE(program.host->setHistoryFile(file(), 1));
    EXPECT_EQ(Texts{"one"}, program.history());
    program.type("two");
    EXPECT_EQ("two\n", waitForFile("two\n"));
}

TEST_F(HistoryFile, GetsTheLineThatEndsTheProgram)
{
    addCommand(*program.console, U"quit").onExecute = [this](const console::ConsoleArgs&, Console&) {
        program.host.reset();
    };
    program.host->setHistoryFile(file());
    program.type("quit");
    EXPECT_FALSE(program.host.has_value());
    EXPECT_EQ("quit\n", directory.read("history"));
}

TEST_F(HistoryFile, SaysOnceThatItCanNotBeUsed)
{
    std::filesystem::create_directory(directory.path() / "history");
    EXPECT_FALSE(program.host->setHistoryFile(file()));
    const std::string report =
        "The history can't be kept in '" + file().toStdString() + "': It is no ordinary file";
    EXPECT_EQ(Texts{report}, program.log());
    program.type("one");
    program.type("two");
    EXPECT_EQ((Texts{"one", "two"}), program.history());
    program.host.reset();
    EXPECT_EQ(1, std::ranges::count(program.log(), report));
}

TEST_F(HistoryFile, SaysOnceThatItCanNotBeWrittenAndTriesAgain)
{
    EXPECT_TRUE(program.host->setHistoryFile(file("folder/history")));
    const auto reports = [&] {
        const std::string report = "The history can't be kept in '" + file("folder/history").toStdString() +
                                   "': Its folder doesn't exist";
        return std::ranges::count(program.log(), report);
    };
    program.type("one");
    EXPECT_TRUE(QTest::qWaitFor([&] { return reports() == 1; }, kTooLong));
    program.type("two");
    std::filesystem::create_directory(directory.path() / "folder");
    program.host.reset();
    EXPECT_EQ("one\ntwo\n", directory.read("folder/history"));
    EXPECT_EQ(1, reports());
}

TEST_F(HistoryFile, SaysAtItsEndThatLinesWereLost)
{
    EXPECT_TRUE(program.host->setHistoryFile(file("folder/history")));
    program.type("one");
    const std::size_t before = program.log().size();
    program.host.reset();
    EXPECT_EQ(before + 1, program.log().size());
}

TEST_F(HistoryFile, MayBeEndedByAnObserverThatHearsOfAnError)
{
    std::filesystem::create_directory(directory.path() / "history");
    program.console->addObserver([this] { program.host.reset(); });
    EXPECT_FALSE(program.host->setHistoryFile(file()));
    EXPECT_FALSE(program.host.has_value());
}

TEST_F(HistoryFile, OutlivesItsConsole)
{
    program.host->setHistoryFile(file());
    program.type("one");
    program.console.reset();
    program.host->setHistoryFile({});
    EXPECT_EQ("one\n", directory.read("history"));
}

TEST_F(HistoryFile, IsLeftAloneByAForkedChild)
{
    constexpr unsigned kTimeLimit = 20; // seconds
    program.host->setHistoryFile(file());
    const pid_t child = fork();
    if (child == 0) {
        alarm(kTimeLimit);
        program.type("in the child");
        program.host->setHistoryFile({});
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_FALSE(directory.has("history"));
    program.type("in the parent");
    EXPECT_EQ("in the parent\n", waitForFile("in the parent\n"));
}

} // namespace
} // namespace zephyr::test
