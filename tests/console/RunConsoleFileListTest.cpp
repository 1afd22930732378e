#include "support/AssertRecorder.h"
#include "support/LogLine.h"
#include "support/RunCommandFixture.h"
#include "support/SystemText.h"
#include "support/Unprivileged.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zephyr::console {
namespace {

using test::echo;
using test::kTooLongName;
using test::LogLine;
using test::output;
using Texts = std::vector<std::string>;

/// `run list`: the console files in the directories of the runpath.
class RunCommandList : public test::RunCommandFixture
{
protected:
    void writeFiles(const Texts& names)
    {
        for (const std::string& name : names) {
            mDirectory.write(name, "");
        }
    }

    /// What `run list` writes between its echo and the empty line at the end.
    Lines listed()
    {
        Lines lines = logOf("run list");
        EXPECT_EQ(lines.front(), echo("run list"));
        EXPECT_EQ(lines.back(), output(""));
        return {lines.begin() + 1, lines.end() - 1};
    }

    /// The lines that list these file names.
    static Lines named(const Texts& names)
    {
        Lines lines;
        for (const std::string& name : names) {
            lines.push_back(output(name, 4));
        }
        return lines;
    }

    /// Expects the line for a directory that can't be listed.
    static void expectFailedLine(const LogLine& line, const std::string& directory, std::errc code)
    {
        const std::string beginning = "    Failed to search runpath directory '" + directory + "': ";
        EXPECT_EQ(line.text.substr(0, beginning.size()), beginning);
        EXPECT_NE(line.text.find(std::make_error_code(code).message(), beginning.size()), std::string::npos)
            << line;
        EXPECT_EQ(line.type, Output);
        EXPECT_EQ(line.indent, 4U);
    }
};

/// Lines in an order that doesn't depend on the file system.
std::vector<LogLine> sorted(std::vector<LogLine> lines)
{
    std::sort(lines.begin(), lines.end(),
              [](const LogLine& left, const LogLine& right) { return left.text < right.text; });
    return lines;
}

TEST_F(RunCommandList, ShowsTheConsoleFilesOfTheDirectoriesThatExist)
{
    writeFiles({"one/a.console", "one/b.txt", "one/c.Console"});
    setRunpath({"missing", "one"});
    EXPECT_EQ(logOf("run list"), Lines({echo("run list"), {"    a.console", Output, 4}, {"", Output, 0}}));
}

TEST_F(RunCommandList, ShowsNothingWhereNothingIs)
{
    EXPECT_EQ(listed(), Lines());
    setRunpath({"missing"});
    EXPECT_EQ(listed(), Lines());
    setRunpath({});
    EXPECT_EQ(listed(), Lines());
}

TEST_F(RunCommandList, IgnoresFurtherWords)
{
    writeFiles({"a.console", "extra.console"});
    EXPECT_EQ(sorted(logOf("run list extra")), sorted({echo("run list extra"), output("a.console", 4),
                                                       output("extra.console", 4), output("")}));
}

TEST_F(RunCommandList, RunsNoFile)
{
    mDirectory.write("list.console", "wrong\n");
    EXPECT_EQ(listed(), named({"list.console"}));
}

TEST_F(RunCommandList, LooksAtTheExactExtension)
{
    writeFiles({"a", "console", "aconsole", ".console", "a.CONSOLE", "a.console.txt", "a.console~",
                "a.consoles", "a.consol", "a.console ", "a.console.", "a. console"});
    EXPECT_EQ(listed(), Lines());
    writeFiles({"b.console", "c.d.console", "..console", " .console", "-.console", "e.console.console"});
    EXPECT_EQ(sorted(listed()), sorted(named({"b.console", "c.d.console", "..console", " .console",
                                              "-.console", "e.console.console"})));
}

TEST_F(RunCommandList, LooksOneLevelDeepOnly)
{
    writeFiles({"a.console", "sub/b.console", "sub/sub/c.console"});
    EXPECT_EQ(listed(), named({"a.console"}));
}

TEST_F(RunCommandList, ShowsDirectoriesAndLinksOfTheExtensionToo)
{
    makeDirectory("directory.console");
    writeFiles({"directory.console/inner.console"});
    makeLoop("loop.console");
    std::filesystem::create_symlink("nowhere", at("dangling.console"));
    std::filesystem::create_symlink("directory.console", at("link"));
    EXPECT_EQ(sorted(listed()), named({"dangling.console", "directory.console", "loop.console"}));
}

TEST_F(RunCommandList, FollowsALinkToADirectory)
{
    writeFiles({"one/a.console"});
    std::filesystem::create_directory_symlink("one", at("link"));
    setRunpath({"link"});
    EXPECT_EQ(listed(), named({"a.console"}));
}

TEST_F(RunCommandList, GoesThroughTheRunpathInItsOrder)
{
    writeFiles({"one/z.console", "two/a.console", "three/m.console"});
    setRunpath({"one", "two", "three"});
    EXPECT_EQ(listed(), named({"z.console", "a.console", "m.console"}));
    setRunpath({"three", "one", "two"});
    EXPECT_EQ(listed(), named({"m.console", "z.console", "a.console"}));
}

TEST_F(RunCommandList, RepeatsWhatSeveralDirectoriesHave)
{
    writeFiles({"one/a.console", "two/a.console"});
    setRunpath({"one", "two", "one/"});
    EXPECT_EQ(listed(), named({"a.console", "a.console", "a.console"}));
}

TEST_F(RunCommandList, KeepsTheFileSystemsOrder)
{
    Texts names;
    for (int i = 0; i < 300; ++i) {
        names.push_back(std::to_string((i * 7919) % 300) + ".console");
    }
    writeFiles(names);
    Texts expected;
    for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(at(""))) {
        expected.push_back(entry.path().filename().string());
    }
    EXPECT_EQ(listed(), named(expected));
}

