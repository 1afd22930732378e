#include "zephyr/console/commands/StandardCommands.h"
#include "commands/CommandsFixture.h"
#include "support/TemporaryDirectory.h"

#include <stdexcept>

namespace zephyr::test {
namespace {

using namespace console::commands;

class StandardCommands : public CommandsFixture
{
protected:
    TemporaryDirectory mDirectory;
    WorkingDirectory mInside{mDirectory.path()};
};

TEST_F(StandardCommands, AreNotThereByDefault)
{
    EXPECT_EQ(Texts({"    alias", "    help"}), Texts({textsOfAnswer("help")[1], textsOfAnswer("help")[2]}));
}

TEST_F(StandardCommands, EchoWritesItsWords)
{
    addEcho(mConsole);
    EXPECT_EQ(Texts({"    a b  c /d"}), textsOfAnswer("echo a   \"b  c\" /d"));
    EXPECT_EQ(Texts({"    "}), textsOfAnswer("echo"));
    EXPECT_EQ(Texts({"     a"}), textsOfAnswer("echo \"\" a"));
}

TEST_F(StandardCommands, ClearCallsTheHost)
{
    int cleared = 0;
    addClear(mConsole, [&] { ++cleared; });
    EXPECT_EQ(Texts(), textsOfAnswer("clear"));
    EXPECT_EQ(1, cleared);
    EXPECT_EQ("    clear: 'all' is one word too many.", textsOfAnswer("clear all").front());
}

TEST_F(StandardCommands, HistoryShowsTypedLines)
{
    addHistory(mConsole);
    EXPECT_EQ(Texts(), textsOfAnswer("history"));
    mConsole.addToHistory(U"one");
    mConsole.addToHistory(U"two");
    EXPECT_EQ(Texts({"    one", "    two"}), textsOfAnswer("history"));
    EXPECT_EQ(Texts({"    two"}), textsOfAnswer("history 1"));
    EXPECT_EQ(Texts({"    one", "    two"}), textsOfAnswer("history 5"));
    EXPECT_EQ("    count: -1 is below 0.", textsOfAnswer("history -1").front());
}

TEST_F(StandardCommands, LogSaveWritesTheLog)
{
    addLogSave(mConsole);
    mConsole.write(U"\u00c4 <b>\U0001F600</b>", console::Output);
    EXPECT_EQ(Texts({"    Wrote 4 lines to 'my log.txt'."}), textsOfAnswer("log_save \"my log.txt\""));
    EXPECT_EQ("Zephyr Console:\n\n\u00c4 <b>\U0001F600</b>\n>> log_save \"my log.txt\"\n",
              mDirectory.read("my log.txt"));
}

TEST_F(StandardCommands, LogSaveSaysWhyItCant)
{
    addLogSave(mConsole);
    const FailureCounter failures(mConsole);
    EXPECT_EQ(Texts({"    Can't write 'no/log.txt': No such file or directory."}),
              textsOfAnswer("log_save no/log.txt"));
    EXPECT_EQ(Texts({"    Can't write '.': Filename refers to a directory."}), textsOfAnswer("log_save ."));
    EXPECT_EQ(Texts({"    Can't write '/dev/null': it is no regular file."}),
              textsOfAnswer("log_save /dev/null"));
    EXPECT_EQ(Texts({"    file: nothing given; expected a file.", "    Usage: log_save FILE"}),
              textsOfAnswer("log_save"));
    EXPECT_EQ(4U, failures.count());
}

TEST_F(StandardCommands, AliasSaveWritesWhatRestoresTheAliases)
{
    addAliasSave(mConsole);
    EXPECT_EQ(Texts({"    There are no aliases; nothing is written."}), textsOfAnswer("alias_save all"));
    mConsole.execute(U"alias calm \"wind set 0\"");
    mConsole.execute(U"alias two \"a; b c\"");
    EXPECT_EQ(Texts({"    Wrote 2 aliases to 'all.console'."}), textsOfAnswer("alias_save all"));
    EXPECT_EQ("// Aliases, as alias_save wrote them.\nalias calm \"wind set 0\"\nalias two \"a; b c\"\n",
              mDirectory.read("all.console"));
}

TEST_F(StandardCommands, AliasSaveRefusesWhatAFileCantHold)
{
    addAliasSave(mConsole);
    mConsole.execute(U"alias good \"c\"");
    mConsole.execute(U"alias split\nname \"c\"");
    mConsole.execute(U"alias torn \"a\nb\"");
    const FailureCounter failures(mConsole);
    EXPECT_EQ(Texts({"    Can't save alias 'split name': a console file can't hold its name.",
                     "    Can't save alias 'torn': a console file can't hold its line 'a b'."}),
              textsOfAnswer("alias_save all"));
    EXPECT_EQ(1U, failures.count());
    EXPECT_FALSE(mDirectory.has("all.console"));
}

TEST_F(StandardCommands, WriteNoFileWithoutAName)
{
    addAliasSave(mConsole);
    addLogSave(mConsole);
    addVars(mConsole);
    mConsole.execute(U"alias calm \"wind set 0\"");
    for (const char* const command : {"alias_save", "log_save", "vars save"}) {
        EXPECT_EQ(Texts({"    file: '' is no file.", "    Usage: " + std::string(command) + " FILE"}),
                  textsOfAnswer(std::string(command) + " \"\""));
        EXPECT_EQ("    file: other/ is no file.", textsOfAnswer(std::string(command) + " other/").front());
    }
    EXPECT_TRUE(std::filesystem::is_empty(mDirectory.path()));
}

TEST_F(StandardCommands, StartupFileIsRunQuietly)
{
    addEcho(mConsole);
    const std::size_t before = mConsole.logSize();
    EXPECT_TRUE(runStartupFile(mConsole, "none.console"));
    EXPECT_EQ(before, mConsole.logSize());
    mDirectory.write("start.console", "echo hello\n");
    EXPECT_TRUE(runStartupFile(mConsole, "start.console"));
    EXPECT_EQ(Texts({"echo hello", "    hello", ""}), textsOf(logLines(mConsole, before)));
}

TEST_F(StandardCommands, StartupFileTellsWhatFailed)
{
    add(mConsole, U"throw", U"", [] { throw std::runtime_error("no luck"); });
    addEcho(mConsole);
    std::filesystem::create_directory("folder");
    EXPECT_FALSE(runStartupFile(mConsole, "folder"));
    EXPECT_EQ("    Can't run 'folder': it is a directory.", log().back().text);
    EXPECT_FALSE(runStartupFile(mConsole, mDirectory.write("throws", "throw\necho on\n")));
    EXPECT_EQ("The console caught an exception: no luck", log().back().text);
    EXPECT_FALSE(runStartupFile(mConsole, mDirectory.write("wrong", "throw up\necho on\n")));
    EXPECT_EQ("    on", log()[log().size() - 2].text);
    mConsole.setDepthLimit(1);
    mConsole.execute(U"alias deep \"alias2; a\"");
    mConsole.execute(U"alias alias2 \"echo x\"");
    EXPECT_FALSE(runStartupFile(mConsole, mDirectory.write("deep", "deep\n")));
}

} // namespace
} // namespace zephyr::test
