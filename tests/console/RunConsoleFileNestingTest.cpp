#include "support/AssertRecorder.h"
#include "support/ConsoleDriver.h"
#include "support/LogLine.h"
#include "support/RunCommandFixture.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace zephyr::console {
namespace {

using test::echo;
using test::kNothingRun;
using test::kRunUsage;
using test::kTooLongName;
using test::notRecognized;
using test::output;
using Texts = std::vector<std::string>;

/// `run` in files, under aliases, with redirections, and with exceptions.
class RunCommandNesting : public test::RunCommandFixture
{
protected:
    RunCommandNesting()
    {
        addWriter(U"wind", U"3 m/s");
        addWriter(U"gust", U"7 m/s");
    }

    static Lines joined(const std::vector<Lines>& parts)
    {
        Lines lines;
        for (const Lines& part : parts) {
            lines.insert(lines.end(), part.begin(), part.end());
        }
        return lines;
    }

    static Lines wind() { return around("wind", {output("3 m/s")}); }
    static Lines gust() { return around("gust", {output("7 m/s")}); }

    std::string read(const std::string& name) const { return mDirectory.read(name); }

    /// Expects `fail` to throw the exception of a search for a name that is too long.
    void expectTooLong(const std::function<void()>& fail)
    {
        try {
            fail();
            ADD_FAILURE() << "no exception";
        } catch (const std::filesystem::filesystem_error& error) {
            EXPECT_EQ(error.path1(), at(kTooLongName + ".console"));
            EXPECT_EQ(error.code(), std::errc::filename_too_long);
            EXPECT_NE(std::string(error.what()).find("exists"), std::string::npos) << error.what();
        }
    }
};

TEST_F(RunCommandNesting, RunsFilesFromFiles)
{
    mDirectory.write("outer.console", "run inner\ngust\n");
    mDirectory.write("inner.console", "wind\n// note\nwind");
    EXPECT_EQ(logOf("run outer"),
              around("run outer", joined({around("run inner", joined({wind(), wind()})), gust()})));
}

TEST_F(RunCommandNesting, RunsOnAfterALineWhoseFileIsMissing)
{
    mDirectory.write("a.console", "run missing\nrun\nwind\n");
    EXPECT_EQ(logOf("run a"), around("run a", joined({around("run missing", {kNothingRun}),
                                                      around("run", {kRunUsage}), wind()})));
}

TEST_F(RunCommandNesting, RunsFilesThatNameAliases)
{
    mDirectory.write("a.console", "alias go \"wind; run b\"\ngo\n");
    mDirectory.write("b.console", "gust\n");
    EXPECT_EQ(logOf("run a"),
              around("run a", joined({around("alias go \"wind; run b\"", {output("Done.", 4)}),
                                      {echo("go")},
                                      wind(),
                                      around("run b", gust())})));
}

TEST_F(RunCommandNesting, RunsFilesThatChangeTheRunpath)
{
    mDirectory.write("a.console", "run b\nrun path_append sub\nrun b\n");
    mDirectory.write("sub/b.console", "wind\n");
    EXPECT_EQ(logOf("run a"), around("run a", joined({around("run b", {kNothingRun}),
                                                      around("run path_append sub", {output("Done.", 4)}),
                                                      around("run b", wind())})));
}

TEST_F(RunCommandNesting, LetsAFileRunItself)
{
    unsigned left = 50;
    add(U"tick", [&left](const ConsoleArgs&, Console&) {
        if (--left == 0) {
            throw std::runtime_error("enough");
        }
    });
    mDirectory.write("self.console", "tick\nrun self\n");
    EXPECT_THROW(execute("run self"), std::runtime_error);
    EXPECT_EQ(left, 0U);
    EXPECT_EQ(log().size(), 50U + 50U + 49U);
    EXPECT_EQ(logOf("wind"), wind());
}

TEST_F(RunCommandNesting, RunsOnWhenALineReplacesOrDestroysIt)
{
    add(U"swap", [](const ConsoleArgs&, Console& console) { test::addCommand(console, U"run"); });
    add(U"quit", [](const ConsoleArgs&, Console& console) { console.shutdown(); });
    mDirectory.write("a.console", "swap\nrun b\nquit\nwind\n");
    mDirectory.write("b.console", "wrong\n");
    EXPECT_EQ(logOf("run a"),
              around("run a", joined({around("swap", {}), around("run b", {}), around("quit", {}),
                                      around("wind", {output(notRecognized("wind"))})})));
}

TEST_F(RunCommandNesting, WritesAFilesFirstCommandAndItsEchoIntoItsRedirection)
{
    mDirectory.write("a.console", "wind\ngust\n");
    EXPECT_EQ(logOf("run a > f"), around("run a > f", joined({wind(), gust()})));
    EXPECT_EQ(read("f"), "wind\n3 m/s\n");
}

TEST_F(RunCommandNesting, WritesUnknownAndBlankLinesIntoItsRedirectionUntilACommandHasRun)
{
    mDirectory.write("a.console", "unknown\n  \n// note\n\nwind\ngust\n");
    execute("run a > f");
    EXPECT_EQ(read("f"), "unknown\n" + notRecognized("unknown") + "\n\n\nwind\n3 m/s\n");
}

TEST_F(RunCommandNesting, WritesItsWarningIntoItsRedirection)
{
    mDirectory.write("one/a.console", "unknown\n");
    mDirectory.write("two/a.console", "wrong\n");
    setRunpath({"one", "two"});
    execute("run a > f");
    EXPECT_EQ(read("f"), "    WARNING: 'a.console' resolved to multiple paths...\n"
                         "        one/a.console\n"
                         "        two/a.console\n"
                         "    The console file at 'one/a.console' will be run.\n"
                         "unknown\n" +
                             notRecognized("unknown") + "\n\n");
}

TEST_F(RunCommandNesting, EndsItsRedirectionAtTheEchoOfALineWithItsOwn)
{
    mDirectory.write("a.console", "wind > g\ngust > h\nwind\n");
    EXPECT_EQ(logOf("run a > f"),
              around("run a > f", joined({around("wind > g", {output("3 m/s")}),
                                          around("gust > h", {output("7 m/s")}), wind()})));
    EXPECT_EQ(read("f"), "wind > g\n");
    EXPECT_FALSE(mDirectory.has("g"));
    EXPECT_EQ(read("h"), "7 m/s\n");
}

TEST_F(RunCommandNesting, KeepsItsRedirectionThroughAnAliasUntilACommandHasRun)
{
    execute("alias go \"unknown; wind; gust\"");
    mDirectory.write("a.console", "go\n");
    execute("run a > f");
    EXPECT_EQ(read("f"), "go\nunknown\n" + notRecognized("unknown") + "\n\nwind\n3 m/s\n");
}

TEST_F(RunCommandNesting, WritesAnInnerFilesFirstCommandIntoTheOuterRedirection)
{
    mDirectory.write("outer.console", "run inner\nwind\n");
    mDirectory.write("inner.console", "wind\ngust\n");
    execute("run outer > f");
    EXPECT_EQ(read("f"), "run inner\nwind\n3 m/s\n");
}

TEST_F(RunCommandNesting, RedirectsAFileThatAFileRuns)
{
    mDirectory.write("outer.console", "run inner > f\ngust > g\n");
    mDirectory.write("inner.console", "wind\ngust\n");
    execute("run outer");
    EXPECT_EQ(read("f"), "wind\n3 m/s\n");
    EXPECT_EQ(read("g"), "7 m/s\n");
}

TEST_F(RunCommandNesting, LosesWhatItWritesItselfOnceAnInnerCommandHasClosedTheRedirection)
{
    add(U"after", [](const ConsoleArgs&, Console& console) {
        console.execute(U"run a");
        console.write(U"late", Output);
    });
    mDirectory.write("a.console", "wind\n");
    EXPECT_EQ(logOf("after > f"), around("after > f", joined({around("run a", wind()), {output("late")}})));
    EXPECT_EQ(read("f"), "run a\nwind\n3 m/s\n");
}

TEST_F(RunCommandNesting, LeavesItsRedirectionOpenAfterAnExceptionUntilTheNextCommandHasRun)
{
    addFail();
    mDirectory.write("a.console", "unknown\nfail\nwind\n");
    EXPECT_THROW(execute("run a > f"), std::runtime_error);
    execute("wind");
    execute("gust");
    EXPECT_EQ(read("f"), "unknown\n" + notRecognized("unknown") + "\n\nfail\nbefore\nwind\n3 m/s\n");
}

TEST_F(RunCommandNesting, LetsAnExceptionOutOfEveryFileAndRunsNoFurtherLine)
{
    addFail();
    mDirectory.write("outer.console", "run inner\nwind\n");
    mDirectory.write("inner.console", "gust\nfail\nwind\n");
    EXPECT_THROW(execute("run outer"), std::runtime_error);
    EXPECT_EQ(log(),
              joined({{echo("run outer"), echo("run inner")}, gust(), {echo("fail"), output("before")}}));
    EXPECT_EQ(logOf("wind"), wind());
}

TEST_F(RunCommandNesting, LetsAnExceptionOutOfATypedLine)
{
    addFail();
    mDirectory.write("a.console", "gust\nfail\nwind\n");
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    EXPECT_THROW(user.type("run a\n"), std::runtime_error);
    EXPECT_EQ(log(), joined({{echo("run a")}, gust(), {echo("fail"), output("before")}}));
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "run a");
    mConsole.open();
    user.type("wind\n");
    EXPECT_EQ(test::logLines(mConsole, 2 + 6), wind());
}

