#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcess>
#include <QString>

#include <csignal>
#include <string>

namespace zephyr::console::remote {
namespace {

using test::TemporaryDirectory;

constexpr int kPatience = 120000; // milliseconds

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

TEST(ConsoleTerminalPipe, RunsALineThatAnotherOneHoldsUpAfterIt)
{
    const TemporaryDirectory folder;
    const std::string go = folder.write("go", "").string();
    EXPECT_EQ(kStart + ">> nest " + go +
                  "\n>> say nested\nsaid nested\n\n>> say unnested\nsaid unnested\n\n\n" +
                  ">> say after\nsaid after\n\n" + kEnd,
              outputFor(QByteArray::fromStdString("nest " + go + "\nsay after\n")));
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
    // With the signal ignored, the end of the pipe is an error; without, it ends the program.
    EXPECT_EQ("Zephyr Console:\n", outputOf("trap '' PIPE; yes 'say a' | $P | head -n 1"));
    EXPECT_EQ("Zephyr Console:\n", outputOf("yes 'say a' | $P | head -n 1"));
}

} // namespace
} // namespace zephyr::console::remote
