#include "sandbox/Pipe.h"
#include "sandbox/SandboxFixture.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/commands/StandardCommands.h"

#include <map>

namespace zephyr::test {
namespace {

using Aliases = std::map<std::u32string, std::vector<std::u32string>>;

Aliases aliasesOf(console::Console& console)
{
    Aliases aliases;
    console.forEachAlias([&](const std::u32string& name, const std::vector<std::u32string>& lines) {
        aliases.emplace(name, lines);
    });
    return aliases;
}

class AliasSave : public SandboxFixture
{
protected:
    /// The aliases of a fresh sandbox that has run the file `name`.
    static Aliases restoredFrom(const std::string& name)
    {
        sandbox::Sandbox other;
        other.console().execute(StringUtil::toU32String("run " + name));
        return aliasesOf(other.console());
    }

    void define(const std::u32string& name, const std::u32string& quotedLines)
    {
        sandbox.console().execute(U"alias " + name + U" \"" + quotedLines + U"\"");
        EXPECT_NE(nullptr, sandbox.console().lookupAlias(name)) << StringUtil::toString(name);
    }

    TemporaryDirectory directory;
    WorkingDirectory inside{directory.path()};
    sandbox::Sandbox fresh; // its runpath has the directory
};

TEST_F(AliasSave, WritesAConsoleFile)
{
    define(U"calm", U"wind set 0");
    define(U"storm", U"wind set /speed=45;wind gust 15; sim step 60");

    EXPECT_EQ(Lines({"    Wrote 2 aliases to 'mine.console'."}), answerTo("alias_save mine.console"));
    EXPECT_EQ("// Aliases, as alias_save wrote them.\n"
              "alias calm \"wind set 0\"\n"
              "alias storm \"wind set /speed=45; wind gust 15; sim step 60\"\n",
              directory.read("mine.console"));
}

TEST_F(AliasSave, RestoresExactlyWhatThereWas)
{
    define(U"calm", U"wind set 0");
    define(U"two", U"help;   wind  show  ");
    define(U"report", U"wind show > wind report.txt; wind show >! x");
    define(U"percent", U"100 % %1 %s \\n \\ 'x' `");
    define(U"\u00fcn\u00efcode\U0001F600", U"\u4e2d\u6587 \u00a0 \U0001F300; \ufb01");
    define(U"\"two words\"", U"help");
    define(U"\"a;b\"", U"help");
    define(U"x\"\"y", U"help");
    define(U"", U"help");
    define(U"gaps", U"help;;;wind show;;");
    define(U"nothing", U";");
    define(U"path", U"sim record /path=run.csv /steps=2");
    define(U"//", U"help");
    define(U"tab\tname", U"a\tb\rc");
    define(U"help", U"wind show");
    const Aliases before = aliasesOf(sandbox.console());

    EXPECT_EQ(Lines({"    Wrote 15 aliases to 'all.console'."}), answerTo("alias_save all"));
    EXPECT_EQ(before, restoredFrom("all"));
}

TEST_F(AliasSave, RestoresAnAliasThatHidesTheAliasCommand)
{
    define(U"zoo", U"help");
    define(U"alias", U"help alias");
    const Aliases before = aliasesOf(sandbox.console());

    answerTo("alias_save mine");
    EXPECT_EQ(before, restoredFrom("mine"));
}

TEST_F(AliasSave, AddsTheExtensionAndTakesQuotesOff)
{
    define(U"calm", U"wind set 0");
    EXPECT_EQ(Lines({"    Wrote 1 alias to 'my own.console'."}), answerTo("alias_save \"my own\""));
    EXPECT_TRUE(directory.has("my own.console"));
    EXPECT_EQ(Lines({"    Wrote 1 alias to 'a.txt.console'."}), answerTo("alias_save  a.txt"));
    EXPECT_TRUE(directory.has("a.txt.console"));
}

TEST_F(AliasSave, ReplacesAFileThatIsThere)
{
    directory.write("mine.console",
                    "alias old \"help\"\n// and much more that is longer than what replaces it\n");
    define(U"calm", U"wind set 0");
    answerTo("alias_save mine");
    EXPECT_EQ("// Aliases, as alias_save wrote them.\nalias calm \"wind set 0\"\n",
              directory.read("mine.console"));
}

TEST_F(AliasSave, NamesEachAliasThatAFileCantHoldAndWritesNothing)
{
    directory.write("mine.console", "as it was");
    define(U"fine", U"help");
    sandbox.console().execute(U"alias torn \"help\nquit\"");
    sandbox.console().execute(U"alias two\uffffwords \"help\"");
    sandbox.console().execute(U"alias split\nname \"help\"");

    EXPECT_EQ(Lines({"    Can't save alias 'split name': a console file can't hold its name.",
                     "    Can't save alias 'torn': a console file can't hold its line 'help quit'.",
                     "    Can't save alias 'two words': a console file can't hold its name."}),
              answerTo("alias_save mine"));
    EXPECT_EQ("as it was", directory.read("mine.console"));
}

TEST_F(AliasSave, WritesNothingWhenThereAreNoAliases)
{
    EXPECT_EQ(Lines({"    There are no aliases; nothing is written."}), answerTo("alias_save mine"));
    EXPECT_FALSE(directory.has("mine.console"));
}

TEST_F(AliasSave, SaysWhyAFileCantBeWritten)
{
    define(U"calm", U"wind set 0");
    std::filesystem::create_directory(directory.path() / "d.console");
    EXPECT_EQ(Lines({"    Can't write 'no/such.console': No such file or directory."}),
              answerTo("alias_save no/such"));
    EXPECT_EQ(Lines({"    Can't write 'd.console': Filename refers to a directory."}),
              answerTo("alias_save d"));
}

TEST_F(AliasSave, LeavesAPipeAsItIs)
{
    define(U"calm", U"wind set 0");
    const Pipe pipe("p.console");
    EXPECT_EQ(Lines({"    Can't write 'p.console': it is no regular file."}), answerTo("alias_save p"));
    EXPECT_TRUE(std::filesystem::is_fifo("p.console"));
}

TEST_F(AliasSave, IsDescribedByHelp)
{
    EXPECT_EQ(Lines({"    Usage: alias_save FILE\n"
                     "       Writes all aliases as a console file, which run restores.\n"
                     "       FILE: a file. The extension may be left out; quote a name with spaces.",
                     ""}),
              answerTo("help alias_save"));
}

TEST_F(AliasSave, NeedsOneName)
{
    define(U"calm", U"wind set 0");
    const std::string nothing = "file: nothing given; expected a file.";
    expectErrors("alias_save",
                 {{"", nothing},
                  {"\"\"", "file: '' is no file."},
                  {"> out.txt", nothing},
                  {"a b", "alias_save: 'b' is one word too many; quote words that belong together."}},
                 "alias_save FILE");
}

TEST_F(AliasSave, RestoresAnyAliasExactlyOrRefusesIt)
{
    const std::vector<std::u32string> pieces{U"a",
                                             U"b c",
                                             U"\"",
                                             U"\"\"",
                                             U"a\"b c\"d",
                                             U";",
                                             U"a;b",
                                             U" a",
                                             U"a ",
                                             U"\u00a0a",
                                             U"a\nb",
                                             U"\r",
                                             U">",
                                             U">!",
                                             U"> f",
                                             U"\uffff",
                                             U"\ufffd",
                                             U"\ufeff",
                                             U"//",
                                             U"alias",
                                             U"\xd800",
                                             U"\U0010ffff",
                                             std::u32string(1, U'\0')};
    std::size_t restored = 0;
    for (const std::u32string& name : pieces) {
        for (const std::u32string& text : pieces) {
            console::Console console;
            console::commands::addAliasSave(console);
            console.execute(U"alias " + name + U" \"" + text + U"; " + text + U"\"");
            std::filesystem::remove("one.console");
            console.execute(U"alias_save one");
            if (directory.has("one.console")) {
                console::Console reader;
                reader.runFile("one.console");
                ASSERT_EQ(aliasesOf(console), aliasesOf(reader)) << StringUtil::toString(name + U" " + text);
                ++restored;
            }
        }
    }
    EXPECT_GT(restored, 100U);
}

} // namespace
} // namespace zephyr::test