TEST_F(RunCommandNesting, LetsAFailingSearchOutOfExecute)
{
    expectTooLong([this] { execute("run " + kTooLongName); });
    EXPECT_EQ(log(), Lines({echo("run " + kTooLongName)}));
    EXPECT_EQ(logOf("wind"), wind());
}

TEST_F(RunCommandNesting, LetsAFailingSearchOutOfAFile)
{
    const std::string line = "run " + kTooLongName;
    mDirectory.write("a.console", "wind\n" + line + "\ngust\n");
    expectTooLong([this] { mConsole.runFile("a.console"); });
    EXPECT_EQ(log(), joined({wind(), {echo(line)}}));
    expectTooLong([this] { execute("run a"); });
    EXPECT_EQ(logOf("wind"), wind());
}

TEST_F(RunCommandNesting, LetsAFailingSearchOutOfATypedLine)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    const std::string line = "run " + kTooLongName;
    user.type(line);
    expectTooLong([&user] { user.press(Qt::Key_Return); });
    EXPECT_EQ(log(), Lines({echo(line)}));
    EXPECT_EQ(user.input(), line);
    mConsole.open();
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), line);
    mConsole.open();
    user.type("wind\n");
    EXPECT_EQ(test::logLines(mConsole, 3), wind());
}

TEST_F(RunCommandNesting, LetsAFailingSearchOutOfAnAlias)
{
    execute("alias go \"wind; run " + kTooLongName + "; gust\"");
    const std::size_t before = mConsole.snapshot().lines().size();
    expectTooLong([this] { execute("go"); });
    EXPECT_EQ(test::logLines(mConsole, before),
              joined({{echo("go")}, wind(), {echo("run " + kTooLongName)}}));
}

TEST_F(RunCommandNesting, LeavesItsRedirectionOpenAfterAFailingSearch)
{
    expectTooLong([this] { execute("run " + kTooLongName + " > f"); });
    execute("wind");
    EXPECT_EQ(read("f"), "wind\n3 m/s\n");
}

} // namespace
} // namespace zephyr::console
