#include "support/AssertAnswers.h"
#include "support/AssertRecorder.h"
#include "support/ConsoleDriver.h"
#include "support/ConsoleFilesFixture.h"
#include "support/ConsoleInside.h"
#include "support/LogLine.h"
#include "support/SystemText.h"
#include "support/Unprivileged.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstddef>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace zephyr::console {
namespace {

using test::AssertRecorder;
using test::echo;
using test::kNotOpen;
using test::kTooLongName;
using test::notRecognized;
using test::output;
using Texts = std::vector<std::string>;

class ConsoleFiles : public test::ConsoleFilesFixture
{
protected:
    bool runText(std::string_view bytes) { return mConsole.runFile(mDirectory.write("test.console", bytes)); }

    /// What a file of these bytes adds to the log.
    Lines logOfText(std::string_view bytes)
    {
        return test::linesAddedBy([&] { EXPECT_TRUE(runText(bytes)); }, mConsole);
    }

    /// The lines of a file of these bytes that are executed, as they are echoed.
    Texts executed(std::string_view bytes)
    {
        Texts texts;
        for (const test::LogLine& line : logOfText(bytes)) {
            if (line.type == Input) {
                texts.push_back(line.text);
            }
        }
        return texts;
    }

    /// Expects that a path can't be run: an assertion, the answer false, and not a word in the log.
    void expectNotOpen(const std::filesystem::path& path)
    {
        const AssertRecorder recorder;
        const Lines before = log();
        EXPECT_FALSE(mConsole.runFile(path)) << path;
        EXPECT_EQ(recorder.failures(), kNotOpen) << path;
        EXPECT_EQ(recorder.messages(), Texts({""})) << path;
        EXPECT_EQ(log(), before) << path;
    }
};

TEST_F(ConsoleFiles, ExecuteEveryLineButEmptyOnesAndComments)
{
    EXPECT_EQ(logOfText("a\n\n  \n// note\nb\n"),
              Lines({echo("a"), output(notRecognized("a")), output(""), echo(""), echo("b"),
                     output(notRecognized("b")), output("")}));
}

TEST_F(ConsoleFiles, RunTheLastLineWithoutALineFeed)
{
    EXPECT_EQ(executed("a\nb"), Texts({"a", "b"}));
    EXPECT_EQ(executed("a"), Texts({"a"}));
    EXPECT_EQ(executed("a\n "), Texts({"a", ""}));
    EXPECT_EQ(executed("a\n//"), Texts({"a"}));
}

TEST_F(ConsoleFiles, RunNothingWhereThereIsNoLine)
{
    EXPECT_EQ(logOfText(""), Lines());
    EXPECT_EQ(logOfText("\n"), Lines());
    EXPECT_EQ(logOfText("\n\n\n"), Lines());
}

TEST_F(ConsoleFiles, ExecuteALineOfBlanksAsAnEmptyLine)
{
    for (const std::string blanks : {" ", "  ", "\t", " \t ", "\r", "\v\f", " \r"}) {
        EXPECT_EQ(logOfText(blanks + "\n"), Lines({echo("")}));
    }
}

TEST_F(ConsoleFiles, TakeWindowsLineEnds)
{
    EXPECT_EQ(logOfText("a\r\n// note\r\nb\r\n"), Lines({echo("a"), output(notRecognized("a")), output(""),
                                                         echo("b"), output(notRecognized("b")), output("")}));
}

TEST_F(ConsoleFiles, ExecuteABlankLineWithAWindowsLineEndAsAnEmptyLine)
{
    EXPECT_EQ(executed("a\r\n\r\nb\r\n"), Texts({"a", "", "b"}));
}

TEST_F(ConsoleFiles, TakeACarriageReturnWithinALineForPartOfIt)
{
    EXPECT_EQ(executed("a\rb\nc"), Texts({"a\rb", "c"}));
}

TEST_F(ConsoleFiles, TakeAByteOrderMark)
{
    EXPECT_EQ(executed("\uFEFFa\nb\n"), Texts({"a", "b"}));
    EXPECT_EQ(executed("\uFEFF// note\r\na\r\n"), Texts({"a"}));
    EXPECT_EQ(executed("\uFEFF\na\n"), Texts({"", "a"}));
}

TEST_F(ConsoleFiles, TrimBothEndsOfALineOnly)
{
    EXPECT_EQ(executed(" \t\v\f a  b\tc \v\f\r \n"), Texts({"a  b\tc"}));
}

TEST_F(ConsoleFiles, TrimNoBlankBeyondAscii)
{
    EXPECT_EQ(executed("\u00A0// a\n\u3000\n"), Texts({"\u00A0// a", "\u3000"}));
}

TEST_F(ConsoleFiles, TrimNoControlCharacterThatIsNoBlank)
{
    EXPECT_EQ(executed("\x7F//\n//\x7F\n\x01"
                       "b\x7F\n"),
              Texts({"\x7F//", "\x01"
                               "b\x7F"}));
}

TEST_F(ConsoleFiles, SkipCommentsThatStandBehindBlanks)
{
    EXPECT_EQ(logOfText("//\n//a\n  // a\n\t//a\n///\n// a\r\n \t //\"a\n"), Lines());
}

TEST_F(ConsoleFiles, ExecuteLinesThatOnlyLookLikeComments)
{
    EXPECT_EQ(logOfText("/\n"), Lines({echo("/"), output(notRecognized("/")), output("")}));
    EXPECT_EQ(executed("/ /\n/a//\na // b\n\\// a\n#\n; a\n"),
              Texts({"/ /", "/a//", "a // b", "\\// a", "#", "; a"}));
}

TEST_F(ConsoleFiles, PassTheSlashesBehindACommandToIt)
{
    std::vector<std::u32string> seen;
    add(U"say", [&seen](const ConsoleArgs& args, Console&) { seen = test::wordsOf(args); });
    runText("say a // b\n");
    EXPECT_EQ(seen, std::vector<std::u32string>({U"say", U"a", U"//", U"b"}));
}

TEST_F(ConsoleFiles, AreReadAsUtf8)
{
    std::u32string seen;
    add(U"say", [&seen](const ConsoleArgs& args, Console&) { seen = args.arg(1); });
    EXPECT_EQ(executed("say \u00E9\u20AC\U0001F600\n"), Texts({"say \u00E9\u20AC\U0001F600"}));
    EXPECT_EQ(seen, U"\u00E9\u20AC\U0001F600");
}

TEST_F(ConsoleFiles, ReplaceBytesThatAreNotUtf8AndRunOn)
{
    EXPECT_EQ(executed("a\xFF"
                       "b\n\xC3\n\xED\xA0\x80\n\xE2\x82\nc"),
              Texts({"a\uFFFDb", "\uFFFD", "\uFFFD\uFFFD\uFFFD", "\uFFFD", "c"}));
}

TEST_F(ConsoleFiles, KeepANulWithinALine)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(executed("a\0b\nc\n"sv), Texts({std::string("a\0b"sv), "c"}));
}