TEST_F(RunCommandList, ShowsNamesOfAnyCodePoints)
{
    const Texts names = {"\u00E9\u20AC\U0001F600.console", "two words.console", "line\nfeed.console",
                         "\"quoted\".console", "<b>100 % %1.console"};
    writeFiles(names);
    EXPECT_EQ(sorted(listed()), sorted(named(names)));
}

TEST_F(RunCommandList, ShowsNamesThatAreNotWellFormedWithReplacements)
{
    writeFiles({"\xFF.console", "caf\xC3.console"});
    EXPECT_EQ(sorted(listed()), named({"caf\uFFFD.console", "\uFFFD.console"}));
}

TEST_F(RunCommandList, SkipsWhatIsNoDirectory)
{
    writeFiles({"file.console", "one/a.console"});
    std::filesystem::create_symlink("nowhere", at("dangling"));
    setRunpath({"file.console", "file.console/sub", "dangling", "", "/dev/null", "one"});
    EXPECT_EQ(listed(), named({"a.console"}));
}

TEST_F(RunCommandList, GoesOnAfterADirectoryWhoseNameIsTooLong)
{
    writeFiles({"one/a.console", "two/b.console"});
    setRunpath({"one", kTooLongName, "two"});
    const Lines lines = listed();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], output("a.console", 4));
    expectFailedLine(lines[1], kTooLongName, std::errc::filename_too_long);
    EXPECT_EQ(lines[2], output("b.console", 4));
}

