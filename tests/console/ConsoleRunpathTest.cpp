#include "support/AssertRecorder.h"
#include "support/ConsoleDriver.h"
#include "support/ConsoleFilesFixture.h"
#include "support/LogLine.h"
#include "support/Unprivileged.h"
#include "zephyr/common/SystemPaths.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

namespace zephyr::console {
namespace {

using test::AssertRecorder;
using test::echo;
using test::kNotOpen;
using test::kTooLongName;
using test::notRecognized;
using test::output;
using Texts = std::vector<std::string>;

class ConsoleRunpath : public test::ConsoleFilesFixture
{
protected:
    const Paths& paths() const { return mConsole.runPaths(); }

    /// Expects that a runpath with the one path has the other.
    void expectEqual(const std::filesystem::path& entry, const std::filesystem::path& equal)
    {
        setRunpath({"first", entry, "last"});
        EXPECT_FALSE(mConsole.appendRunpath(equal)) << equal;
        EXPECT_EQ(paths().size(), 3U) << equal;
        EXPECT_TRUE(mConsole.removeRunpath(equal)) << equal;
        EXPECT_EQ(paths(), Paths({"first", "last"})) << equal;
    }

    /// Expects that a runpath with the one path lacks the other.
    void expectDifferent(const std::filesystem::path& entry, const std::filesystem::path& different)
    {
        setRunpath({"first", entry, "last"});
        EXPECT_FALSE(mConsole.removeRunpath(different)) << different;
        EXPECT_EQ(paths(), Paths({"first", entry, "last"})) << different;
        EXPECT_TRUE(mConsole.appendRunpath(different)) << different;
        EXPECT_EQ(paths().back().native(), different.native());
    }
};

TEST_F(ConsoleRunpath, GrowsAtItsEnd)
{
    setRunpath({});
    EXPECT_TRUE(mConsole.appendRunpath("b"));
    EXPECT_TRUE(mConsole.appendRunpath("a"));
    EXPECT_TRUE(mConsole.appendRunpath("c"));
    EXPECT_EQ(paths(), Paths({"b", "a", "c"}));
}

TEST_F(ConsoleRunpath, TakesNoPathTwice)
{
    setRunpath({"a", "b"});
    EXPECT_FALSE(mConsole.appendRunpath("a"));
    EXPECT_FALSE(mConsole.appendRunpath("b"));
    EXPECT_EQ(paths(), Paths({"a", "b"}));
}

TEST_F(ConsoleRunpath, TakesARemovedPathAgainAtItsEnd)
{
    setRunpath({"a", "b"});
    EXPECT_FALSE(mConsole.appendRunpath("a"));
    EXPECT_TRUE(mConsole.removeRunpath("a"));
    EXPECT_TRUE(mConsole.appendRunpath("a"));
    EXPECT_EQ(paths(), Paths({"b", "a"}));
}

TEST_F(ConsoleRunpath, KeepsTheOrderOfTheRestWhenAPathGoes)
{
    setRunpath({"a", "b", "c", "d"});
    EXPECT_TRUE(mConsole.removeRunpath("b"));
    EXPECT_EQ(paths(), Paths({"a", "c", "d"}));
    EXPECT_TRUE(mConsole.removeRunpath("d"));
    EXPECT_EQ(paths(), Paths({"a", "c"}));
    EXPECT_TRUE(mConsole.removeRunpath("a"));
    EXPECT_EQ(paths(), Paths({"c"}));
}

TEST_F(ConsoleRunpath, StaysAsItIsWhereThePathToRemoveIsAbsent)
{
    setRunpath({"a", "b"});
    EXPECT_FALSE(mConsole.removeRunpath("c"));
    EXPECT_EQ(paths(), Paths({"a", "b"}));
    setRunpath({});
    EXPECT_FALSE(mConsole.removeRunpath("a"));
    EXPECT_EQ(paths(), Paths());
}

TEST_F(ConsoleRunpath, TakesRepeatedSeparatorsForOne)
{
    expectEqual("a/b", "a//b");
    expectEqual("a//b", "a/b");
    expectEqual("/a/b/", "/a///b//");
    expectEqual("", "");
}

TEST_F(ConsoleRunpath, ResolvesNothingWhenItComparesPaths)
{
    makeDirectory("a/b");
    std::filesystem::create_directory_symlink("a", at("link"));
    for (const std::filesystem::path path :
         {"a/./b", "./a/b", "a/b/", "a/b/.", "a/../a/b", "A/b", "a/B", "link/b", "a/", "a/b/c", "a\\b"}) {
        expectDifferent("a/b", path);
    }
    expectDifferent("a", at("a"));
    expectDifferent(at("a"), "a");
}

TEST_F(ConsoleRunpath, KeepsEachPathAsItWasWritten)
{
    setRunpath({});
    mConsole.appendRunpath("a//b/./");
    mConsole.appendRunpath("\xFF ill-formed");
    EXPECT_EQ(paths()[0].native(), "a//b/./");
    EXPECT_EQ(paths()[1].native(), "\xFF ill-formed");
}

TEST_F(ConsoleRunpath, TakesPathsThatAreNoDirectories)
{
    const std::filesystem::path file = mDirectory.write("file", "");
    setRunpath({});
    EXPECT_TRUE(mConsole.appendRunpath("/missing"));
    EXPECT_TRUE(mConsole.appendRunpath(file));
    EXPECT_TRUE(mConsole.appendRunpath(""));
    EXPECT_TRUE(mConsole.appendRunpath(kTooLongName));
    EXPECT_EQ(paths(), Paths({"/missing", file, "", kTooLongName}));
}

TEST_F(ConsoleRunpath, TakesReferencesToItsOwnPaths)
{
    setRunpath({"a", "b", "c"});
    EXPECT_FALSE(mConsole.appendRunpath(paths().front()));
    EXPECT_TRUE(mConsole.removeRunpath(paths().front()));
    EXPECT_EQ(paths(), Paths({"b", "c"}));
    EXPECT_TRUE(mConsole.removeRunpath(paths().back()));
    EXPECT_EQ(paths(), Paths({"b"}));
    EXPECT_TRUE(mConsole.removeRunpath(paths().front()));
    EXPECT_EQ(paths(), Paths());
}

TEST_F(ConsoleRunpath, IsSeenAsItChanges)
{
    const Paths& live = mConsole.runPaths();
    setRunpath({"a"});
    EXPECT_EQ(&mConsole.runPaths(), &live);
    EXPECT_EQ(live, Paths({"a"}));
}

TEST_F(ConsoleRunpath, ChangesWithoutAWordInTheLog)
{
    const AssertRecorder recorder;
    mConsole.appendRunpath("a");
    mConsole.appendRunpath("a");
    mConsole.removeRunpath("a");
    mConsole.removeRunpath("a");
    EXPECT_EQ(log(), Lines());
    EXPECT_EQ(recorder.failures(), Texts());
}

/// A console that was started in the directory of the executable.
class ConsoleRunpathOfOneDirectory : public testing::Test
{
protected:
    const std::filesystem::path mHere = executableDir();
    test::WorkingDirectory mWorkingDirectory{mHere};
    Console mConsole;
};

TEST_F(ConsoleRunpathOfOneDirectory, HoldsItTwice)
{
    using Paths = std::vector<std::filesystem::path>;
    EXPECT_EQ(mConsole.runPaths(), Paths({mHere, mHere}));
    EXPECT_FALSE(mConsole.appendRunpath(mHere));
    mConsole.appendRunpath("a");
    EXPECT_TRUE(mConsole.removeRunpath(mHere));
    EXPECT_EQ(mConsole.runPaths(), Paths({mHere, "a"}));
    EXPECT_TRUE(mConsole.removeRunpath(mHere));
    EXPECT_EQ(mConsole.runPaths(), Paths({"a"}));
    EXPECT_FALSE(mConsole.removeRunpath(mHere));
}

TEST_F(ConsoleRunpathOfOneDirectory, WarnsOfTheSameFileTwiceAndRunsItOnce)
{
    const test::TemporaryDirectory directory;
    const std::filesystem::path file = directory.write("a.console", "a\n");
    const std::filesystem::path name = std::filesystem::relative(file, mHere);
    const std::string path = (mHere / name).string();
    EXPECT_TRUE(mConsole.runFileWithName(StringUtil::toU32String(name.string())));
    EXPECT_EQ(
        test::logLines(mConsole),
        std::vector<test::LogLine>(
            {output("WARNING: '" + name.string() + "' resolved to multiple paths...", 4), output(path, 8),
             output(path, 8), output("The console file at '" + path + "' will be run.", 4), echo("a"),
             output(notRecognized("a")), output("")}));
}

/// Files that are run by their name, in two directories of the runpath.
class ConsoleFileSearch : public test::ConsoleFilesFixture
{
protected:
    ConsoleFileSearch() { setRunpath({makeDirectory("one"), makeDirectory("two")}); }

