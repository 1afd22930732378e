#include "remote/TmuxTerminal.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include <sys/stat.h>

namespace zephyr::console::remote {
namespace {

using test::TemporaryDirectory;
using test::TmuxTerminal;

const std::string kStart = "Zephyr Console:\n\n>>";

/// A shell in a real terminal, whose prompt is "$", and a program with a ConsoleTerminal, which is called $P there.
class ConsoleTerminalTest : public ::testing::Test
{
protected:
    ConsoleTerminalTest()
    {
        EXPECT_EQ(0, ::mkfifo(path("log").c_str(), S_IRUSR | S_IWUSR));
        EXPECT_TRUE(mTerminal.endsWith("$"));
        mTerminal.enter("stty -g > $HOME/before; clear");
        EXPECT_TRUE(mTerminal.endsWith("$") && screenIs("$"));
    }

    ~ConsoleTerminalTest() override { mLog.close(); }

    std::string path(const char* name) const { return (mFolder.path() / name).string(); }

    bool screenIs(const std::string& text) const
    {
        return waitUntil([&] { return mTerminal.screen() == text; });
    }

    bool shows(const std::string& text) const
    {
        return waitUntil([&] { return mTerminal.screen().find(text) != std::string::npos; });
    }

    /// Starts the program. \param arguments behind its name. \param settings such as `NO_COLOR=1`.
    void start(const QString& arguments = {}, const QString& settings = {})
    {
        mTerminal.enter("clear; " + settings + " $P " + arguments);
        ASSERT_TRUE(mTerminal.endsWith(kStart)) << mTerminal.screen();
    }

    /// Has the program write what log() is given, on a thread of its own.
    void listen()
    {
        mTerminal.enter("listen " + QString::fromStdString(path("log")));
        mLog.open(path("log"));
        ASSERT_TRUE(mTerminal.endsWith("log\n\n>>")) << mTerminal.screen();
    }

    void log(const std::string& text) { mLog << text << std::endl; }

    /// Whether the shell finds the terminal as it was before the program.
    testing::AssertionResult isAsBefore()
    {
        mTerminal.enter("stty -g | cmp - $HOME/before && echo as before");
        return mTerminal.endsWith("\nas before\n$") ? testing::AssertionSuccess()
                                                    : testing::AssertionFailure() << mTerminal.screen();
    }

    pid_t program()
    {
        std::filesystem::remove(path("pid"));
        mTerminal.press("C-z");
        EXPECT_TRUE(mTerminal.endsWith("\n$"));
        std::filesystem::remove(path("pid")); // of the program before
        mTerminal.enter("jobs -p > $HOME/pid; fg");
        pid_t id = 0;
        EXPECT_TRUE(waitUntil([&] { return static_cast<bool>(std::ifstream(path("pid")) >> id); }));
        EXPECT_TRUE(mTerminal.endsWith(">>"));
        return id;
    }

