#include "remote/AttachFixture.h"
#include "remote/ScriptedServer.h"
#include "support/SystemText.h"

#include <QCoreApplication>

#include <csignal>

namespace zephyr::console::remote {
namespace {

using test::ScriptedServer;

constexpr char kUnknown[] = "'nothing' is not a recognized command.  Type 'help' to list available commands.";

class AttachTest : public AttachFixture
{
protected:
    AttachTest()
    {
        test::addCommand(console, U"gaps").onExecute = [](const auto&, Console& self) {
            for (const char32_t* const text : {U"", U"a", U"", U"b"}) {
                self.write(text, Output);
            }
        };
        test::addCommand(console, U"colour").onExecute = [](const auto&, Console& self) {
            self.write(U"\x1b[31mred\x1b[0m \u4e16", Output);
        };
        test::addCommand(console, U"control").onExecute = [](const auto&, Console& self) {
            self.write(U"\x1b \x7f \u0080 \u009b \u009f \u00a0", Output);
        };
    }

    AttachEnded runFile(const std::string& bytes, const QStringList& more = {})
    {
        folder.write("a.console", bytes);
        return run(QStringList{"sandbox", "-f", "a.console"} + more);
    }

    /// What `--list` and more options print, as soon as it is `listed`: on a busy machine a program may not answer in time.
    testing::AssertionResult lists(const QStringList& more, const std::string& listed)
    {
        AttachEnded ended;
        for (int i = 0; i < 20 && ended != AttachEnded{0, listed, ""}; ++i) {
            ended = run(QStringList{"--list"} + more);
        }
        return ended == AttachEnded{0, listed, ""} ? testing::AssertionSuccess()
                                                   : testing::AssertionFailure() << ended;
    }

    std::string pid = std::to_string(QCoreApplication::applicationPid());
};

TEST_F(AttachTest, PrintsHelpAndVersion)
{
    EXPECT_EQ(0u, run({"--help"}).out.find("Usage: "));
    EXPECT_EQ((AttachEnded{0, "zephyr-attach " ZEPHYR_ATTACH_VERSION "\n", ""}), run({"--version"}));
}

TEST_F(AttachTest, RefusesACommandLine)
{
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: Unknown option 'colour'.\n"}), run({"--colour"}));
}

TEST_F(AttachTest, ListsWhatRuns)
{
    const ConsoleServer second(console, "sandbox");
    EXPECT_TRUE(lists({}, "sandbox    " + pid + "\nsandbox-2  " + pid + "\n"));
    EXPECT_TRUE(lists({"--json"}, R"({"answers":true,"name":"sandbox","pid":)" + pid +
                                      "}\n"
                                      R"({"answers":true,"name":"sandbox-2","pid":)" +
                                      pid + "}\n"));
}

TEST_F(AttachTest, ListsNothingWhereNothingRuns)
{
    server.reset();
    EXPECT_TRUE(lists({}, ""));
}

TEST_F(AttachTest, ListsAProgramThatHangsAndThoseThatDont)
{
    const ScriptedServer hanging(SocketPlace::ofUser(), "hanging", "");
    EXPECT_TRUE(lists({}, "hanging  " + pid + " (doesn't answer)\nsandbox  " + pid + "\n"));
}

TEST_F(AttachTest, TakesTheOnlyProgramWithoutAName)
{
    EXPECT_EQ((AttachEnded{0, "    hello\n", ""}), run({"-c", "echo hello"}));
}

TEST_F(AttachTest, SaysWhichProgramsThereAreIfItIsntOne)
{
    {
        const ConsoleServer second(console, "sandbox");
        EXPECT_EQ((AttachEnded{2, "",
                               "zephyr-attach: Several programs are running, name one of them:\nsandbox    " +
                                   pid + "\nsandbox-2  " + pid + "\n"}),
                  run({"-c", "echo hello"}));
    }
    server.reset();
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: No program that serves its console is running.\n"}),
              run({"-c", "echo hello"}));
}

TEST_F(AttachTest, SaysThatNobodyAnswers)
{
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: No program 'other' is running.\n"}),
              run({"other", "-c", "echo hello"}));
    EXPECT_EQ((AttachEnded{
                  2, "",
                  "zephyr-attach: '../sandbox' can't be a program's name: it may have letters, digits, '-', "
                  "'_' and '.', and begins with a letter or digit.\n"}),
              run({"../sandbox", "-c", "echo hello"}));
}

