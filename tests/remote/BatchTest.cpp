#include "zephyr/console/remote/Batch.h"

#include "support/LostFile.h"
#include "support/ScriptedCommand.h"
#include "support/SystemText.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/commands/Command.h"
#include "zephyr/console/commands/Failure.h"
#include "zephyr/console/commands/StandardCommands.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <thread>

#include <sys/stat.h>

namespace zephyr::console::remote {
namespace {

using Lines = std::vector<std::string>;

class BatchTest : public testing::Test
{
protected:
    BatchTest()
    {
        commands::addEcho(console);
        commands::add(console, U"brake", U"Brakes.", [] { commands::fail(U"No brakes."); });
        test::addCommand(console, U"throw").onExecute = [](const auto&, Console&) {
            throw std::runtime_error("oh");
        };
        test::addCommand(console, U"quit").onExecute = [](const auto&, Console&) { throw EndOfRun(); };
        options.output = stream.get();
        options.report = [this](const std::string& failure) { failures.push_back(failure); };
    }

    int run(std::string_view bytes) { return runBatch(console, folder.write("a.console", bytes), options); }

    std::string printed()
    {
        std::fflush(stream.get());
        return folder.read("out");
    }

    /// How a failure of the file's line `number` is reported.
    std::string atLine(int number, const std::string& reason)
    {
        return (folder.path() / "a.console").string() + ':' + std::to_string(number) + ": " + reason;
    }

