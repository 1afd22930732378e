#include "zephyr/console/RunConsoleFileCommand.h"

#include "support/AssertRecorder.h"
#include "support/ConsoleDriver.h"
#include "support/LogLine.h"
#include "support/RunCommandFixture.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace zephyr::console {
namespace {

using test::AssertRecorder;
using test::echo;
using test::kNothingRun;
using test::kNotOpen;
using test::kRunUsage;
using test::notRecognized;
using test::output;
using Texts = std::vector<std::string>;

static_assert(std::is_base_of_v<ConsoleCommand, RunConsoleFileCommand>);
static_assert(std::is_default_constructible_v<RunConsoleFileCommand>);

class RunCommand : public test::RunCommandFixture
{
protected:
    /// Writes a console file of one line, an unknown word.
    void writeFile(const std::filesystem::path& name, const std::string& word)
    {
        mDirectory.write(name, word + "\n");
    }

    void expectRuns(const std::string& line, const std::string& word)
    {
        EXPECT_EQ(logOf(line), around(line, unknown(word)));
    }

    void expectNothingRun(const std::string& line)
    {
        const AssertRecorder recorder;
        EXPECT_EQ(logOf(line), around(line, {kNothingRun}));
        EXPECT_EQ(recorder.failures(), Texts());
    }

