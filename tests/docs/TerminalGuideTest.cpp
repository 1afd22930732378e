#include <gtest/gtest.h>

#include <QProcess>

namespace zephyr::test {
namespace {

TEST(TerminalGuide, ShowsAProgramThatRunsTheLinesOfAPipe)
{
    QProcess program;
    program.start(TERMINAL_PROGRAM);
    program.write("help alias\nnobody");
    program.closeWriteChannel();
    ASSERT_TRUE(program.waitForFinished(120000));
    EXPECT_EQ(0, program.exitCode());
    const QByteArray log = program.readAllStandardOutput();
    EXPECT_TRUE(log.startsWith("Zephyr Console:\n\n>> help alias\n")) << log.constData();
    EXPECT_TRUE(
        log.endsWith(">> nobody\n'nobody' is not a recognized command.  Type 'help' to list available "
                     "commands.\n\n"))
        << log.constData();
}

} // namespace
} // namespace zephyr::test