TEST_F(RunCommandList, GoesOnAfterLinksThatLeadInACircle)
{
    writeFiles({"two/b.console"});
    makeLoop("loop");
    setRunpath({"loop", at("loop/sub"), "two"});
    const Lines lines = listed();
    ASSERT_EQ(lines.size(), 3U);
    expectFailedLine(lines[0], "loop", std::errc::too_many_symbolic_link_levels);
    expectFailedLine(lines[1], at("loop/sub").string(), std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(lines[2], output("b.console", 4));
}

TEST_F(RunCommandList, ReplacesTheIllFormedPartsOfADirectoryThatCannotBeListed)
{
    makeLoop("\xFF loop");
    setRunpath({"\xFF loop"});
    const Lines lines = listed();
    ASSERT_EQ(lines.size(), 1U);
    expectFailedLine(lines[0], "\uFFFD loop", std::errc::too_many_symbolic_link_levels);
}

TEST_F(RunCommandList, WritesIntoARedirection)
{
    writeFiles({"one/a.console", "two/b.console"});
    setRunpath({"one", "two"});
    execute("run list > out.txt");
    EXPECT_EQ(mDirectory.read("out.txt"), "    a.console\n    b.console\n");
}

TEST_F(RunCommandList, SeesFilesAsTheyComeAndGo)
{
    writeFiles({"a.console"});
    EXPECT_EQ(listed(), named({"a.console"}));
    std::filesystem::remove(at("a.console"));
    EXPECT_EQ(listed(), Lines());
}

using RunCommandListDeathTest = RunCommandList;

TEST_F(RunCommandListDeathTest, GoesOnAfterADirectoryThatMayNotBeRead)
{
    writeFiles({"one/a.console", "locked/sub/c.console", "two/b.console"});
    const test::Locked locked(at("locked"));
    setRunpath({"one", "locked", "locked/sub", "two"});
    EXPECT_EXIT(test::runUnprivileged([this] {
                    execute("run list");
                    test::printLog(mConsole);
                }),
                testing::ExitedWithCode(0),
                "^run list\n"
                "    a.console\n"
                "    Failed to search runpath directory 'locked': [^\n]*" +
                    test::systemText(std::errc::permission_denied) +
                    "[^\n]*\n"
                    "    Failed to search runpath directory 'locked/sub': [^\n]*" +
                    test::systemText(std::errc::permission_denied) +
                    "[^\n]*\n"
                    "    b.console\n"
                    "\n$");
}

extern "C" void closeDirectories(int)
{
    const int interruptedError = errno;
    for (int descriptor = STDERR_FILENO + 1; descriptor < 256; ++descriptor) {
        struct stat status = {};
        if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
            close(descriptor);
        }
    }
    errno = interruptedError;
}

/// Executes a line. While it runs, the directory being read is closed as soon as the redirection has
/// written something.
void executeWithADirectoryThatBreaksOff(Console& console, const std::u32string& line)
{
    std::signal(SIGXFSZ, closeDirectories);
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit none = {0, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    console.execute(line);
    setrlimit(RLIMIT_FSIZE, &before);
}

TEST_F(RunCommandListDeathTest, KeepsTheNamesOfADirectoryThatBreaksOff)
{
    // More than one system call reads.
    constexpr int kFileCount = 5000;
    for (int i = 0; i < kFileCount; ++i) {
        writeFiles({"one/" + std::string(200, 'x') + std::to_string(i) + ".console"});
    }
    writeFiles({"two/b.console"});
    setRunpath({"one", "two"});
    EXPECT_EXIT(
        {
            executeWithADirectoryThatBreaksOff(mConsole, U"run list > out.txt");
            const Lines lines = log();
            const std::size_t names = lines.size() - 4;
            std::cerr << (names > 0 && names < kFileCount ? "some" : "none or all") << " names\n"
                      << lines[names].text.substr(0, 10) << '\n';
            for (std::size_t i = names + 1; i < lines.size(); ++i) {
                std::cerr << lines[i].text << '\n';
            }
            std::_Exit(0);
        },
        testing::ExitedWithCode(0),
        "^some names\n"
        "    xxxxxx\n"
        "    Failed to search runpath directory 'one': [^\n]*" +
            test::systemText(std::errc::bad_file_descriptor) +
            "[^\n]*\n"
            "    b.console\n"
            "\n$");
}

} // namespace
} // namespace zephyr::console
