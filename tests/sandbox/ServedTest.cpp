// zephyr-sandbox in the background, and zephyr-attach, as a person and scripts use them.

#include "sandbox/ProgramRun.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <vector>

namespace zephyr::test {
namespace {

/// zephyr-attach as a process, which finds what `program` serves.
class Client
{
public:
    explicit Client(Program& program)
    {
        mProcess.setProcessEnvironment(program.process().processEnvironment());
        mProcess.setWorkingDirectory(program.process().workingDirectory());
    }

    QProcess& process() { return mProcess; }

    void start(const QStringList& arguments)
    {
        mProcess.start(ZEPHYR_ATTACH_PROGRAM, QStringList{"sandbox"} + arguments);
        if (!mProcess.waitForStarted()) {
            throw std::runtime_error("can't start " ZEPHYR_ATTACH_PROGRAM);
        }
        mProcess.closeWriteChannel();
    }

    Ended end()
    {
        if (!mProcess.waitForFinished(kProcessTimeout) || mProcess.exitStatus() != QProcess::NormalExit) {
            throw std::runtime_error("zephyr-attach hung or crashed");
        }
        mPrinted += mProcess.readAllStandardOutput().toStdString();
        return {mProcess.exitCode(), mPrinted, mProcess.readAllStandardError().toStdString()};
    }

    /// Waits until `text` was printed.
    void waitFor(const std::string& text)
    {
        while (mPrinted.find(text) == std::string::npos) {
            if (!mProcess.waitForReadyRead(kProcessTimeout)) {
                throw std::runtime_error("zephyr-attach printed only: " + mPrinted);
            }
            mPrinted += mProcess.readAllStandardOutput().toStdString();
        }
    }

private:
    QProcess mProcess;
    std::string mPrinted;
};

class Served : public testing::Test
{
protected:
    void start(const QStringList& more = {})
    {
        program.removeEnvironment("DISPLAY");
        program.setEnvironment("QT_QPA_PLATFORM", "xcb"); // which would end a program that wants a window
        program.start(QStringList{"--headless", "--no-startup", "--serve", "sandbox"} + more);
        if (!program.process().waitForReadyRead(kProcessTimeout)) {
            throw std::runtime_error("the program isn't served");
        }
        ASSERT_EQ("Served as 'sandbox'.\n", program.process().readAllStandardOutput());
    }

    Ended attach(const QStringList& arguments)
    {
        Client client(program);
        client.start(arguments);
        return client.end();
    }

    Program program;
};

TEST_F(Served, IsControlledAndWatchedInTheBackgroundAndEndedByACommand)
{
    start();
    EXPECT_EQ("    Wind: 4 m/s, heading 90 degrees, gust 0 m/s.\n", attach({"-c", "wind set 4 90"}).out);

    Client watching(program);
    watching.start({"--follow"});
    watching.waitFor(">> wind set 4 90\n");
    EXPECT_EQ(0, attach({"-c", "sim record /path=run.csv /steps=50"}).exitCode);
    watching.waitFor("Wrote steps ");
    EXPECT_TRUE(program.directory().has("run.csv"));

    watching.process().terminate();
    watching.process().waitForFinished(kProcessTimeout);
    EXPECT_EQ(0, attach({"-c", "wind show"}).exitCode) << "the program goes on";

    EXPECT_EQ(0, attach({"-c", "quit"}).exitCode);
    EXPECT_EQ(0, program.end().exitCode);
    const Ended nobody = attach({"-c", "wind show"});
    EXPECT_EQ(2, nobody.exitCode);
    EXPECT_EQ("zephyr-attach: No program 'sandbox' is running.\n", nobody.err);
}

TEST_F(Served, MovesOnInRealTime)
{
    start({"--exec", "sim speed 4"});
    const auto step = [&] { // moves on by one
        const std::string answer = attach({"-c", "sim step"}).out;
        return std::stoi(answer.substr(answer.find_first_of("0123456789")));
    };
    const int first = step();
    int calls = 0;
    program.waitUntil([&] { return step() > first + ++calls; });
    attach({"-c", "quit"});
    EXPECT_EQ(0, program.end().exitCode);
}

TEST_F(Served, TakesOverFromAProgramThatWasKilled)
{
    start();
    Client watching(program);
    watching.start({"--follow"});
    watching.waitFor("Zephyr Console:\n");
    ::kill(static_cast<pid_t>(program.process().processId()), SIGKILL);
    program.process().waitForFinished(kProcessTimeout);
    const Ended lost = watching.end();
    EXPECT_EQ(2, lost.exitCode);
    EXPECT_NE("", lost.err) << "it says so";
    EXPECT_EQ(2, attach({"-c", "wind show"}).exitCode);

    start();
    EXPECT_EQ(0, attach({"-c", "wind show"}).exitCode);
    attach({"-c", "quit"});
    EXPECT_EQ(0, program.end().exitCode);
}

TEST_F(Served, GoesOnWhenAClientIsKilledWhileItsLinesRun)
{
    start();
    program.directory().write("many.console", [] {
        std::string lines;
        for (int i = 0; i < 5000; ++i) {
            lines += "wind show\n";
        }
        return lines;
    }());
    for (int i = 0; i < 5; ++i) {
        Client client(program);
        client.start({"-f", "many.console"});
        client.waitFor(">> wind show\n");
        client.process().kill();
        client.process().waitForFinished(kProcessTimeout);
    }
    EXPECT_EQ(0, attach({"-c", "wind show"}).exitCode);
    attach({"-c", "quit"});
    EXPECT_EQ(0, program.end().exitCode);
}

TEST_F(Served, LosesNoLineOfEightClientsAtOnce)
{
    constexpr int kClients = 8;
    constexpr int kLines = 200;
    start();
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < kClients; ++i) {
        std::string lines;
        for (int line = 0; line < kLines; ++line) {
            lines += "echo client " + std::to_string(i) + " line " + std::to_string(line) + "\n";
        }
        const std::string file = "client" + std::to_string(i) + ".console";
        program.directory().write(file, lines);
        clients.push_back(std::make_unique<Client>(program));
        clients.back()->start({"-f", QString::fromStdString(file)});
    }
    for (int i = 0; i < kClients; ++i) {
        std::string expected;
        for (int line = 0; line < kLines; ++line) {
            const std::string text = "client " + std::to_string(i) + " line " + std::to_string(line);
            expected += ">> echo " + text + "\n    " + text + "\n\n";
        }
        const Ended ended = clients[static_cast<std::size_t>(i)]->end();
        EXPECT_EQ(0, ended.exitCode);
        EXPECT_EQ(expected, ended.out) << "in its order, and nothing of the others";
    }
    attach({"-c", "quit"});
    EXPECT_EQ(0, program.end().exitCode);
}

TEST_F(Served, ComplainsOfANameThatItCantHave)
{
    const Ended ended = program.run({"--headless", "--no-startup", "--serve", "a b"});
    EXPECT_EQ(1, ended.exitCode);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ(0u, ended.err.find("zephyr-sandbox: 'a b' can't be a program's name: "));
}

TEST_F(Served, MayHaveAWindow)
{
    program.setEnvironment("QT_QPA_PLATFORM", "offscreen");
    program.start({"--no-startup", "--serve", "sandbox"});
    program.waitUntil([&] { return attach({"-c", "wind set 3"}).exitCode == 0; });
    EXPECT_EQ("    Wind: 3 m/s, heading 90 degrees, gust 0 m/s.\n", attach({"-c", "wind show"}).out);
    attach({"-c", "quit"});
    EXPECT_EQ(0, program.end().exitCode);
}

} // namespace
} // namespace zephyr::test