TEST_F(AttachTest, RefusesAFolderOfSocketsThatIsOpenToOthers)
{
    std::filesystem::permissions(SocketPlace::ofUser().folder().toStdString(), std::filesystem::perms(0755));
    const AttachEnded refused{2, "",
                              "zephyr-attach: The folder of the sockets, '" +
                                  SocketPlace::ofUser().folder().toStdString() +
                                  "', is open to other users: its mode must be 700.\n"};
    EXPECT_EQ(refused, run({"sandbox", "-c", "echo hello"}));
    EXPECT_EQ(refused, run({"--list"}));
}

TEST_F(AttachTest, RunsALineAndPrintsTheAnswerAlone)
{
    EXPECT_EQ((AttachEnded{0, "    hello\n", ""}), run({"sandbox", "-c", "echo hello"}));
    EXPECT_EQ((AttachEnded{0, "\na\n\nb\n", ""}), run({"sandbox", "-c", "gaps"}));
    EXPECT_TRUE(console.history().empty());
}

TEST_F(AttachTest, PrintsAllEntriesOfALineAsJson)
{
    EXPECT_EQ((AttachEnded{0,
                           R"({"index":2,"text":"echo hello","type":"input"})"
                           "\n"
                           R"({"index":3,"text":"    hello","type":"output"})"
                           "\n"
                           R"({"index":4,"text":"","type":"output"})"
                           "\n",
                           ""}),
              run({"sandbox", "--json", "-c", "echo hello"}));
}

TEST_F(AttachTest, PrintsNoControlCharacterInJson)
{
    EXPECT_NE(std::string::npos, run({"sandbox", "--json", "-c", "control"})
                                     .out.find("\"\\u001b \\u007f \\u0080 \\u009b \\u009f \u00a0\""));
}

TEST_F(AttachTest, PrintsTextAsItIsWhereThereIsNoTerminal)
{
    EXPECT_EQ((AttachEnded{0, "\x1b[31mred\x1b[0m \xE4\xB8\x96\n", ""}), run({"sandbox", "-c", "colour"}));
}

TEST_F(AttachTest, EndsWithOneIfALineFailsOrIsUnknown)
{
    EXPECT_EQ((AttachEnded{1, "    No brakes.\n", ""}), run({"sandbox", "-c", "brake"}));
    EXPECT_EQ((AttachEnded{1, std::string(kUnknown) + "\n", ""}), run({"sandbox", "-c", "nothing"}));
}

TEST_F(AttachTest, GivesAReasonThatTheAnswerHasnt)
{
    const ScriptedServer other(
        SocketPlace::ofUser(), "other", ScriptedServer::hello(),
        [](QLocalSocket& client, const Request& request) {
            const qint64 id = std::get<RunRequest>(request).id;
            client.write(toLine(Message(EntryMessage{id, {0, Entry::Type::Output, "It rains."}})));
            client.write(toLine(Message(DoneMessage{id, Outcome::Failed, "It\nsnows \x1b[31m."})));
        });
    EXPECT_EQ((AttachEnded{1, "It rains.\n", "zephyr-attach: It snows ^[[31m.\n"}),
              run({"other", "-c", "weather"}));
}

TEST_F(AttachTest, RunsTheLinesOfAFileAndPrintsTheTranscript)
{
    EXPECT_EQ((AttachEnded{0, ">> echo a\n    a\n\n>> echo b\n    b\n\n", ""}),
              runFile("\xEF\xBB\xBF// a comment\n\n  echo a \r\n\techo b"));
}

TEST_F(AttachTest, StopsAtTheFirstLineThatFailsAndNamesIt)
{
    EXPECT_EQ((AttachEnded{1, ">> brake\n    No brakes.\n\n", "zephyr-attach: a.console:2: No brakes.\n"}),
              runFile("// a\nbrake\necho b"));
    EXPECT_EQ((AttachEnded{1, std::string(">> nothing\n") + kUnknown + "\n\n",
                           std::string("zephyr-attach: a.console:1: ") + kUnknown + "\n"}),
              runFile("nothing"));
}