TEST_F(ConsoleFiles, MayHaveAHundredThousandLines)
{
    constexpr unsigned kLineCount = 100000;
    unsigned next = 0;
    add(U"count", [&next](const ConsoleArgs& args, Console&) {
        const std::string expected = std::to_string(next);
        next += StringUtil::toString(args.arg(1)) == expected ? 1 : 0;
    });
    std::string text;
    for (unsigned i = 0; i < kLineCount; ++i) {
        text += "count " + std::to_string(i) + "\n";
    }
    EXPECT_TRUE(runText(text));
    EXPECT_EQ(next, kLineCount);
    EXPECT_EQ(log().size(), 2 * kLineCount);
}

TEST_F(ConsoleFiles, MayHaveALineOfAMillionCharacters)
{
    const std::string word(1000000, 'x');
    EXPECT_EQ(logOfText(word + "\na\n"), Lines({echo(word), output(notRecognized(word)), output(""),
                                                echo("a"), output(notRecognized("a")), output("")}));
}

TEST_F(ConsoleFiles, RunOnAfterLinesThatFail)
{
    addWriter(U"wind", U"3 m/s");
    EXPECT_EQ(logOfText("unknown\nalias x\nwind\n"),
              Lines({echo("unknown"), output(notRecognized("unknown")), output(""), echo("alias x"),
                     output("'x' is not a valid argument.", 4), output(""), echo("wind"), output("3 m/s"),
                     output("")}));
}

