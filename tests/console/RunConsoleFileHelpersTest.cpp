#include "support/AssertRecorder.h"
#include "support/ConsoleFilesFixture.h"
#include "support/LogLine.h"
#include "support/PrivateMember.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/RunConsoleFileCommand.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace zephyr::test {

struct RunFileAtPath : PrivateMember<RunFileAtPath, void (console::RunConsoleFileCommand::*)(
                                                        const std::filesystem::path&, console::Console&)>
{};
template struct Open<RunFileAtPath, &console::RunConsoleFileCommand::runFileAtPath>;

struct PrintUsage : PrivateMember<PrintUsage, void (console::RunConsoleFileCommand::*)(console::Console&)>
{};
template struct Open<PrintUsage, &console::RunConsoleFileCommand::printUsage>;

} // namespace zephyr::test

namespace zephyr::console {
namespace {

using test::AssertRecorder;
using test::echo;
using test::kNotOpen;
using test::kTooLongName;
using test::notRecognized;
using test::output;
using Texts = std::vector<std::string>;

/// The private helpers of the command `run`, which no line reaches.
class RunCommandHelpers : public test::ConsoleFilesFixture
{
protected:
    void runFileAtPath(const std::filesystem::path& file)
    {
        (mCommand.*memberPointer(test::RunFileAtPath()))(file, mConsole);
    }

    void expectMissing(const std::filesystem::path& file, const std::string& text)
    {
        const AssertRecorder recorder;
        const std::size_t before = mConsole.snapshot().lines().size();
        runFileAtPath(file);
        EXPECT_EQ(
            test::logLines(mConsole, before),
            Lines({output("ERROR: Console file '" + text + "' does not exist.  Nothing will be run.", 4)}));
        EXPECT_EQ(recorder.failures(), Texts());
    }

    void expectFailure(const std::filesystem::path& file, std::errc code)
    {
        try {
            runFileAtPath(file);
            ADD_FAILURE() << "no exception for " << file;
        } catch (const std::filesystem::filesystem_error& error) {
            EXPECT_EQ(error.path1(), file);
            EXPECT_EQ(error.code(), code);
            EXPECT_NE(std::string(error.what()).find("exists"), std::string::npos) << error.what();
        }
        EXPECT_EQ(log(), Lines());
    }

    RunConsoleFileCommand mCommand;
};

TEST_F(RunCommandHelpers, RunAFileAtItsPath)
{
    const std::filesystem::path file = mDirectory.write("two words", "a\n");
    runFileAtPath(file);
    EXPECT_EQ(log(), Lines({{"    Running " + file.string() + "...", Output, 4},
                            {"", Output, 0},
                            echo("a"),
                            output(notRecognized("a")),
                            output("")}));
}

TEST_F(RunCommandHelpers, RunAFileAtARelativePathAsItIsWritten)
{
    mDirectory.write("sub/a", "// nothing\n");
    runFileAtPath("sub//./a");
    EXPECT_EQ(log(), Lines({output("Running sub//./a...", 4), output("")}));
}

TEST_F(RunCommandHelpers, SayThatAFileIsMissing)
{
    expectMissing("a.console", "a.console");
    expectMissing(at("a.console"), at("a.console").string());
    expectMissing("", "");
    mDirectory.write("file", "");
    expectMissing("file/sub", "file/sub");
    std::filesystem::create_symlink("nowhere", at("dangling"));
    expectMissing("dangling", "dangling");
    expectMissing("caf\xC3 \xFF", "caf\uFFFD \uFFFD");
}

TEST_F(RunCommandHelpers, SearchNoRunpathAndAddNoExtension)
{
    mDirectory.write("sub/a", "wrong\n");
    mDirectory.write("b.console", "wrong\n");
    setRunpath({"sub"});
    expectMissing("a", "a");
    expectMissing("b", "b");
}

TEST_F(RunCommandHelpers, RunAFileWhoseNameIsNotWellFormed)
{
    mDirectory.write("\xFF", "// nothing\n");
    runFileAtPath("\xFF");
    EXPECT_EQ(log(), Lines({output("Running \uFFFD...", 4), output("")}));
}

TEST_F(RunCommandHelpers, AnnounceADirectoryAndThenFailToRunIt)
{
    makeDirectory("a.console");
    const AssertRecorder recorder;
    runFileAtPath("a.console");
    EXPECT_EQ(recorder.failures(), kNotOpen);
    EXPECT_EQ(log(), Lines({output("Running a.console...", 4), output("")}));
}

TEST_F(RunCommandHelpers, LetTheExceptionForAPathThatCannotBeTestedThrough)
{
    expectFailure(kTooLongName, std::errc::filename_too_long);
    expectFailure(makeLoop("loop"), std::errc::too_many_symbolic_link_levels);
}

TEST_F(RunCommandHelpers, LetTheExceptionOfACommandThrough)
{
    addFail();
    mDirectory.write("a", "fail\nb\n");
    EXPECT_THROW(runFileAtPath("a"), std::runtime_error);
    EXPECT_EQ(log(), Lines({output("Running a...", 4), output(""), echo("fail"), output("before")}));
}

TEST_F(RunCommandHelpers, PrintTheUsage)
{
    (mCommand.*memberPointer(test::PrintUsage()))(mConsole);
    EXPECT_EQ(log(), Lines({{"    run command help text", Output, 4}}));
}

} // namespace
} // namespace zephyr::console