    void expectUsage(const std::string& line) { EXPECT_EQ(logOf(line), around(line, {kRunUsage})); }
};

TEST(RunCommandAlone, IsCalledRun) { EXPECT_EQ(RunConsoleFileCommand().name(), U"run"); }

TEST(RunCommandAlone, HasThreeArgumentsInOrderOfTheirNames)
{
    const RunConsoleFileCommand command;
    std::vector<std::u32string> names;
    command.forEachArg([&names](const std::u32string& name) { names.push_back(name); });
    EXPECT_EQ(names, std::vector<std::u32string>({U"list", U"path_append", U"path_list"}));
    EXPECT_EQ(command.argHandlerCount(), 3U);
}

TEST(RunCommandAlone, CompletesNothing)
{
    RunConsoleFileCommand command;
    EXPECT_TRUE(command.getAutoCompleteResults(ConsoleArgs({U"run"})).empty());
    EXPECT_TRUE(command.getAutoCompleteResults(ConsoleArgs({U"run", U"l"})).empty());
}

TEST(RunCommandAlone, IsRegisteredByTheHostOnly)
{
    Console console;
    EXPECT_EQ(console.lookupCommand(U"run"), nullptr);
    console.registerCommand(std::make_unique<RunConsoleFileCommand>());
    EXPECT_NE(console.lookupCommand(U"run"), nullptr);
}

TEST(RunCommandAlone, WorksOnTheConsoleThatItIsGiven)
{
    RunConsoleFileCommand command;
    Console first;
    Console second;
    command.execute(ConsoleArgs({U"run", U"path_append", U"/only/here"}), first);
    command.execute(ConsoleArgs({U"run"}), second);
    EXPECT_EQ(test::logLines(first), std::vector<test::LogLine>({output("Done.", 4)}));
    EXPECT_EQ(first.runPaths().size(), 3U);
    EXPECT_EQ(test::logLines(second), std::vector<test::LogLine>({kRunUsage}));
    EXPECT_EQ(second.runPaths().size(), 2U);
}

TEST_F(RunCommand, DescribesItsArgumentsInTheOrderOfTheirNames)
{
    EXPECT_EQ(
        logOf("help run"),
        Lines({echo("help run"),
               {"    list: Lists all .console files found in the current runpath.", Output, 4},
               output(""),
               {"    path_append: Appends a path to the runpath.  Once appended, the specified path will be "
                "searched in when invoking the run command with a console file name.",
                Output, 4},
               output(""),
               {"    path_list: Lists all paths in the runpath.  These are the paths in which console files "
                "will be searched for when invoking the run command with a console file name.",
                Output, 4},
               output(""),
               output("")}));
}

TEST_F(RunCommand, HasAHelpTextForEachArgument)
{
    EXPECT_EQ(logOf("help run list"),
              around("help run list", {output("Lists all .console files found in the current runpath.", 4),
                                       output("Usage: run list", 4)}));
    EXPECT_EQ(logOf("help run path_list"),
              around("help run path_list",
                     {output("Lists all paths in the runpath.  These are the paths in which console files "
                             "will be searched for when invoking the run command with a console file name.",
                             4),
                      output("Usage: run path_list", 4)}));
    EXPECT_EQ(logOf("help run path_append"),
              around("help run path_append",
                     {output("Appends a path to the runpath.  Once appended, the specified path will be "
                             "searched in when invoking the run command with a console file name.",
                             4),
                      output("Usage: run path_append", 4)}));
    EXPECT_EQ(logOf("help run startup"),
              around("help run startup", {output("'startup' is not a valid argument.", 4)}));
}

TEST_F(RunCommand, AnswersTheBareCommandWithItsUsage)
{
    EXPECT_EQ(logOf("run"), Lines({echo("run"), {"    run command help text", Output, 4}, {"", Output, 0}}));
    expectUsage("run ");
}

TEST_F(RunCommand, AnswersTooManyWordsWithItsUsage)
{
    writeFile("a.console", "wrong");
    writeFile(".console", "wrong");
    expectUsage("run a b");
    expectUsage("run a.console b c");
    expectUsage("run  a");
    expectUsage("run a  ");
    expectUsage("run   ");
    expectUsage("run LIST x");
}

TEST_F(RunCommand, RunsAFileByItsName)
{
    writeFile("startup.console", "one");
    EXPECT_EQ(logOf("run startup"), Lines({echo("run startup"), echo("one"), output(notRecognized("one")),
                                           output(""), output("")}));
}

TEST_F(RunCommand, TakesTheNameWithAndWithoutItsExtension)
{
    writeFile("startup.console", "one");
    writeFile("startup", "wrong");
    writeFile("startup.console.console", "wrong");
    expectRuns("run startup", "one");
    expectRuns("run startup.console", "one");
    expectRuns("run startup.console.console", "wrong");
}

TEST_F(RunCommand, AddsTheExtensionToAnyOtherEnding)
{
    const std::vector<std::string> names = {"startup.CONSOLE", "startup.Console", "a.consol",    "a.consoles",
                                            "console",         "aconsole",        "a.console.",  "x",
                                            "a.txt",           "onsole",          "a.console\"", "e\u0301"};
    for (const std::string& name : names) {
        writeFile(name, "wrong");
        writeFile(name + ".console", "one");
        expectRuns("run " + name, "one");
    }
}

TEST_F(RunCommand, AddsNothingToANameThatEndsWithTheExtension)
{
    for (const std::string name : {".console", "..console", "-.console", "\u00E9.console", "sub/.console"}) {
        writeFile(name, "one");
        writeFile(name + ".console", "wrong");
        expectRuns("run " + name, "one");
    }
}

TEST_F(RunCommand, RunsTheFileThatIsAllExtensionForAnEmptyName)
{
    writeFile(".console", "one");
    expectRuns("run  ", "one");
}

TEST_F(RunCommand, RunsAFileWithAnArgumentsNameOnlyByItsWholeName)
{
    for (const std::string name : {"list", "path_list", "path_append"}) {
        writeFile(name + ".console", "one");
        const Lines lines = logOf("run " + name);
        EXPECT_EQ(std::count(lines.begin(), lines.end(), echo("one")), 0);
        expectRuns("run " + name + ".console", "one");
    }
}

TEST_F(RunCommand, MatchesItsArgumentsWholeAndCaseSensitively)
{
    for (const std::string name : {"List", "lis", "list_", "path", "PATH_LIST", "\"list\""}) {
        writeFile(name + ".console", "one");
        expectRuns("run " + name, "one");
    }
}

TEST_F(RunCommand, SaysThatItFoundNoFile)
{
    EXPECT_EQ(logOf("run startup"),
              Lines({echo("run startup"),
                     {"    ERROR: Didn't find a console file with the specified name.  Nothing will be run.",
                      Output, 4},
                     {"", Output, 0}}));
    writeFile("startup", "wrong");
    expectNothingRun("run startup");
    setRunpath({});
    expectNothingRun("run startup.console");
}

TEST_F(RunCommand, KeepsTheQuotesOfAQuotedName)
{
    writeFile("two words.console", "wrong");
    expectNothingRun("run \"two words\"");
    expectNothingRun("run \"two words.console\"");
    writeFile("\"two words\".console", "one");
    expectRuns("run \"two words\"", "one");
}

TEST_F(RunCommand, RunsFilesOfAnyCodePoints)
{
    writeFile("\u00E9\u20AC\U0001F600.console", "one");
    expectRuns("run \u00E9\u20AC\U0001F600", "one");
    writeFile("\xFF.console", "wrong");
    expectNothingRun("run \uFFFD");
    writeFile("\uFFFD.console", "two");
    EXPECT_NO_THROW(mConsole.execute(U"run " + std::u32string(1, char32_t(0xD800))));
    EXPECT_EQ(log().back(), output(""));
    EXPECT_EQ(log()[log().size() - 4], echo("two"));
}

TEST_F(RunCommand, RunsTheFirstOfSeveralFilesAfterAWarning)
{
    writeFile("one/a.console", "first");
    writeFile("two/a.console", "second");
    setRunpath({at("one"), at("two")});
    EXPECT_EQ(logOf("run a"),
              Lines({echo("run a"), output("WARNING: 'a.console' resolved to multiple paths...", 4),
                     output(at("one/a.console").string(), 8), output(at("two/a.console").string(), 8),
                     output("The console file at '" + at("one/a.console").string() + "' will be run.", 4),
                     echo("first"), output(notRecognized("first")), output(""), output("")}));
}

TEST_F(RunCommand, SaysThatItFoundNoFileForADirectory)
{
    makeDirectory("a.console");
    const AssertRecorder recorder;
    EXPECT_EQ(logOf("run a"), around("run a", {kNothingRun}));
    EXPECT_EQ(recorder.failures(), kNotOpen);
}

TEST_F(RunCommand, WarnsBeforeItSaysThatItFoundNoFile)
{
    makeDirectory("one/a.console");
    writeFile("two/a.console", "wrong");
    setRunpath({"one", "two"});
    const AssertRecorder recorder;
    EXPECT_EQ(logOf("run a"),
              around("run a", {output("WARNING: 'a.console' resolved to multiple paths...", 4),
                               output("one/a.console", 8), output("two/a.console", 8),
                               output("The console file at 'one/a.console' will be run.", 4), kNothingRun}));
}

TEST_F(RunCommand, IsSilentAboutCommandsThatFailAndFilesThatAreEmpty)
{
    mDirectory.write("a.console", "");
    EXPECT_EQ(logOf("run a"), around("run a", {}));
    mDirectory.write("a.console", "// note\n\nunknown\n");
    expectRuns("run a", "unknown");
}

TEST_F(RunCommand, RunsAFileForATypedLine)
{
    writeFile("a.console", "one");
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("run a\n");
    EXPECT_EQ(log(), around("run a", unknown("one")));
    EXPECT_EQ(user.input(), "");
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "run a");
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "run a");
}

