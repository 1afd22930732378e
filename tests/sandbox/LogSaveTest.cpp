#include "sandbox/Pipe.h"
#include "sandbox/SandboxFixture.h"
#include "support/TemporaryDirectory.h"

namespace zephyr::test {
namespace {

class LogSave : public SandboxFixture
{
protected:
    TemporaryDirectory directory;
    WorkingDirectory inside{directory.path()};
};

TEST_F(LogSave, WritesTheLogAsTheScreenHasIt)
{
    answerTo("wind show");
    sandbox.console().write(U"\u00c4 <b>\U0001F600</b>", console::Output);
    EXPECT_EQ(Lines({"    Wrote 7 lines to 'log.txt'."}), answerTo("log_save log.txt"));
    EXPECT_EQ("Zephyr Console:\n"
              "\n"
              ">> wind show\n"
              "    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.\n"
              "\n"
              "\u00c4 <b>\U0001F600</b>\n"
              ">> log_save log.txt\n",
              directory.read("log.txt"));
}

TEST_F(LogSave, ReplacesAFileThatIsThere)
{
    answerTo("log_save \"my log\"");
    answerTo("log_save \"my log\"");
    EXPECT_EQ("Zephyr Console:\n\n>> log_save \"my log\"\n    Wrote 3 lines to 'my log'.\n\n>> log_save \"my "
              "log\"\n",
              directory.read("my log"));
}

TEST_F(LogSave, SaysWhyAFileCantBeWritten)
{
    EXPECT_EQ(Lines({"    Can't write 'no/log.txt': No such file or directory."}),
              answerTo("log_save no/log.txt"));
    EXPECT_EQ(Lines({"    Can't write '.': Filename refers to a directory."}), answerTo("log_save ."));
}

TEST_F(LogSave, LeavesAPipeAsItIs)
{
    const Pipe pipe("pipe");
    EXPECT_EQ(Lines({"    Can't write 'pipe': it is no regular file."}), answerTo("log_save pipe"));
    EXPECT_TRUE(std::filesystem::is_fifo("pipe"));
}

TEST_F(LogSave, IsDescribedByHelp)
{
    EXPECT_EQ(Lines({"    Usage: log_save FILE\n"
                     "       Writes the log up to here as a text file.\n"
                     "       FILE: a file. Quote a name with spaces.",
                     ""}),
              answerTo("help log_save"));
}

TEST_F(LogSave, NeedsOneName)
{
    expectErrors("log_save",
                 {{"", "file: nothing given; expected a file."},
                  {"a b", "log_save: 'b' is one word too many; quote words that belong together."}},
                 "log_save FILE");
}

} // namespace
} // namespace zephyr::test