TEST_F(ConsoleFiles, MayDefineAndNameAliases)
{
    EXPECT_EQ(
        logOfText("alias x \"a; b\"\n  x ignored\n"),
        Lines({echo("alias x \"a; b\""), output("Done.", 4), output(""), echo("x ignored"), echo("a"),
               output(notRecognized("a")), output(""), echo("b"), output(notRecognized("b")), output("")}));
}

TEST_F(ConsoleFiles, SeeTheCommandsThatTheirLinesRegister)
{
    add(U"load", [this](const ConsoleArgs&, Console&) { addWriter(U"wind", U"3 m/s"); });
    EXPECT_EQ(logOfText("wind\nload\nwind\n"),
              Lines({echo("wind"), output(notRecognized("wind")), output(""), echo("load"), output(""),
                     echo("wind"), output("3 m/s"), output("")}));
}

TEST_F(ConsoleFiles, RunOnAfterALineThatShutsTheConsoleDown)
{
    add(U"quit", [](const ConsoleArgs&, Console& console) { console.shutdown(); });
    EXPECT_EQ(logOfText("quit\nquit\n"),
              Lines({echo("quit"), output(""), echo("quit"), output(notRecognized("quit")), output("")}));
}

TEST_F(ConsoleFiles, RunBesideThreadsThatWriteAndTakeSnapshots)
{
    add(U"busy", [](const ConsoleArgs&, Console& console) {
        std::thread([&console] {
            console.write(U"from a thread", Output);
            console.snapshot();
        }).join();
    });
    EXPECT_EQ(logOfText("busy\n"), Lines({echo("busy"), output("from a thread"), output("")}));
}

TEST_F(ConsoleFiles, RunWhetherTheConsoleIsOpenOrNot)
{
    EXPECT_EQ(executed("a\n"), Texts({"a"}));
    EXPECT_FALSE(mConsole.isOpen());
    mConsole.open();
    EXPECT_EQ(executed("b\n"), Texts({"b"}));
    EXPECT_TRUE(mConsole.isOpen());
}

TEST_F(ConsoleFiles, NeverEnterTheHistory)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    runText("help\nunknown\n");
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "");
    user.type("typed\n");
    runText("help\nunknown\n");
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "typed");
}

TEST_F(ConsoleFiles, LeaveTheHistorysCursorWhereItIs)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("one\ntwo\n");
    user.press(Qt::Key_Up);
    runText("help\n");
    EXPECT_EQ(test::historyIndex(mConsole), 0);
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "one");
}

TEST_F(ConsoleFiles, ClearTheTypedLineWithAnyLineThatHasAWord)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("half");
    runText("unknown\n");
    EXPECT_EQ(user.input(), "");
    EXPECT_EQ(mConsole.cursorPosition(), 0U);
}

TEST_F(ConsoleFiles, KeepTheTypedLineWhereNoLineHasAWord)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("half");
    runText("// note\n\n   \n");
    EXPECT_EQ(user.input(), "half");
    EXPECT_EQ(mConsole.cursorPosition(), 4U);
}