TEST_F(AttachTest, GoesOnBehindALineThatFailsIfThatIsWanted)
{
    const AttachEnded ended = runFile("brake\necho b\nnothing\n", {"--keep-going"});
    EXPECT_EQ(1, ended.exitCode);
    EXPECT_EQ(std::string(">> brake\n    No brakes.\n\n>> echo b\n    b\n\n>> nothing\n") + kUnknown + "\n\n",
              ended.out);
    EXPECT_EQ(std::string("zephyr-attach: a.console:1: No brakes.\nzephyr-attach: a.console:3: ") + kUnknown +
                  "\n",
              ended.err);
}

TEST_F(AttachTest, SaysWhichFileItCantRead)
{
    EXPECT_EQ((AttachEnded{2, "",
                           "zephyr-attach: Can't read 'missing': " +
                               test::systemText(std::errc::no_such_file_or_directory) + ".\n"}),
              run({"sandbox", "-f", "missing"}));
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: Can't read '.': it is a folder.\n"}),
              run({"sandbox", "-f", "."}));
}

TEST_F(AttachTest, RunsTheLinesBeforeOneThatIsTooLong)
{
    EXPECT_EQ((AttachEnded{2, ">> echo a\n    a\n\n",
                           "zephyr-attach: a.console:2: a line of more than 131072 bytes is too long.\n"}),
              runFile("echo a\necho " + std::string(131072, 'b')));
}

TEST_F(AttachTest, RunsTheLongestLineThatAServerTakes)
{
    const std::string line = "echo " + std::string(131072 - 5, '\x01');
    EXPECT_EQ((AttachEnded{0, ">> " + line + "\n    " + line.substr(5) + "\n\n", ""}), runFile(line));
}

TEST_F(AttachTest, RunsTheLinesOfStandardInput)
{
    const AttachEnded ended{0, ">> echo a\n    a\n\n>> echo b\n    b\n\n", ""};
    EXPECT_EQ(ended, run({"sandbox"}, "echo a\n// c\necho b"));
    EXPECT_EQ(ended, run({"sandbox", "-f", "-"}, "echo a\n// c\necho b"));
    EXPECT_EQ(
        (AttachEnded{1, ">> brake\n    No brakes.\n\n", "zephyr-attach: standard input:1: No brakes.\n"}),
        run({"sandbox"}, "brake\necho b\n"));
    EXPECT_EQ((AttachEnded{0, "", ""}), run({"sandbox"}, ""));
}

TEST_F(AttachTest, RunsLinesOfStandardInputAsTheyCome)
{
    start({"sandbox"});
    attach.write("echo a\nec");
    waitForOutput("    a\n\n");
    attach.write("ho b\n");
    waitForOutput("    b\n\n");
    attach.closeWriteChannel();
    EXPECT_EQ((AttachEnded{0, "", ""}), end());
}

TEST_F(AttachTest, FollowsTheLogFromItsLastEntriesOn)
{
    console.execute(U"echo before");
    start({"sandbox", "--follow", "--last", "2"});
    waitForOutput("    before\n\n");
    console.execute(U"echo after");
    waitForOutput(">> echo after\n    after\n\n");
    server.reset();
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: 'sandbox' has ended or closed the connection.\n"}), end());
}

TEST_F(AttachTest, FollowsTheWholeLogIfThatIsShort)
{
    start({"sandbox", "--follow", "--json"});
    waitForOutput(R"({"index":0,"text":"Zephyr Console:","type":"output"})"
                  "\n"
                  R"({"index":1,"text":"","type":"output"})"
                  "\n");
    server.reset();
    end();
}

TEST_F(AttachTest, FollowsTheLogUntilItIsInterruptedAndTheProgramGoesOn)
{
    start({"sandbox", "--follow", "-n", "0"});
    ASSERT_TRUE(waitUntil([this] { return server->clientCount() == 1; }));
    console.execute(U"echo a");
    waitForOutput("    a\n");
    ASSERT_EQ(0, kill(static_cast<pid_t>(attach.processId()), SIGINT));
    ASSERT_TRUE(waitUntil([this] { return attach.state() == QProcess::NotRunning; }));
    EXPECT_EQ(QProcess::CrashExit, attach.exitStatus()); // as other programs end at Ctrl+C
    EXPECT_EQ(SIGINT, attach.exitCode());
    EXPECT_TRUE(waitUntil([this] { return server->clientCount() == 0; }));
    EXPECT_EQ((AttachEnded{0, "    hello\n", ""}), run({"sandbox", "-c", "echo hello"}));
}

