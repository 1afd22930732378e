#include "support/SystemText.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QString>

#include <array>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace zephyr::console::remote {
namespace {

using test::TemporaryDirectory;

constexpr int kPatience = 120000;   // milliseconds
constexpr qint64 kBytesAtOnce = 64; // slower than a program writes

const std::string kStart = "Zephyr Console:\n\n";
const std::string kEnd = "The program ends.\n";

/// What the program wrote whose input was `input`.
std::string outputFor(const QByteArray& input)
{
    QProcess program;
    program.start(TERMINAL_PROGRAM);
    program.write(input);
    program.closeWriteChannel();
    EXPECT_TRUE(program.waitForFinished(kPatience));
    EXPECT_EQ(QProcess::NormalExit, program.exitStatus());
    return program.readAllStandardOutput().toStdString();
}

/// What a shell's command writes, which finds the program as $P.
std::string outputOf(const QString& command)
{
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("P", TERMINAL_PROGRAM);
    environment.insert("LC_ALL", "C.UTF-8"); // or Qt complains, of itself
    shell.setProcessEnvironment(environment);
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start("sh", {"-c", command});
    EXPECT_TRUE(shell.waitForFinished(kPatience));
    return shell.readAllStandardOutput().toStdString();
}

TEST(ConsoleTerminalPipe, RunsEachLineAndPrintsTheLogAsItIs)
{
    EXPECT_EQ(kStart + ">> say a\nsaid a\n\n>> say \x1b[1m\nsaid \x1b[1m\n\n" + kEnd,
              outputFor("say a\nsay \x1b[1m\n"));
}

TEST(ConsoleTerminalPipe, RunsALastLineWithoutALineFeed)
{
    EXPECT_EQ(kStart + ">> say a\nsaid a\n\n>> say b\nsaid b\n\n" + kEnd, outputFor("say a\r\nsay b"));
}

TEST(ConsoleTerminalPipe, EndsAtOnceWhereTheInputIsEmpty)
{
    EXPECT_EQ(kStart + kEnd, outputFor(""));
    EXPECT_EQ(kStart + kEnd, outputOf("$P < /dev/null"));
}

TEST(ConsoleTerminalPipe, RunsTheLinesOfAFile)
{
    const TemporaryDirectory folder;
    std::string lines;
    std::string answers;
    for (int i = 0; i < 10000; ++i) { // more than is read at once
        lines += "say " + std::to_string(i) + "\n";
        answers += ">> say " + std::to_string(i) + "\nsaid " + std::to_string(i) + "\n\n";
    }
    const auto file = QString::fromStdString(folder.write("lines", lines).string());
    EXPECT_EQ(kStart + answers + kEnd, outputOf("$P < " + file));
}

TEST(ConsoleTerminalPipe, AnswersALineBeforeTheNextOneComes)
{
    QProcess program;
    program.start(TERMINAL_PROGRAM);
    std::string output;
    for (const QByteArray line : {"one", "two"}) {
        program.write("say " + line + "\n");
        const std::string answer = "said " + line.toStdString() + "\n\n";
        while (output.find(answer) == std::string::npos) {
            ASSERT_TRUE(program.waitForReadyRead(kPatience)) << output;
            output += program.readAllStandardOutput().toStdString();
        }
    }
    program.closeWriteChannel();
    EXPECT_TRUE(program.waitForFinished(kPatience));
}

TEST(ConsoleTerminalPipe, EndsWhereALineEndsTheRun)
{
    EXPECT_EQ(kStart + ">> end\n" + kEnd, outputFor("end\nsay never\n"));
}

TEST(ConsoleTerminalPipe, GoesOnAfterALineThatThrows)
{
    EXPECT_EQ(kStart + ">> throw\nThe console caught an exception: thrown\n>> say a\nsaid a\n\n" + kEnd,
              outputFor("throw\nsay a\n"));
}

TEST(ConsoleTerminalPipe, EndsALoopOfAliases)
{
    const std::string output = outputFor("alias again again\nagain\nsay alive\n");
    EXPECT_NE(std::string::npos, output.find("said alive\n\n" + kEnd)) << output;
}

TEST(ConsoleTerminalPipe, LeavesOutALineThatIsTooLong)
{
    const QByteArray tooLong(3 << 20, 'x');
    EXPECT_EQ(kStart + ">> say a\nsaid a\n\n>> say b\nsaid b\n\n" + kEnd,
              outputFor("say a\nsay " + tooLong + "\nsay b\n"));
    EXPECT_EQ("A line of more than 1 MiB was left out.\n",
              outputOf("head -c 3000000 /dev/zero | $P 2>&1 >/dev/null"));
}

TEST(ConsoleTerminalPipe, MayBeDestroyedByItsLine)
{
    QProcess program;
    program.start(TERMINAL_PROGRAM);
    program.write("say a\ndestroy\nsay never\n");
    std::string output;
    while (output.find("Destroyed.\n") == std::string::npos) {
        ASSERT_TRUE(program.waitForReadyRead(kPatience)) << output;
        output += program.readAllStandardOutput().toStdString();
    }
    EXPECT_EQ(kStart + ">> say a\nsaid a\n\n>> destroy\nDestroyed.\n", output);
    program.terminate();
    EXPECT_TRUE(program.waitForFinished(kPatience));
}

TEST(ConsoleTerminalPipe, EndsQuietlyWhenNobodyReadsTheOutput)
{
    const QString closed =
        "yes 'say a' 2>/dev/null | { $P aside; echo status $? >&2; } | head -n 1 > /dev/null";
    EXPECT_EQ(kEnd + "status 0\n", outputOf(closed));
    EXPECT_EQ(kEnd + "status 0\n", outputOf("trap '' PIPE; " + closed));
}

TEST(ConsoleTerminalPipe, ComplainsOnceOfAnOutputThatCantBeWritten)
{
    EXPECT_EQ("Can't print the console's log: " + test::systemText(std::errc::no_space_on_device) + ".\n" +
                  kEnd,
              outputOf("printf 'say a\\nsay b\\n' | $P aside 2>&1 > /dev/full"));
}

TEST(ConsoleTerminalPipe, WaitsForAReaderWhereTheOutputDoesntBlock)
{
    const TemporaryDirectory folder;
    std::string lines;
    std::string answers;
    for (int i = 0; i < 10000; ++i) { // more than the pipe takes
        lines += "say " + std::to_string(i) + "\n";
        answers += ">> say " + std::to_string(i) + "\nsaid " + std::to_string(i) + "\n\n";
    }
    std::array<int, 2> pipe{};
    ASSERT_EQ(0, ::pipe2(pipe.data(), O_CLOEXEC));
    ASSERT_EQ(0, ::fcntl(pipe[1], F_SETFL, O_NONBLOCK));
    ASSERT_LT(
        0, ::fcntl(pipe[1], F_SETPIPE_SZ, 1)); // a page, which must be read whole before more can be written
    QProcess program;
    program.setStandardInputFile(QString::fromStdString(folder.write("lines", lines).string()));
    program.setChildProcessModifier([&] { ::dup2(pipe[1], STDOUT_FILENO); });
    program.start(TERMINAL_PROGRAM, {"aside"});
    EXPECT_TRUE(program.waitForStarted(kPatience));
    ::close(pipe[1]);
    QFile output;
    ASSERT_TRUE(
        output.open(pipe[0], QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle));
    std::string text;
    for (QByteArray some = output.read(kBytesAtOnce); !some.isEmpty(); some = output.read(kBytesAtOnce)) {
        text += some.toStdString();
    }
    EXPECT_EQ(kStart + answers, text);
    EXPECT_TRUE(program.waitForFinished(kPatience));
}

} // namespace
} // namespace zephyr::console::remote