TEST_F(ConsoleFiles, MayHaveAnyName)
{
    const Paths names = {"a",
                         "a.txt",
                         "two words.console",
                         "\"quoted\".console",
                         "line\nfeed",
                         "\u00E9\u20AC\U0001F600.rc",
                         "sub/sub/a.console",
                         ">",
                         "\xFF\xC3 ill-formed.console",
                         ".console",
                         "~",
                         "-a * ?",
                         "\uFFFD"};
    for (const std::filesystem::path& name : names) {
        const std::size_t before = log().size();
        EXPECT_TRUE(mConsole.runFile(mDirectory.write(name, "a\n"))) << name;
        EXPECT_EQ(log().size(), before + 3) << name;
    }
}

TEST_F(ConsoleFiles, AreFoundFromTheCurrentDirectory)
{
    mDirectory.write("sub/a.console", "a\n");
    EXPECT_TRUE(mConsole.runFile("sub/a.console"));
    const test::WorkingDirectory sub(at("sub"));
    EXPECT_TRUE(mConsole.runFile("a.console"));
    EXPECT_TRUE(mConsole.runFile("./../sub/a.console"));
    EXPECT_EQ(log().size(), 9U);
}

TEST_F(ConsoleFiles, AreNotSearchedInTheRunpathByTheirPath)
{
    mDirectory.write("sub/a.console", "a\n");
    mConsole.appendRunpath(at("sub"));
    expectNotOpen("a.console");
}

TEST_F(ConsoleFiles, GetNoExtensionAdded)
{
    mDirectory.write("a.console", "a\n");
    expectNotOpen(at("a"));
}

TEST_F(ConsoleFiles, MayBeBehindASymbolicLink)
{
    mDirectory.write("a.console", "a\n");
    std::filesystem::create_symlink("a.console", at("link"));
    EXPECT_TRUE(mConsole.runFile(at("link")));
    EXPECT_EQ(log().size(), 3U);
}

TEST_F(ConsoleFiles, MayBeADevice)
{
    EXPECT_TRUE(mConsole.runFile("/dev/null"));
    EXPECT_EQ(log(), Lines());
}

TEST_F(ConsoleFiles, CountAsRunWhereReadingFails)
{
    const AssertRecorder recorder;
    // Nothing is mapped at the address 0, so the file opens and its first byte can't be read.
    EXPECT_TRUE(mConsole.runFile("/proc/self/mem"));
    EXPECT_EQ(recorder.failures(), Texts());
    EXPECT_EQ(log(), Lines{output("ERROR: Console file '/proc/self/mem' can't be read to its end: " +
                                      test::systemText(std::errc::io_error) + ".  The rest will not be run.",
                                  4)});
}

TEST_F(ConsoleFiles, ReportAPathWithNoFile)
{
    mDirectory.write("file", "a\n");
    std::filesystem::create_symlink("nowhere", at("dangling"));
    for (const std::filesystem::path path : {"missing", "missing/a", "file/a", "file/", "dangling", ""}) {
        expectNotOpen(path);
    }
}

TEST_F(ConsoleFiles, ReportADirectory)
{
    makeDirectory("a.console");
    std::filesystem::create_directory_symlink("a.console", at("link"));
    for (const std::filesystem::path path : {"a.console", "a.console/", "link", ".", "..", "/"}) {
        expectNotOpen(path);
    }
}

TEST_F(ConsoleFiles, ReportAPathThatTheFileSystemRefuses)
{
    expectNotOpen(kTooLongName);
    expectNotOpen(makeLoop("loop"));
    expectNotOpen(at("loop") / "a.console");
}

TEST_F(ConsoleFiles, ReportNothingWhereVerificationsAreNotShown)
{
    const test::SilencedVerifications silenced;
    const AssertRecorder recorder;
    EXPECT_FALSE(mConsole.runFile("missing"));
    EXPECT_FALSE(mConsole.runFile(mDirectory.path()));
    EXPECT_EQ(recorder.failures(), Texts());
    EXPECT_EQ(log(), Lines());
}

using ConsoleFilesDeathTest = ConsoleFiles;

TEST_F(ConsoleFilesDeathTest, DieWhereAMissingFileIsNotHandled)
{
    EXPECT_EXIT(
        {
            test::leaveAssertionsUnhandled();
            mConsole.runFile("missing");
        },
        testing::KilledBySignal(SIGABRT), "");
}