TEST_F(RunCommand, LeavesTheLineAloneOnTab)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("run li");
    EXPECT_FALSE(user.press(Qt::Key_Tab));
    EXPECT_FALSE(user.press(Qt::Key_Tab));
    EXPECT_EQ(user.input(), "run li");
}

TEST_F(RunCommand, AppendsADirectoryToTheRunpathOnce)
{
    EXPECT_EQ(logOf("run path_append C:\\scripts"),
              Lines({echo("run path_append C:\\scripts"), {"    Done.", Output, 4}, {"", Output, 0}}));
    EXPECT_EQ(mConsole.runPaths(), Paths({mDirectory.path(), "C:\\scripts"}));
    EXPECT_EQ(logOf("run path_append C:\\scripts"),
              Lines({echo("run path_append C:\\scripts"),
                     {"    The provided path is already in the runpath.", Output, 4},
                     {"", Output, 0}}));
    EXPECT_EQ(mConsole.runPaths(), Paths({mDirectory.path(), "C:\\scripts"}));
}

TEST_F(RunCommand, AppendsAPathThatOnlyResolvesToOneInTheRunpath)
{
    setRunpath({"a/b"});
    EXPECT_EQ(logOf("run path_append a//b"),
              around("run path_append a//b", {output("The provided path is already in the runpath.", 4)}));
    EXPECT_EQ(logOf("run path_append a/./b"), around("run path_append a/./b", {output("Done.", 4)}));
    EXPECT_EQ(logOf("run path_append a/b/"), around("run path_append a/b/", {output("Done.", 4)}));
    EXPECT_EQ(mConsole.runPaths(), Paths({"a/b", "a/./b", "a/b/"}));
}

TEST_F(RunCommand, SaysThatThePathToAppendIsMissing)
{
    const Lines answer = {
        {"    No path provided.", Output, 4},
        {"", Output, 0},
        {"    Appends a path to the runpath.  Once appended, the specified path will be searched "
         "in when invoking the run command with a console file name.",
         Output, 4},
        {"    Usage: run path_append", Output, 4}};
    EXPECT_EQ(logOf("run path_append"), around("run path_append", answer));
    EXPECT_EQ(logOf("run path_append "), around("run path_append ", answer));
    EXPECT_EQ(mConsole.runPaths(), Paths({mDirectory.path()}));
}