    const TemporaryDirectory mFolder;
    const TmuxTerminal mTerminal{
        QString("env HOME=%1 P=%2 TERMINAL_PROGRAM_HISTORY=%1/state/history PS1='$ ' ENV= sh -i")
            .arg(QString::fromStdString(mFolder.path().string()), TERMINAL_PROGRAM)};
    std::ofstream mLog;
};

TEST_F(ConsoleTerminalTest, ShowsTheLogAndRunsALine)
{
    start();
    mTerminal.enter("say hello");
    EXPECT_TRUE(mTerminal.endsWith(kStart + " say hello\nsaid hello\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, PrintsTheLogAboveTheLineThatIsTyped)
{
    start();
    listen();
    mTerminal.type("say helo");
    mTerminal.press("Left");
    ASSERT_TRUE(shows(">> say helo"));
    log("from elsewhere");
    EXPECT_TRUE(mTerminal.endsWith("\nfrom elsewhere\n>> say helo")) << mTerminal.screen();
    mTerminal.enter("l");
    EXPECT_TRUE(mTerminal.endsWith("\nfrom elsewhere\n>> say hello\nsaid hello\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, PrintsTheLogAboveALineOfSeveralRows)
{
    start();
    listen();
    const std::string wide = QString("\u98a8").repeated(40).toStdString(); // 2 columns each
    mTerminal.type(QString::fromStdString("say " + wide + " x"));
    // ">> say " leaves 73 columns, in which the 37th has no room.
    const std::string typed =
        ">> say " + wide.substr(0, std::size_t{3} * 36) + "\n" + wide.substr(std::size_t{3} * 36) + " x";
    ASSERT_TRUE(mTerminal.endsWith(typed)) << mTerminal.screen();
    log("one");
    EXPECT_TRUE(mTerminal.endsWith("\n\none\n" + typed)) << mTerminal.screen();
    mTerminal.press("Home");
    log("two");
    EXPECT_TRUE(mTerminal.endsWith("\n\none\ntwo\n" + typed)) << mTerminal.screen();
    mTerminal.press("End");
    mTerminal.enter("y");
    EXPECT_TRUE(mTerminal.endsWith("\nsaid xy\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, PrintsTheLogAboveALineThatFillsItsRow)
{
    start();
    listen();
    const std::string full = ">> say " + std::string(73, 'x');
    mTerminal.type(QString::fromStdString(full.substr(3)));
    ASSERT_TRUE(mTerminal.endsWith(full));
    log("one");
    EXPECT_TRUE(mTerminal.endsWith("\n\none\n" + full)) << mTerminal.screen();
    mTerminal.type("y");
    EXPECT_TRUE(mTerminal.endsWith("\n\none\n" + full + "\ny")) << mTerminal.screen();
    log("two");
    EXPECT_TRUE(mTerminal.endsWith("\n\none\ntwo\n" + full + "\ny")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, KeepsThePromptBelowAFlood)
{
    start();
    mTerminal.enter("flood");
    mTerminal.type("half");
    EXPECT_TRUE(mTerminal.endsWith("flood 9998\nflood 9999\n>> half")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, ShowsControlCharactersOfTheLogWithoutEffect)
{
    start();
    listen();
    log("a\x1b[2Jb\rc\u009bd\te");
    EXPECT_TRUE(mTerminal.endsWith("\n\na^[[2Jb^Mc\ufffdd    e\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, ShowsWhatACommandWritesBeforeItHasEnded)
{
    start();
    mTerminal.enter("wait /nowhere");
    EXPECT_TRUE(mTerminal.endsWith(">> wait /nowhere\nwaiting for /nowhere")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, CompletesWhatCandidatesHaveInCommon)
{
    start();
    mTerminal.type("win");
    mTerminal.press("Tab");
    ASSERT_TRUE(mTerminal.endsWith(">> wind"));
    mTerminal.type("se"); // behind the blank
    mTerminal.press("Tab");
    ASSERT_TRUE(mTerminal.endsWith(">> wind set")) << mTerminal.screen();
    mTerminal.press("Tab");
    ASSERT_TRUE(mTerminal.endsWith("\nset     settle\n>> wind set")) << mTerminal.screen();
    mTerminal.type("t");
    mTerminal.press("Tab");
    mTerminal.type("x");
    EXPECT_TRUE(mTerminal.endsWith(">> wind settle x")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, ListsSomeOfManyCandidates)
{
    start();
    mTerminal.type("many offer-1");
    mTerminal.press("Tab");
    ASSERT_TRUE(mTerminal.endsWith(" more\n>> many offer-1")) << mTerminal.screen();
    EXPECT_NE(std::string::npos, mTerminal.screen().find("offer-1000  offer-10")) << mTerminal.screen();
    EXPECT_NE(std::string::npos, mTerminal.screen().find("... and 928 more")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, ListsCandidatesWithControlCharactersWithoutEffectAndTakesNone)
{
    start();
    mTerminal.type("open e");
    mTerminal.press("Tab");
    ASSERT_TRUE(mTerminal.endsWith(">> open evil")) << mTerminal.screen();
    mTerminal.press("Tab");
    const std::string listed = "\nevil^[]2;owned^G  evil^Jquit^I\ufffd\n>> open evil";
    ASSERT_TRUE(mTerminal.endsWith(listed)) << mTerminal.screen();
    mTerminal.press("C-c");
    mTerminal.type("open t");
    mTerminal.press("Tab");
    EXPECT_TRUE(mTerminal.endsWith("\ntrap^Jsay trapped\n>> open t")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, CompletesNothingWhereThereIsNoCandidate)
{
    start();
    mTerminal.type("nothing ");
    mTerminal.press("Tab");
    mTerminal.type("x");
    EXPECT_TRUE(mTerminal.endsWith(kStart + " nothing x"));
}

TEST_F(ConsoleTerminalTest, TakesTheLineAwayOnCtrlC)
{
    start();
    mTerminal.type("say hello");
    mTerminal.press("C-c");
    EXPECT_TRUE(mTerminal.endsWith(">> say hello^C\n>>")) << mTerminal.screen();
    mTerminal.press("C-c");
    EXPECT_TRUE(mTerminal.endsWith(">> say hello^C\n>> ^C\n>>")) << mTerminal.screen();
    mTerminal.enter("say more");
    EXPECT_TRUE(mTerminal.endsWith(">> say hello^C\n>> ^C\n>> say more\nsaid more\n\n>>"))
        << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, TakesALineOfSeveralRowsAwayFromItsMiddle)
{
    start();
    const std::string text(100, 'x');
    mTerminal.type(QString::fromStdString(text));
    mTerminal.press("Home");
    mTerminal.press("C-c");
    EXPECT_TRUE(mTerminal.endsWith(">> " + text.substr(0, 77) + "\n" + text.substr(77) + "^C\n>>"))
        << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, GoesOnAfterCtrlSWhileALineIsTyped)
{
    start();
    listen();
    mTerminal.type("say hello");
    mTerminal.press("C-s");
    log("meanwhile");
    ASSERT_TRUE(mTerminal.endsWith("\nmeanwhile\n>> say hello")) << mTerminal.screen();
    mTerminal.press("C-d"); // deletes, as the line isn't empty
    mTerminal.press("Enter");
    ASSERT_TRUE(mTerminal.endsWith("\nsaid hello\n\n>>")) << mTerminal.screen();
    mTerminal.press("C-d");
    ASSERT_TRUE(mTerminal.endsWith("ends.\n$"));
    EXPECT_TRUE(isAsBefore());
}

TEST_F(ConsoleTerminalTest, EndsTheProgramOnCtrlD)
{
    start();
    mTerminal.press("C-d");
    EXPECT_TRUE(mTerminal.endsWith("\nThe program ends.\n$")) << mTerminal.screen();
    EXPECT_TRUE(isAsBefore());
}

TEST_F(ConsoleTerminalTest, KeepsTheHistoryForTheNextRun)
{
    start();
    mTerminal.enter("say one");
    mTerminal.enter("say two");
    mTerminal.enter("say two");
    ASSERT_TRUE(mTerminal.endsWith("said two\n\n>>"));
    mTerminal.press("C-d");
    ASSERT_TRUE(mTerminal.endsWith("ends.\n$"));
    EXPECT_EQ("say one\nsay two\n", mFolder.read("state/history"));
    EXPECT_EQ(std::filesystem::perms::owner_read | std::filesystem::perms::owner_write,
              std::filesystem::status(path("state/history")).permissions());
    start();
    mTerminal.press("Up");
    ASSERT_TRUE(mTerminal.endsWith(">> say two"));
    mTerminal.press("Up");
    EXPECT_TRUE(mTerminal.endsWith(">> say one"));
}

TEST_F(ConsoleTerminalTest, SearchesTheHistoryWhileTheLogGoesOn)
{
    start();
    listen();
    mTerminal.enter("say needle");
    mTerminal.enter("say hay");
    ASSERT_TRUE(mTerminal.endsWith("said hay\n\n>>"));
    mTerminal.press("C-r");
    mTerminal.type("need");
    ASSERT_TRUE(mTerminal.endsWith(">> say needle\nbck:need")) << mTerminal.screen();
    log("meanwhile");
    ASSERT_TRUE(mTerminal.endsWith("\nmeanwhile\n>> say needle\nbck:need")) << mTerminal.screen();
    mTerminal.press("Enter");
    EXPECT_TRUE(mTerminal.endsWith("\nmeanwhile\n>> say needle\nsaid needle\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, FollowsTheSizeOfTheTerminal)
{
    start();
    listen();
    const std::string text(100, 'x');
    mTerminal.type(QString::fromStdString(text));
    ASSERT_TRUE(mTerminal.endsWith(">> " + text.substr(0, 77) + "\n" + text.substr(77)));
    ASSERT_TRUE(mTerminal.setWidth(60));
    EXPECT_TRUE(mTerminal.endsWith("\n\n>> " + text.substr(0, 57) + "\n" + text.substr(57)))
        << mTerminal.screen();
    log("one");
    EXPECT_TRUE(mTerminal.endsWith("\n\none\n>> " + text.substr(0, 57) + "\n" + text.substr(57)))
        << mTerminal.screen();
    ASSERT_TRUE(mTerminal.setWidth(120));
    EXPECT_TRUE(mTerminal.endsWith("\none\n>> " + text)) << mTerminal.screen();
    log("two");
    EXPECT_TRUE(mTerminal.endsWith("\none\ntwo\n>> " + text)) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, RunsEachPastedLine)
{
    start();
    QString lines;
    for (int i = 0; i < 50; ++i) {
        lines += QString("say line%1\n").arg(i);
    }
    mTerminal.paste(lines + "rest");
    ASSERT_TRUE(mTerminal.endsWith("said line49\n\n>> rest")) << mTerminal.screen();
    std::istringstream seen(mTerminal.history());
    int answers = 0;
    for (std::string line; std::getline(seen, line);) {
        answers += line == "said line" + std::to_string(answers) ? 1 : 0;
    }
    EXPECT_EQ(50, answers);
}

TEST_F(ConsoleTerminalTest, KeepsWhatIsTypedWhileALineRuns)
{
    start();
    mTerminal.enter("wait " + QString::fromStdString(path("go")));
    ASSERT_TRUE(shows("waiting for"));
    mTerminal.paste("say one\nsay two\nthr");
    mFolder.write("go", "");
    mTerminal.type("ee");
    EXPECT_TRUE(mTerminal.endsWith("\n\n>> three")) << mTerminal.screen();
    EXPECT_TRUE(shows("said one\n")); // the terminal may have shown what was typed meanwhile as well
    EXPECT_TRUE(shows("said two\n"));
}

TEST_F(ConsoleTerminalTest, SparesTheFirstCtrlCWhileALineRuns)
{
    start();
    mTerminal.enter("wait " + QString::fromStdString(path("go")));
    ASSERT_TRUE(shows("waiting for"));
    mTerminal.press("C-c");
    ASSERT_TRUE(shows("The line goes on. Ctrl+C again ends the program."));
    mFolder.write("go", "");
    ASSERT_TRUE(mTerminal.endsWith("\n\n>>"));
    mTerminal.enter("say alive");
    EXPECT_TRUE(mTerminal.endsWith("said alive\n\n>>"));
}

TEST_F(ConsoleTerminalTest, EndsAtTheSecondCtrlCWhileALineRuns)
{
    start();
    mTerminal.enter("wait /nowhere");
    ASSERT_TRUE(shows("waiting for"));
    mTerminal.press("C-c");
    ASSERT_TRUE(shows("The line goes on."));
    mTerminal.press("C-c");
    EXPECT_TRUE(mTerminal.endsWith("\n$")) << mTerminal.screen();
    EXPECT_TRUE(isAsBefore());
}

TEST_F(ConsoleTerminalTest, StopsAndGoesOn)
{
    start();
    mTerminal.type("say half");
    mTerminal.press("C-z");
    ASSERT_TRUE(mTerminal.endsWith("\n$")) << mTerminal.screen();
    ASSERT_TRUE(isAsBefore());
    mTerminal.enter("fg");
    ASSERT_TRUE(mTerminal.endsWith("\n>> say half")) << mTerminal.screen();
    mTerminal.enter("way");
    EXPECT_TRUE(mTerminal.endsWith("\n>> say halfway\nsaid halfway\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, LeavesTheTerminalToTheShellInTheBackground)
{
    start();
    mTerminal.press("C-z");
    ASSERT_TRUE(mTerminal.endsWith("\n$"));
    mTerminal.enter("bg");
    ASSERT_TRUE(mTerminal.endsWith("\n[1] ${P}\n$")) << mTerminal.screen();
    mTerminal.enter("echo still a shell");
    ASSERT_TRUE(mTerminal.endsWith("\nstill a shell\n$")) << mTerminal.screen();
    EXPECT_TRUE(isAsBefore());
    mTerminal.enter("fg");
    ASSERT_TRUE(mTerminal.endsWith("\n>>")) << mTerminal.screen();
    mTerminal.enter("say back");
    EXPECT_TRUE(mTerminal.endsWith("said back\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, GivesTheTerminalBackWhenASignalEndsIt)
{
    start();
    for (const int signal : {SIGTERM, SIGHUP, SIGINT, SIGQUIT}) {
        const pid_t id = program();
        mTerminal.type("say half");
        ASSERT_TRUE(mTerminal.endsWith(">> say half"));
        ASSERT_EQ(0, ::kill(id, signal));
        ASSERT_TRUE(mTerminal.endsWith("\n$")) << mTerminal.screen();
        EXPECT_TRUE(isAsBefore()) << signal;
        start();
    }
}

TEST_F(ConsoleTerminalTest, GivesTheTerminalBackWhenTheProgramIsStoppedFromOutside)
{
    start();
    const pid_t id = program();
    mTerminal.type("say half");
    ASSERT_TRUE(mTerminal.endsWith(">> say half"));
    ASSERT_EQ(0, ::kill(id, SIGTSTP));
    ASSERT_TRUE(mTerminal.endsWith("\n$")) << mTerminal.screen();
    EXPECT_TRUE(isAsBefore());
    mTerminal.enter("fg");
    ASSERT_TRUE(mTerminal.endsWith("\n>> say half")) << mTerminal.screen();
    mTerminal.enter("way");
    EXPECT_TRUE(mTerminal.endsWith("said halfway\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, GivesTheTerminalBackWhenTheProgramExits)
{
    start();
    mTerminal.enter("exit " + QString::fromStdString(path("log")));
    mLog.open(path("log"));
    mTerminal.type("say half");
    ASSERT_TRUE(mTerminal.endsWith(">> say half"));
    log("now");
    ASSERT_TRUE(mTerminal.endsWith("\n$")) << mTerminal.screen();
    EXPECT_TRUE(isAsBefore());
}

TEST_F(ConsoleTerminalTest, ShowsAnExceptionAsALine)
{
    start();
    mTerminal.enter("throw");
    EXPECT_TRUE(mTerminal.endsWith(">> throw\nThe console caught an exception: thrown\n>>"))
        << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, MayBeDestroyedByItsLine)
{
    start();
    mTerminal.enter("destroy");
    ASSERT_TRUE(shows("Destroyed."));
    mTerminal.press("C-c"); // which nobody spares now
    ASSERT_TRUE(mTerminal.endsWith("\n$")) << mTerminal.screen();
    EXPECT_TRUE(isAsBefore());
}

TEST_F(ConsoleTerminalTest, ReadsNothingAsTheSecondOne)
{
    mTerminal.enter("clear; $P second");
    ASSERT_TRUE(waitUntil([&] { // both have printed the log, and one of them asks
        const std::string screen = mTerminal.screen();
        return screen.find("Console:") != screen.rfind("Console:") && screen.find(">>") != std::string::npos;
    })) << mTerminal.screen();
    for (const char* const word : {"one", "two", "three"}) {
        mTerminal.enter(QString("say ") + word);
        EXPECT_TRUE(shows(std::string("said ") + word));
    }
    EXPECT_EQ(std::string::npos, mTerminal.screen().find("not a recognized")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, WaitsWithALineUntilNoOtherOneRuns)
{
    start();
    mTerminal.enter("nest-later " + QString::fromStdString(path("go")));
    ASSERT_TRUE(mTerminal.endsWith(">> say nested\nsaid nested\n\n>>")) << mTerminal.screen();
    mTerminal.enter("say after");
    ASSERT_TRUE(mTerminal.endsWith("\n>> say after")) << mTerminal.screen();
    ASSERT_TRUE(mTerminal.startsRow()) << mTerminal.screen();
    mFolder.write("go", "");
    EXPECT_TRUE(mTerminal.endsWith("\nsaid unnested\n\n\nsaid after\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, PrintsInputInColourUnlessToldNotTo)
{
    start();
    mTerminal.enter("alias a \"say b\"");
    mTerminal.enter("a");
    ASSERT_TRUE(mTerminal.endsWith("said b\n\n>>")) << mTerminal.screen();
    EXPECT_NE(std::string::npos, mTerminal.colouredScreen().find("\x1b[1m>> say b"))
        << mTerminal.colouredScreen();
    mTerminal.press("C-d");
    ASSERT_TRUE(mTerminal.endsWith("The program ends.\n$"))
        << mTerminal.screen(); // it drops what is typed while it ends
    start({}, "NO_COLOR=1");
    mTerminal.enter("alias a \"say b\"");
    mTerminal.enter("a");
    ASSERT_TRUE(mTerminal.endsWith("said b\n\n>>"));
    EXPECT_EQ(std::string::npos, mTerminal.colouredScreen().find("\x1b["));
}

TEST_F(ConsoleTerminalTest, HonoursTheUsersBindings)
{
    mFolder.write(".editrc", "bind ^O ed-move-to-beg\n");
    start();
    mTerminal.type("hello");
    mTerminal.press("C-o");
    mTerminal.enter("say ");
    EXPECT_TRUE(mTerminal.endsWith(">> say hello\nsaid hello\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, EditsCharactersOfManyBytesInAnyLocale)
{
    start({}, "LC_ALL=C");
    mTerminal.type(QString::fromUtf8("say \u98a8\u98a8\u00e9"));
    mTerminal.press("BSpace");
    mTerminal.press("BSpace");
    mTerminal.press("Enter");
    EXPECT_TRUE(mTerminal.endsWith(">> say \u98a8\nsaid \u98a8\n\n>>")) << mTerminal.screen();
}

TEST_F(ConsoleTerminalTest, ReadsLinesPlainlyFromATerminalThatCantMoveItsCursor)
{
    mTerminal.enter("clear; TERM=dumb $P");
    ASSERT_TRUE(mTerminal.endsWith("Zephyr Console:")) << mTerminal.screen();
    mTerminal.enter("say hello");
    ASSERT_TRUE(mTerminal.endsWith("\n>> say hello\nsaid hello")) << mTerminal.screen();
    mTerminal.press("C-d");
    EXPECT_TRUE(mTerminal.endsWith("ends.\n$"));
}

} // namespace
} // namespace zephyr::console::remote