    /// Runs a file that is there, and answers what that wrote.
    Lines logOfName(const std::string& name)
    {
        return test::linesAddedBy([&] { EXPECT_TRUE(runFileWithName(name)) << name; }, mConsole);
    }

    /// The lines that a run of several candidates starts with.
    static Lines warning(const std::string& name, const Texts& candidates)
    {
        Lines lines = {output("WARNING: '" + name + "' resolved to multiple paths...", 4)};
        for (const std::string& candidate : candidates) {
            lines.push_back(output(candidate, 8));
        }
        lines.push_back(output("The console file at '" + candidates.front() + "' will be run.", 4));
        return lines;
    }

    /// What a file with the one line `word`, which names nothing, writes.
    static Lines ran(const std::string& word)
    {
        return {echo(word), output(notRecognized(word)), output("")};
    }

    static Lines joined(Lines first, const Lines& second)
    {
        first.insert(first.end(), second.begin(), second.end());
        return first;
    }

    std::string textAt(const std::string& name) const { return at(name).string(); }

    /// Expects that nothing is found under a name: the answer false, no assertion, and not a word in the log.
    void expectNotFound(const std::u32string& name)
    {
        const AssertRecorder recorder;
        const Lines before = log();
        EXPECT_FALSE(mConsole.runFileWithName(name)) << StringUtil::toString(name);
        EXPECT_EQ(recorder.failures(), Texts());
        EXPECT_EQ(log(), before);
    }

