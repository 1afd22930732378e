#include "remote/AttachFixture.h"
#include "remote/ScriptedServer.h"
#include "remote/TmuxTerminal.h"

namespace zephyr::console::remote {
namespace {

using test::ScriptedServer;
using test::TmuxTerminal;

class AttachTerminalTest : public AttachFixture
{
protected:
    /// zephyr-attach in a terminal, and its exit status behind it. \param settings such as `NO_COLOR=1`.
    TmuxTerminal terminal(const QString& arguments, const QString& settings = {}) const
    {
        return TmuxTerminal(
            QString("env XDG_RUNTIME_DIR=%1 XDG_STATE_HOME=%2 HOME=%1 %3 %4 %5; echo \"status $?\"")
                .arg(pathOf(""), pathOf("state"), settings, ZEPHYR_ATTACH_PROGRAM, arguments));
    }
};

/// Answers each line only when the test wants it.
class HeldServer
{
public:
    HeldServer()
        : mServer(SocketPlace::ofUser(), "held", ScriptedServer::hello(),
                  [this](QLocalSocket& client, const Request& request) {
                      if (const auto* const run = std::get_if<RunRequest>(&request)) {
                          mClient = &client;
                          mLines.push_back(*run);
                      }
                  })
    {}

    /// Waits until `line` has come as the last one. \return whether it has.
    bool gets(const QString& line) const
    {
        return waitUntil([&] { return !mLines.empty() && mLines.back().line == line; });
    }

    void finish()
    {
        mClient->write(toLine(Message(DoneMessage{mLines.back().id, Outcome::Ok, ""})));
        mClient->flush();
    }