TEST_F(ConsoleFilesDeathTest, ReportAFileThatMayNotBeRead)
{
    mDirectory.write("a.console", "a\n");
    const test::Locked locked(at("a.console"));
    EXPECT_EXIT(test::runUnprivileged([this] {
                    expectNotOpen("a.console");
                    std::cerr << (HasFailure() ? "wrong" : "refused");
                }),
                testing::ExitedWithCode(0), "^refused$");
}

TEST_F(ConsoleFiles, RunOnAfterAPathThatCouldNotBeOpened)
{
    expectNotOpen("missing");
    expectNotOpen(".");
    EXPECT_EQ(executed("a\n"), Texts({"a"}));
}

TEST_F(ConsoleFiles, LetAnExceptionOutAndRunNoFurtherLine)
{
    addFail();
    EXPECT_THROW(runText("a\nfail\nb\n"), std::runtime_error);
    EXPECT_EQ(log(),
              Lines({echo("a"), output(notRecognized("a")), output(""), echo("fail"), output("before")}));
}

TEST_F(ConsoleFiles, RunAgainAfterAnException)
{
    addFail();
    EXPECT_THROW(runText("fail\n"), std::runtime_error);
    EXPECT_THROW(runText("fail\n"), std::runtime_error);
    EXPECT_EQ(executed("a\nb\n"), Texts({"a", "b"}));
    EXPECT_EQ(logOf("c"), Lines({echo("c"), output(notRecognized("c")), output("")}));
}

TEST_F(ConsoleFiles, MayRedirectTheirCommands)
{
    addWriter(U"wind", U"3 m/s");
    addWriter(U"gust", U"7 m/s");
    EXPECT_EQ(logOfText("wind > f\ngust\ngust > g\n"),
              Lines({echo("wind > f"), output("3 m/s"), output(""), echo("gust"), output("7 m/s"), output(""),
                     echo("gust > g"), output("7 m/s"), output("")}));
    EXPECT_EQ(mDirectory.read("f"), "3 m/s\n");
    EXPECT_EQ(mDirectory.read("g"), "7 m/s\n");
}

TEST_F(ConsoleFiles, LeaveARedirectionOpenAfterAnExceptionUntilTheNextCommandHasRun)
{
    addFail();
    addWriter(U"wind", U"3 m/s");
    EXPECT_THROW(runText("fail > f\nwind\n"), std::runtime_error);
    EXPECT_TRUE(runText("a\nwind\nwind\n"));
    EXPECT_EQ(mDirectory.read("f"), "before\na\n" + notRecognized("a") + "\n\nwind\n3 m/s\n");
}

TEST_F(ConsoleFiles, MayBeRunByACommandOfAFile)
{
    mDirectory.write("inner", "a\nb\n");
    bool ran = false;
    add(U"nest", [&ran](const ConsoleArgs&, Console& console) { ran = console.runFile("inner"); });
    EXPECT_EQ(executed("nest\nc\n"), Texts({"nest", "a", "b", "c"}));
    EXPECT_TRUE(ran);
}

TEST_F(ConsoleFiles, MayChangeTheRunpathThatTheirPathStandsIn)
{
    add(U"change", [this](const ConsoleArgs&, Console& console) {
        setRunpath({});
        for (int i = 0; i < 100; ++i) {
            console.appendRunpath(std::to_string(i));
        }
    });
    setRunpath({"other", mDirectory.write("a.console", "change\na\nchange\nb\n")});
    EXPECT_TRUE(mConsole.runFile(mConsole.runPaths().back()));
    EXPECT_EQ(log(), Lines({echo("change"), output(""), echo("a"), output(notRecognized("a")), output(""),
                            echo("change"), output(""), echo("b"), output(notRecognized("b")), output("")}));
    EXPECT_EQ(mConsole.runPaths().size(), 100U);
}

} // namespace
} // namespace zephyr::console