    /// Expects that the search ends at a path that can't be tested.
    void expectFailure(const std::string& name, const std::filesystem::path& path, std::errc code)
    {
        try {
            runFileWithName(name);
            ADD_FAILURE() << "no exception for " << path;
        } catch (const std::filesystem::filesystem_error& error) {
            EXPECT_EQ(error.path1(), path);
            EXPECT_TRUE(error.path2().empty());
            EXPECT_EQ(error.code(), code);
            EXPECT_NE(std::string(error.what()).find("exists"), std::string::npos) << error.what();
        }
    }
};

TEST_F(ConsoleFileSearch, RunsTheOnlyFileOfTheName)
{
    mDirectory.write("two/a.console", "a\n");
    EXPECT_EQ(logOfName("a.console"), ran("a"));
}

TEST_F(ConsoleFileSearch, FindsNothing)
{
    expectNotFound(U"a.console");
    setRunpath({});
    expectNotFound(U"a.console");
}

TEST_F(ConsoleFileSearch, AddsNoExtension)
{
    mDirectory.write("one/a.console", "wrong\n");
    mDirectory.write("two/b", "b\n");
    expectNotFound(U"a");
    EXPECT_EQ(logOfName("b"), ran("b"));
}

TEST_F(ConsoleFileSearch, LooksInTheRunpathOnly)
{
    mDirectory.write("a.console", "wrong\n");
    mDirectory.write("one/sub/a.console", "wrong\n");
    expectNotFound(U"a.console");
}

TEST_F(ConsoleFileSearch, RunsTheFileOfTheEarliestDirectoryAndWarns)
{
    mDirectory.write("one/a.console", "first\n");
    mDirectory.write("two/a.console", "second\n");
    EXPECT_EQ(logOfName("a.console"),
              joined(warning("a.console", {textAt("one/a.console"), textAt("two/a.console")}), ran("first")));
    setRunpath({at("two"), at("one")});
    EXPECT_EQ(
        logOfName("a.console"),
        joined(warning("a.console", {textAt("two/a.console"), textAt("one/a.console")}), ran("second")));
}

TEST_F(ConsoleFileSearch, WarnsInTheseWords)
{
    makeDirectory("sub");
    setRunpath({"one", "two", "sub"});
    for (const std::string directory : {"one", "two", "sub"}) {
        mDirectory.write(directory + "/two words", "// nothing\n");
    }
    EXPECT_TRUE(runFileWithName("two words"));
    EXPECT_EQ(log(), Lines({{"    WARNING: 'two words' resolved to multiple paths...", Output, 4},
                            {"        one/two words", Output, 8},
                            {"        two/two words", Output, 8},
                            {"        sub/two words", Output, 8},
                            {"    The console file at 'one/two words' will be run.", Output, 4}}));
}

TEST_F(ConsoleFileSearch, NamesOnlyTheCandidatesThatAreThere)
{
    setRunpath({at("missing"), at("two"), at("file"), at("one")});
    mDirectory.write("file", "");
    mDirectory.write("one/a", "first\n");
    mDirectory.write("two/a", "second\n");
    EXPECT_EQ(logOfName("a"), joined(warning("a", {textAt("two/a"), textAt("one/a")}), ran("second")));
}

TEST_F(ConsoleFileSearch, WarnsOfOneDirectoryThatIsInTheRunpathUnderTwoNames)
{
    mDirectory.write("one/a", "first\n");
    setRunpath({"one/.//", "one", "two/../one"});
    EXPECT_EQ(logOfName("a"), joined(warning("a", {"one/.//a", "one/a", "two/../one/a"}), ran("first")));
}

TEST_F(ConsoleFileSearch, FindsNamesWithDirectories)
{
    mDirectory.write("two/sub/a", "first\n");
    mDirectory.write("b", "second\n");
    EXPECT_EQ(logOfName("sub/a"), ran("first"));
    EXPECT_EQ(logOfName("../b"),
              joined(warning("../b", {textAt("one/../b"), textAt("two/../b")}), ran("second")));
}

TEST_F(ConsoleFileSearch, FindsAnAbsoluteNameInEveryDirectory)
{
    const std::string path = mDirectory.write("a", "first\n").string();
    EXPECT_EQ(logOfName(path), joined(warning(path, {path, path}), ran("first")));
    setRunpath({"missing"});
    EXPECT_EQ(logOfName(path), ran("first"));
}

TEST_F(ConsoleFileSearch, SearchesTheCurrentDirectoryForAnEmptyOrRelativeEntry)
{
    mDirectory.write("a", "first\n");
    setRunpath({""});
    EXPECT_EQ(logOfName("a"), ran("first"));
    setRunpath({"."});
    const test::WorkingDirectory elsewhere(at("one"));
    EXPECT_FALSE(runFileWithName("a"));
}

TEST_F(ConsoleFileSearch, FindsNamesOfAnyCodePoints)
{
    for (const std::string name : {"two words", "\u00E9\u20AC\U0001F600", "\"quoted\"", "line\nfeed"}) {
        mDirectory.write("two/" + name, "a\n");
        EXPECT_EQ(logOfName(name), ran("a"));
    }
    mDirectory.write("two/\uFFFD", "a\n");
    EXPECT_TRUE(mConsole.runFileWithName({char32_t(0xD800)}));
    EXPECT_TRUE(mConsole.runFileWithName({char32_t(0x110000)}));
    expectNotFound({char32_t(0xDFFF), U'x'});
}

TEST_F(ConsoleFileSearch, FindsNoIllFormedNameByItsText)
{
    mDirectory.write("one/\xFF", "wrong\n");
    expectNotFound(U"\uFFFD");
    expectNotFound(U"\u00FF");
}

TEST_F(ConsoleFileSearch, RunsFilesInIllFormedDirectories)
{
    mDirectory.write("\xFF odd/a", "first\n");
    setRunpath({"\xFF odd"});
    EXPECT_EQ(logOfName("a"), ran("first"));
    mDirectory.write("one/a", "second\n");
    mConsole.appendRunpath("one");
    EXPECT_EQ(logOfName("a"), joined(warning("a", {"\uFFFD odd/a", "one/a"}), ran("first")));
}

TEST_F(ConsoleFileSearch, PassesOverADanglingLink)
{
    std::filesystem::create_symlink("nowhere", at("one/a"));
    expectNotFound(U"a");
    mDirectory.write("two/a", "second\n");
    EXPECT_EQ(logOfName("a"), ran("second"));
}

TEST_F(ConsoleFileSearch, FollowsALink)
{
    mDirectory.write("file", "first\n");
    std::filesystem::create_symlink("../file", at("one/a"));
    EXPECT_EQ(logOfName("a"), ran("first"));
}

TEST_F(ConsoleFileSearch, ChoosesADirectoryLikeAFileAndFailsToRunIt)
{
    makeDirectory("two/a");
    const AssertRecorder recorder;
    EXPECT_FALSE(runFileWithName("a"));
    EXPECT_EQ(recorder.failures(), kNotOpen);
    EXPECT_EQ(log(), Lines());
}

TEST_F(ConsoleFileSearch, WarnsAndThenFailsToRunADirectoryThatComesFirst)
{
    makeDirectory("one/a");
    mDirectory.write("two/a", "wrong\n");
    const AssertRecorder recorder;
    EXPECT_FALSE(runFileWithName("a"));
    EXPECT_EQ(recorder.failures(), kNotOpen);
    EXPECT_EQ(log(), warning("a", {textAt("one/a"), textAt("two/a")}));
}

TEST_F(ConsoleFileSearch, FindsTheDirectoriesThemselvesUnderAnEmptyName)
{
    const AssertRecorder recorder;
    EXPECT_FALSE(runFileWithName(""));
    EXPECT_EQ(recorder.failures(), kNotOpen);
    EXPECT_EQ(log(), warning("", {textAt("one/"), textAt("two/")}));
}

TEST_F(ConsoleFileSearch, AnswersTrueThoughCommandsFail)
{
    mDirectory.write("one/a", "unknown\n");
    EXPECT_TRUE(runFileWithName("a"));
}

TEST_F(ConsoleFileSearch, KeepsTheTypedLineWhereNoLineOfTheFileHasAWord)
{
    mDirectory.write("one/a", "// nothing\n");
    mDirectory.write("two/a", "wrong\n");
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("half");
    EXPECT_TRUE(runFileWithName("a"));
    EXPECT_FALSE(runFileWithName("missing"));
    EXPECT_EQ(user.input(), "half");
}

TEST_F(ConsoleFileSearch, LetsOutThatANameIsTooLong)
{
    expectFailure(kTooLongName, at("one") / kTooLongName, std::errc::filename_too_long);
    EXPECT_EQ(log(), Lines());
}

TEST_F(ConsoleFileSearch, LetsOutThatLinksLeadInACircle)
{
    makeLoop("one/a");
    expectFailure("a", at("one/a"), std::errc::too_many_symbolic_link_levels);
    makeLoop("loop");
    setRunpath({at("loop")});
    expectFailure("a", at("loop/a"), std::errc::too_many_symbolic_link_levels);
}

TEST_F(ConsoleFileSearch, RunsAndWritesNothingWhereALaterDirectoryCannotBeTested)
{
    mDirectory.write("one/a", "wrong\n");
    makeLoop("loop");
    setRunpath({at("one"), at("one/"), at("loop")});
    expectFailure("a", at("loop/a"), std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(log(), Lines());
}

TEST_F(ConsoleFileSearch, WorksAgainAfterAFailure)
{
    mDirectory.write("one/a", "first\n");
    makeLoop("one/loop");
    expectFailure("loop", at("one/loop"), std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(logOfName("a"), ran("first"));
}

TEST_F(ConsoleFileSearch, RunsAFileThatEmptiesTheRunpath)
{
    add(U"change", [this](const ConsoleArgs&, Console&) { setRunpath({}); });
    mDirectory.write("one/a", "change\na\n");
    mDirectory.write("two/a", "wrong\n");
    EXPECT_EQ(logOfName("a"),
              joined(joined(warning("a", {textAt("one/a"), textAt("two/a")}), {echo("change"), output("")}),
                     ran("a")));
    expectNotFound(U"a");
}

using ConsoleFileSearchDeathTest = ConsoleFileSearch;

TEST_F(ConsoleFileSearchDeathTest, LetsOutThatADirectoryMayNotBeEntered)
{
    const test::Locked locked(at("two"));
    setRunpath({"one", "two"});
    EXPECT_EXIT(test::runUnprivileged([this] {
                    expectFailure("a", "two/a", std::errc::permission_denied);
                    std::cerr << (HasFailure() ? "wrong" : "refused");
                }),
                testing::ExitedWithCode(0), "^refused$");
}

} // namespace
} // namespace zephyr::console