TEST_F(AttachTest, EndsQuietlyWhenNobodyReadsItsOutput)
{
    attach.start("bash", {"-c", ZEPHYR_ATTACH_PROGRAM " sandbox -f - | head -n 1"});
    ASSERT_TRUE(waitUntil([this] {
        attach.write("echo a\n");
        return attach.state() == QProcess::NotRunning;
    }));
    EXPECT_EQ((AttachEnded{0, ">> echo a\n", ""}), end());
}

TEST_F(AttachTest, EndsQuietlyWhenNobodyReadsTheLogItFollows)
{
    attach.start("bash", {"-c", ZEPHYR_ATTACH_PROGRAM " sandbox --follow -n 0 | head -n 1"});
    ASSERT_TRUE(waitUntil([this] {
        console.write(U"tick", Output);
        return attach.state() == QProcess::NotRunning;
    }));
    EXPECT_EQ((AttachEnded{0, "tick\n", ""}), end());
}

TEST_F(AttachTest, RunsSeveralLinesAtOnce)
{
    EXPECT_EQ((AttachEnded{1, "    a\n    No brakes.\n", ""}),
              run({"sandbox", "-c", "echo a\n// b\n\nbrake\necho c"}));
}

TEST_F(AttachTest, SaysThatItsOutputCantBeWritten)
{
    attach.setStandardOutputFile("/dev/full");
    EXPECT_EQ((AttachEnded{2, "",
                           "zephyr-attach: Can't write standard output: " +
                               test::systemText(std::errc::no_space_on_device) + ".\n"}),
              run({"sandbox", "-c", "gaps"}));
}

TEST_F(AttachTest, FindsStandardInputAndOutputClosed)
{
    const std::string reason = test::systemText(std::errc::bad_file_descriptor) + ".\n";
    attach.start("bash", {"-c", ZEPHYR_ATTACH_PROGRAM " sandbox <&-"});
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: Can't read 'standard input': " + reason}), end());
    attach.start("bash", {"-c", ZEPHYR_ATTACH_PROGRAM " sandbox -c 'echo hello' <&-"});
    EXPECT_EQ((AttachEnded{0, "    hello\n", ""}), end());
    attach.start("bash", {"-c", ZEPHYR_ATTACH_PROGRAM " sandbox -c 'echo hello' >&-"});
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: Can't write standard output: " + reason}), end());
    attach.start("bash", {"-c", ZEPHYR_ATTACH_PROGRAM " sandbox -c nothing 2>&- >&- <&-"});
    EXPECT_EQ((AttachEnded{2, "", ""}), end());
}

TEST_F(AttachTest, SaysWhatIsWrongWithAServer)
{
    const SocketPlace place = SocketPlace::ofUser();
    const QByteArray entry = toLine(Message(EntryMessage{std::nullopt, {0, Entry::Type::Output, "a"}}));
    const ScriptedServer future(place, "future", toLine(Message(HelloMessage{2, "future", 1, 0})));
    const ScriptedServer web(place, "web", "HTTP/1.1 200 OK\r\n");
    const ScriptedServer full(place, "full", toLine(Message(ErrorMessage{"Too many\nclients."})));
    const ScriptedServer odd(place, "odd", ScriptedServer::hello() + entry + "[]\n");
    const ScriptedServer cut(place, "cut", ScriptedServer::hello(),
                             [&](QLocalSocket& client, const Request&) {
                                 client.write(entry + entry.chopped(4));
                                 client.disconnectFromServer();
                             });
    EXPECT_EQ((AttachEnded{
                  2, "",
                  "zephyr-attach: 'future' speaks version 2 of the protocol, and this program version 1.\n"}),
              run({"future", "-c", "a"}));
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: What listens as 'web' is no console's server.\n"}),
              run({"web", "-c", "a"}));
    EXPECT_EQ((AttachEnded{2, "", "zephyr-attach: 'full' closed the connection: Too many clients.\n"}),
              run({"full", "-c", "a"}));
    EXPECT_EQ(
        (AttachEnded{2, "a\n",
                     "zephyr-attach: 'odd' sent something else than a message: A message must be a JSON "
                     "object.\n"}),
        run({"odd", "--follow"}));
    EXPECT_EQ((AttachEnded{2, "a\n", "zephyr-attach: 'cut' has ended or closed the connection.\n"}),
              run({"cut", "--follow"}));
}

} // namespace
} // namespace zephyr::console::remote
