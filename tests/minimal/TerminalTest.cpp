#include <gtest/gtest.h>

#include <QProcess>

namespace zephyr::console {
namespace {

TEST(MinimalTerminal, GreetsWhoeverALineNames)
{
    QProcess program;
    program.start(TERMINAL_PROGRAM);
    program.write("greet you\n");
    program.closeWriteChannel();
    ASSERT_TRUE(program.waitForFinished(120000));
    EXPECT_EQ(0, program.exitCode());
    EXPECT_EQ("Zephyr Console:\n\n>> greet you\n    Hello, you.\n\n", program.readAllStandardOutput());
}

} // namespace
} // namespace zephyr::console
