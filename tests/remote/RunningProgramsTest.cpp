#include "client/RunningPrograms.h"

#include "remote/ScriptedServer.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <deque>

#include <unistd.h>

namespace zephyr::console::remote {
namespace {

using test::ScriptedServer;

constexpr std::chrono::minutes kPatient(5);
constexpr std::chrono::milliseconds kImpatient(200);

class RunningProgramsTest : public testing::Test
{
protected:
    test::TemporaryDirectory mDirectory;
    SocketPlace mPlace{QString::fromStdString((mDirectory.path() / "s").string())};
};

using Programs = std::vector<RunningProgram>;

TEST_F(RunningProgramsTest, AreNoneWhereThereIsNoFolder)
{
    EXPECT_EQ(Programs{}, runningPrograms(mPlace, kPatient));
}

TEST_F(RunningProgramsTest, AreSortedByName)
{
    const ScriptedServer second(mPlace, "storm", ScriptedServer::hello());
    const ScriptedServer first(mPlace, "sandbox", ScriptedServer::hello());
    EXPECT_EQ((Programs{{"sandbox", getpid(), true}, {"storm", getpid(), true}}),
              runningPrograms(mPlace, kPatient));
}

TEST_F(RunningProgramsTest, LeaveOutSocketsThatAreLeftBehind)
{
    const ScriptedServer server(mPlace, "sandbox", ScriptedServer::hello());
    {
        QLocalServer other;
        ASSERT_TRUE(other.listen(mPlace.socketOf("other")));
        std::filesystem::create_hard_link(mPlace.socketOf("other").toStdString(),
                                          mPlace.socketOf("stale").toStdString());
    }
    EXPECT_EQ((Programs{{"sandbox", getpid(), true}}), runningPrograms(mPlace, kPatient));
}

TEST_F(RunningProgramsTest, AreFoundBehindAnyNumberOfSocketsThatAreLeftBehind)
{
    const ScriptedServer server(mPlace, "sandbox", ScriptedServer::hello());
    {
        QLocalServer other;
        ASSERT_TRUE(other.listen(mPlace.socketOf("other")));
        for (int i = 0; i < kMaxFound + 3; ++i) {
            std::filesystem::create_hard_link(mPlace.socketOf("other").toStdString(),
                                              mPlace.socketOf(QString("n%1").arg(i)).toStdString());
        }
    }
    EXPECT_EQ((Programs{{"sandbox", getpid(), true}}), runningPrograms(mPlace, kPatient));
}

TEST_F(RunningProgramsTest, SayWhoDoesntAnswerAndHoldUpNobody)
{
    const ScriptedServer silent(mPlace, "silent", "");
    const ScriptedServer other(mPlace, "future", toLine(Message(HelloMessage{2, "future", 1, 0})));
    const ScriptedServer odd(mPlace, "odd", "HTTP/1.1 200 OK\r\n");
    EXPECT_EQ((Programs{{"future", getpid(), false}, {"odd", getpid(), false}, {"silent", getpid(), false}}),
              runningPrograms(mPlace, kImpatient));
}

TEST_F(RunningProgramsTest, AreSoManyAtMost)
{
    std::deque<ScriptedServer> servers;
    for (int i = 0; i < kMaxFound + 3; ++i) {
        servers.emplace_back(mPlace, QString("n%1").arg(i, 4, 10, QChar('0')), ScriptedServer::hello());
    }
    const Programs running = runningPrograms(mPlace, kPatient);
    EXPECT_EQ(kMaxFound, static_cast<qsizetype>(running.size()));
    EXPECT_EQ((RunningProgram{"n0255", getpid(), true}), running.back());
}

} // namespace
} // namespace zephyr::console::remote