TEST_F(RunCommand, AppendsTheFirstOfSeveralPaths)
{
    EXPECT_EQ(logOf("run path_append a b c"), around("run path_append a b c", {output("Done.", 4)}));
    EXPECT_EQ(mConsole.runPaths(), Paths({mDirectory.path(), "a"}));
}

TEST_F(RunCommand, AppendsAnEmptyWordAsAnEmptyPath)
{
    setRunpath({});
    EXPECT_EQ(logOf("run path_append  a"), around("run path_append  a", {output("Done.", 4)}));
    EXPECT_EQ(mConsole.runPaths(), Paths({""}));
}

TEST_F(RunCommand, AppendsPathsOfAnyCodePoints)
{
    setRunpath({});
    execute("run path_append \u00E9\u20AC\U0001F600");
    execute("run path_append \"two words\"");
    mConsole.execute(U"run path_append " + std::u32string(1, char32_t(0xD800)));
    EXPECT_EQ(mConsole.runPaths(), Paths({"\u00E9\u20AC\U0001F600", "\"two words\"", "\uFFFD"}));
}

TEST_F(RunCommand, ReadsNoSwitches)
{
    setRunpath({});
    EXPECT_EQ(logOf("run path_append /path=a"), around("run path_append /path=a", {output("Done.", 4)}));
    EXPECT_EQ(mConsole.runPaths(), Paths({"/path=a"}));
    expectNothingRun("run /path=a");
    expectUsage("run /path=a b");
}

TEST_F(RunCommand, RunsFilesFromAnAppendedDirectory)
{
    writeFile("sub/a.console", "one");
    expectNothingRun("run a");
    execute("run path_append sub");
    expectRuns("run a", "one");
}

TEST_F(RunCommand, ListsTheRunpath)
{
    setRunpath({mDirectory.path(), "a//b/./", "two words", ""});
    EXPECT_EQ(logOf("run path_list"),
              Lines({echo("run path_list"), output(mDirectory.path().string(), 4), output("a//b/./", 4),
                     output("two words", 4), output("", 4), output("")}));
}

TEST_F(RunCommand, ListsAnEmptyRunpathWithNothing)
{
    setRunpath({});
    EXPECT_EQ(logOf("run path_list"), Lines({echo("run path_list"), output("")}));
}

TEST_F(RunCommand, ListsPathsThatAreNotWellFormedWithReplacements)
{
    setRunpath({"\xFF odd", "\u00E9\U0001F600", "caf\xC3"});
    EXPECT_EQ(logOf("run path_list"),
              around("run path_list",
                     {output("\uFFFD odd", 4), output("\u00E9\U0001F600", 4), output("caf\uFFFD", 4)}));
}

TEST_F(RunCommand, IgnoresWordsBehindPathList)
{
    setRunpath({"a"});
    EXPECT_EQ(logOf("run path_list x y"), around("run path_list x y", {output("a", 4)}));
}

TEST_F(RunCommand, ListsTheRunpathOfANewConsole)
{
    const Console console;
    mConsole.removeRunpath(mDirectory.path());
    for (const std::filesystem::path& path : console.runPaths()) {
        mConsole.appendRunpath(path);
    }
    EXPECT_EQ(
        logOf("run path_list"),
        around("run path_list", {output(std::filesystem::read_symlink("/proc/self/exe").parent_path(), 4),
                                 output(mDirectory.path().string(), 4)}));
}

TEST_F(RunCommand, WritesItsAnswersIntoARedirection)
{
    writeFile("a.console", "// nothing\n");
    setRunpath({"x", ""});
    execute("run path_list > paths");
    execute("run missing > missing");
    execute("run path_append y > append");
    execute("run > usage");
    execute("run path_append > ask");
    EXPECT_EQ(mDirectory.read("paths"), "    x\n    \n");
    EXPECT_EQ(mDirectory.read("missing"), "    ERROR: Didn't find a console file with the specified name.  "
                                          "Nothing will be run.\n");
    EXPECT_EQ(mDirectory.read("append"), "    Done.\n");
    EXPECT_EQ(mDirectory.read("usage"), "    run command help text\n");
    EXPECT_EQ(mDirectory.read("ask").substr(0, 23), "    No path provided.\n\n");
}

} // namespace
} // namespace zephyr::console