    std::size_t lineCount() const { return mLines.size(); }

private:
    QLocalSocket* mClient = nullptr;
    std::vector<RunRequest> mLines;
    ScriptedServer mServer;
};

TEST_F(AttachTerminalTest, RunsLinesAndShowsEachOnceWithItsAnswer)
{
    const TmuxTerminal seen = terminal("sandbox");
    ASSERT_TRUE(seen.endsWith("Zephyr Console:\n\n>>"));
    seen.enter("echo hello");
    ASSERT_TRUE(seen.endsWith(">> echo hello\n    hello\n\n>>")) << seen.screen();
    seen.enter("nothing");
    ASSERT_TRUE(seen.endsWith(" to list available commands.\n\n>>"));
    EXPECT_EQ("Zephyr Console:\n\n>> echo hello\n    hello\n\n>> nothing\n"
              "'nothing' is not a recognized command.  Type 'help' to list available commands.\n\n>>",
              seen.screen());
}

TEST_F(AttachTerminalTest, ShowsTheLogAboveTheLineThatIsBeingTyped)
{
    const TmuxTerminal seen = terminal("sandbox --last 0");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.type("echo half");
    ASSERT_TRUE(seen.endsWith(">> echo half"));
    console.execute(U"echo from the program");
    ASSERT_TRUE(seen.endsWith(">> echo from the program\n    from the program\n\n>> echo half"))
        << seen.screen();
    seen.enter(" and half");
    EXPECT_TRUE(seen.endsWith(">> echo half and half\n    half and half\n\n>>")) << seen.screen();
}

TEST_F(AttachTerminalTest, CompletesWhatTheProgramKnows)
{
    const TmuxTerminal seen = terminal("sandbox");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.type("bra");
    ASSERT_TRUE(waitUntil([&] { // again, as on a busy machine the program may not answer in time
        seen.press("Tab");
        return seen.screen().ends_with(">> brake");
    })) << seen.screen();
    seen.press("Enter");
    EXPECT_TRUE(seen.endsWith(">> brake\n    No brakes.\n\n>>")) << seen.screen();
}

TEST_F(AttachTerminalTest, GoesOnWhereCompletionsDontCome)
{
    HeldServer held;
    const TmuxTerminal seen = terminal("held");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.type("wi");
    seen.press("Tab");
    seen.enter("nd");
    EXPECT_TRUE(held.gets("wind"));
}

TEST_F(AttachTerminalTest, IgnoresCandidatesForAnotherPlaceThanTheLine)
{
    const ScriptedServer odd(SocketPlace::ofUser(), "odd", ScriptedServer::hello(),
                             [](QLocalSocket& client, const Request& request) {
                                 if (const auto* const complete = std::get_if<CompleteRequest>(&request)) {
                                     client.write(
                                         toLine(Message(CandidatesMessage{complete->id, {"x"}, 1000})));
                                 }
                             });
    const TmuxTerminal seen = terminal("odd");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.type("wi");
    seen.press("Tab");
    seen.type("nd");
    EXPECT_TRUE(seen.endsWith(">> wind")) << seen.screen();
}

TEST_F(AttachTerminalTest, KeepsWhatIsTypedWhileALineRuns)
{
    HeldServer held;
    const TmuxTerminal seen = terminal("held");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.enter("first");
    ASSERT_TRUE(held.gets("first"));
    seen.enter("second");
    seen.type("thi");
    ASSERT_TRUE(seen.endsWith("second\nthi")) << seen.screen();
    EXPECT_EQ(1U, held.lineCount());
    held.finish();
    ASSERT_TRUE(held.gets("second"));
    held.finish();
    ASSERT_TRUE(seen.endsWith(">> thi")) << seen.screen();
    seen.enter("rd");
    EXPECT_TRUE(held.gets("third"));
}

TEST_F(AttachTerminalTest, SendsNoBlankLine)
{
    HeldServer held;
    const TmuxTerminal seen = terminal("held");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.press("Enter");
    seen.enter("  ");
    seen.enter("line");
    ASSERT_TRUE(held.gets("line"));
    EXPECT_EQ(1U, held.lineCount());
}

TEST_F(AttachTerminalTest, EndsAtTheEndOfInput)
{
    const TmuxTerminal seen = terminal("sandbox");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.press("C-d");
    EXPECT_TRUE(seen.endsWith("\nstatus 0")) << seen.screen();
    EXPECT_TRUE(server->isListening());
}

TEST_F(AttachTerminalTest, EndsAtCtrlCOnAnEmptyLineAndTakesAnotherLineAway)
{
    const TmuxTerminal seen = terminal("sandbox");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.type("echo hello");
    seen.press("C-c");
    ASSERT_TRUE(seen.endsWith("\n>>")) << seen.screen();
    seen.press("C-c");
    EXPECT_TRUE(seen.endsWith("\nstatus 130")) << seen.screen();
    EXPECT_EQ(2U, console.logSize());
}

TEST_F(AttachTerminalTest, EndsAtCtrlCWhileALineRunsAndLeavesTheProgramAlone)
{
    HeldServer held;
    const TmuxTerminal seen = terminal("held");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.enter("long");
    ASSERT_TRUE(held.gets("long"));
    seen.press("C-c");
    EXPECT_TRUE(seen.endsWith("status 130")) << seen.screen();
}

TEST_F(AttachTerminalTest, SaysThatTheProgramHasEnded)
{
    const TmuxTerminal seen = terminal("sandbox");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.type("half");
    ASSERT_TRUE(seen.endsWith(">> half"));
    server.reset();
    EXPECT_TRUE(
        seen.endsWith(">> half\nzephyr-attach: 'sandbox' has ended or closed the connection.\nstatus 2"))
        << seen.screen();
}

TEST_F(AttachTerminalTest, SaysThatTheProgramHasEndedWhileItWaitsForACompletion)
{
    std::optional<ScriptedServer> leaving(std::in_place, SocketPlace::ofUser(), "leaving",
                                          ScriptedServer::hello(),
                                          [](QLocalSocket& client, const Request& request) {
                                              if (std::holds_alternative<CompleteRequest>(request)) {
                                                  client.disconnectFromServer();
                                              }
                                          });
    const TmuxTerminal seen = terminal("leaving");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.type("wi");
    seen.press("Tab");
    EXPECT_TRUE(seen.endsWith("zephyr-attach: 'leaving' has ended or closed the connection.\nstatus 2"))
        << seen.screen();
}

TEST_F(AttachTerminalTest, RecallsLinesOfAnEarlierSession)
{
    {
        const TmuxTerminal seen = terminal("sandbox");
        ASSERT_TRUE(seen.endsWith(">>"));
        seen.enter("echo remembered");
        ASSERT_TRUE(seen.endsWith("    remembered\n\n>>"));
        seen.press("C-d");
        ASSERT_TRUE(seen.endsWith("status 0"));
    }
    EXPECT_TRUE(folder.has("state/zephyr-console/history"));
    const TmuxTerminal seen = terminal("sandbox --last 0");
    ASSERT_TRUE(seen.endsWith(">>"));
    seen.press("Up");
    EXPECT_TRUE(seen.endsWith(">> echo remembered")) << seen.screen();
}

TEST_F(AttachTerminalTest, ShowsControlCharactersHarmlessly)
{
    const TmuxTerminal seen = terminal("sandbox --last 0");
    ASSERT_TRUE(seen.endsWith(">>"));
    console.write(U"\x1b[2Ja\x7f"
                  U"\u009b"
                  U"b \u4e16",
                  Output);
    EXPECT_TRUE(seen.endsWith("^[[2Ja^?\xEF\xBF\xBD"
                              "b \xE4\xB8\x96\n>>"))
        << seen.screen();
}

TEST_F(AttachTerminalTest, HasColoursUnlessSomebodyWantsNone)
{
    console.execute(U"echo a");
    for (const bool hasColours : {true, false}) {
        const TmuxTerminal seen = terminal("sandbox --follow", hasColours ? "" : "NO_COLOR=1");
        ASSERT_TRUE(seen.endsWith(">> echo a\n    a"));
        EXPECT_EQ(hasColours, seen.colouredScreen().find('\x1b') != std::string::npos);
    }
}

TEST_F(AttachTerminalTest, RunsOneLineOnATerminalToo)
{
    EXPECT_TRUE(terminal("sandbox -c 'echo hello'").endsWith("    hello\nstatus 0"));
}

} // namespace
} // namespace zephyr::console::remote