    test::TemporaryDirectory folder;
    Console console;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream{std::fopen((folder.path() / "out").c_str(), "w"),
                                                           &std::fclose};
    BatchOptions options;
    Lines failures;
};

const std::string kUnknown =
    "'frobnicate' is not a recognized command.  Type 'help' to list available commands.";

TEST_F(BatchTest, PrintsWhatItsLinesWriteAndNothingOfBefore)
{
    EXPECT_EQ(kBatchSucceeded, run("\xEF\xBB\xBF// A comment.\r\necho one\r\n\n  \n  echo two  "));
    EXPECT_EQ(">> echo one\n    one\n\n>> echo two\n    two\n\n", printed());
    EXPECT_EQ(Lines{}, failures);
}

TEST_F(BatchTest, StopsAtTheFirstFailureAndNamesItsPlace)
{
    EXPECT_EQ(kBatchLineFailed, run("echo a\n\nbrake\necho b\n"));
    EXPECT_EQ(Lines{atLine(3, "No brakes.")}, failures);
    EXPECT_EQ(std::string::npos, printed().find("echo b"));
}

TEST_F(BatchTest, GoesOnIfItIsToldTo)
{
    options.keepsGoing = true;
    EXPECT_EQ(kBatchLineFailed, run("brake\nfrobnicate\nthrow\necho b\n"));
    EXPECT_EQ((Lines{atLine(1, "No brakes."), atLine(2, kUnknown),
                     atLine(3, "The console caught an exception: oh")}),
              failures);
    EXPECT_NE(std::string::npos,
              printed().find(">> throw\nThe console caught an exception: oh\n>> echo b\n    b\n"));
}

TEST_F(BatchTest, SeesFailuresInsideOfAliasesAndFiles)
{
    console.execute(U"alias inner \"frobnicate;echo a\"");
    EXPECT_EQ(kBatchLineFailed, run("inner\n"));
    EXPECT_EQ(Lines{atLine(1, kUnknown)}, failures);
}

TEST_F(BatchTest, EndsWhereACommandEndsAllThatRuns)
{
    EXPECT_EQ(kBatchSucceeded, run("echo a\nquit\nfrobnicate\n"));
    EXPECT_EQ(Lines{}, failures);
    EXPECT_EQ(">> echo a\n    a\n\n>> quit\n", printed());
}

TEST_F(BatchTest, RunsLinesAsTheyAre)
{
    EXPECT_EQ(kBatchLineFailed,
              runBatch(console, std::vector<std::u32string>{U"echo a", U"// no comment"}, options));
    EXPECT_EQ(Lines{"line 2: '//' is not a recognized command.  Type 'help' to list available commands."},
              failures);
}

TEST_F(BatchTest, SaysWhyAFileCantBeRun)
{
    EXPECT_EQ(kBatchImpossible, runBatch(console, folder.path() / "none", options));
    EXPECT_EQ(kBatchImpossible, runBatch(console, folder.path(), options));
    const std::filesystem::path link = folder.path() / "link";
    std::filesystem::create_symlink(link, link);
    EXPECT_EQ(kBatchImpossible, runBatch(console, link, options));
    const std::string path = folder.path().string();
    EXPECT_EQ((Lines{"Can't run '" + path + "/none': there is no such file.",
                     "Can't run '" + path + "': it is a directory.",
                     "Can't run '" + path +
                         "/link': " + test::systemText(std::errc::too_many_symbolic_link_levels) + "."}),
              failures);
}

TEST_F(BatchTest, SaysWhyAFileCantBeReadToItsEnd)
{
    EXPECT_EQ(kBatchImpossible, runBatch(console, "/proc/self/mem", options));
    EXPECT_EQ(Lines{"Can't read '/proc/self/mem' to its end: " + test::systemText(std::errc::io_error) + "."},
              failures);
}

TEST_F(BatchTest, RunsWhatItReadOfAFileThatIsLostMeanwhile)
{
    std::string text = "lose\n";
    while (text.size() < 65536) { // more than one read of the stream takes
        text += "echo a\n";
    }
    test::LostFile file(text);
    test::addCommand(console, U"lose").onExecute = [&file](const auto&, Console&) { file.lose(); };
    EXPECT_EQ(kBatchImpossible, runBatch(console, file.path(), options));
    EXPECT_EQ(Lines{"Can't read '" + file.path().string() +
                    "' to its end: " + test::systemText(std::errc::no_such_process) + "."},
              failures);
    EXPECT_TRUE(printed().starts_with(">> lose\n\n>> echo a\n    a\n\n>> echo a\n"));
    EXPECT_TRUE(printed().ends_with(">> echo a\n    a\n\n"));
}

TEST_F(BatchTest, StopsWhereItsTranscriptCantBePrinted)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> full(std::fopen("/dev/full", "w"), &std::fclose);
    options.output = full.get();
    EXPECT_EQ(kBatchImpossible, run("echo a\necho b\n"));
    EXPECT_EQ(Lines{"Can't print the transcript: " + test::systemText(std::errc::no_space_on_device) + "."},
              failures);
    EXPECT_EQ(5u, console.logSize())
        << "two lines at the start, three of the first line, and none of the second";
}

TEST_F(BatchTest, PrintsNothingToNowhere)
{
    options.output = nullptr;
    EXPECT_EQ(kBatchSucceeded, run("echo a\n"));
    EXPECT_EQ("", printed());
}

TEST_F(BatchTest, PrintsWhatOtherThreadsWriteMeanwhileInTheOrderOfTheLog)
{
    test::addCommand(console, U"work").onExecute = [](const auto&, Console& running) {
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&running] {
                for (int line = 0; line < 100; ++line) {
                    running.write(U"from a thread", Output);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    };
    EXPECT_EQ(kBatchSucceeded, run("work\n"));
    std::string expected = ">> work\n";
    for (int i = 0; i < 400; ++i) {
        expected += "from a thread\n";
    }
    EXPECT_EQ(expected + "\n", printed());
}

TEST_F(BatchTest, MayBeginWhileAnotherThreadWrites)
{
    std::atomic<bool> isDone = false;
    std::thread writer([&] {
        while (!isDone) {
            console.write(U"from a thread", Output);
        }
    });
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(kBatchSucceeded, runBatch(console, std::vector<std::u32string>{U"echo a"}, options));
    }
    isDone = true;
    writer.join();
}

TEST_F(BatchTest, TakesLinesOfAnyLength)
{
    EXPECT_EQ(kBatchSucceeded, run("echo " + std::string(3'000'000, 'x') + "\n"));
    EXPECT_EQ(Lines{}, failures);
}

} // namespace
} // namespace zephyr::console::remote
