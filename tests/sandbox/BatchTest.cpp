#include "sandbox/Pipe.h"
#include "sandbox/ProgramRun.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace zephyr::test {
namespace {

constexpr char kStart[] = "Zephyr Console:\n\n";

/// A terminal that nobody looks at. A program can write to it as a file, as long as it has room.
class Terminal
{
public:
    Terminal() : mDescriptor(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (mDescriptor < 0 || grantpt(mDescriptor) != 0 || unlockpt(mDescriptor) != 0) {
            throw std::runtime_error("no terminal");
        }
    }

    ~Terminal() { close(mDescriptor); }

    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// The file to write to.
    std::string path() const { return ptsname(mDescriptor); }

    /// Waits until something is written, and makes some room.
    void drain() const
    {
        char bytes[4096];
        if (::read(mDescriptor, bytes, sizeof(bytes)) <= 0) {
            throw std::runtime_error("can't read from a terminal");
        }
    }

private:
    int mDescriptor;
};

/// Reads the program's output until it contains `text`. \return the output since the last call.
std::string printedUpTo(Program& program, const std::string& text)
{
    std::string printed;
    while (printed.find(text) == std::string::npos) {
        if (!program.process().waitForReadyRead(kProcessTimeout)) {
            throw std::runtime_error("printed only: " + printed);
        }
        printed += program.process().readAllStandardOutput().toStdString();
    }
    return printed;
}

TEST(Batch, PrintsTheWholeTranscript)
{
    Program program;
    program.directory().write("whole.console", "// A comment.\n"
                                               "wind show\n"
                                               "\n"
                                               "run other\n"
                                               "alias calm \"wind set 0; sim step 60\"\n"
                                               "  calm  \n"
                                               "sim speed 1");
    program.directory().write("other.console", "wind set /speed=12.5 /heading=270\r\n");

    const Ended ended = program.run({"--batch", "whole.console"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ("", ended.err);
    EXPECT_EQ("Zephyr Console:\n"
              "\n"
              ">> wind show\n"
              "    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.\n"
              "\n"
              ">> run other\n"
              ">> wind set /speed=12.5 /heading=270\n"
              "    Wind: 12.5 m/s, heading 270 degrees, gust 0 m/s.\n"
              "\n"
              "\n"
              ">> alias calm \"wind set 0; sim step 60\"\n"
              "    Done.\n"
              "\n"
              ">> calm\n"
              ">> wind set 0\n"
              "    Wind: 0 m/s, heading 270 degrees, gust 0 m/s.\n"
              "\n"
              ">> sim step 60\n"
              "    Now at step 60 (0.5 s).\n"
              "\n"
              ">> sim speed 1\n"
              "    Speed: 1.\n"
              "\n",
              ended.out);
}

TEST(Batch, EndsAtTheFirstLineThatFails)
{
    Program program;
    program.directory().write("a.console", "wind show\n\nparticles count -3\nwind set 1\n");
    const Ended ended = program.run({"--batch", "a.console"});
    EXPECT_EQ(1, ended.exitCode);
    EXPECT_EQ("zephyr-sandbox: a.console:3: count: -3 is below 0.\n", ended.err);
    EXPECT_EQ(std::string::npos, ended.out.find("wind set 1"));
}

TEST(Batch, GoesOnAfterMistakesIfItIsToldTo)
{
    Program program;
    program.directory().write("a.console", "frobnicate now\nparticles count -3\nsim speed\n");
    const Ended ended = program.run({"--batch", "a.console", "--keep-going"});
    EXPECT_EQ(1, ended.exitCode);
    EXPECT_EQ("zephyr-sandbox: a.console:1: 'frobnicate' is not a recognized command. Type 'help' to list "
              "available commands.\n"
              "zephyr-sandbox: a.console:2: count: -3 is below 0.\n",
              ended.err);
    EXPECT_EQ("Zephyr Console:\n"
              "\n"
              ">> frobnicate now\n"
              "'frobnicate' is not a recognized command.  Type 'help' to list available commands.\n"
              "\n"
              ">> particles count -3\n"
              "    count: -3 is below 0.\n"
              "    Usage: particles count [COUNT]\n"
              "\n"
              ">> sim speed\n"
              "    Speed: 1.\n"
              "\n",
              ended.out);
}

TEST(Batch, NamesThePlaceOfEachFailure)
{
    Program program;
    const std::string startup = (program.directory().path() / "startup.console").string();
    program.directory().write("startup.console", "wind set fast\n");
    program.directory().write("a.console",
                              "alias bad \"wind gust 0; obstacle remove 7\"\nbad\nrun b\nwind show\n");
    program.directory().write("b.console", "sim record /path=no/such.csv\nquit\n");
    const Ended ended = program.run({"--batch", "a.console", "--keep-going"});
    EXPECT_EQ(1, ended.exitCode);
    EXPECT_EQ("zephyr-sandbox: " + startup +
                  ":1: speed: 'fast' is not a number from 0 to 60 m/s.\n"
                  "zephyr-sandbox: a.console:2: There is no obstacle 7.\n"
                  "zephyr-sandbox: a.console:3: Can't write 'no/such.csv': " +
                  systemText(std::errc::no_such_file_or_directory) + ".\n",
              ended.err);
    EXPECT_EQ("zephyr-sandbox: " + startup + ":1: speed: 'fast' is not a number from 0 to 60 m/s.\n",
              program.run({"--batch", "a.console"}).err);
}

TEST(Batch, WritesTheFilesThatItsLinesName)
{
    Program program;
    program.directory().write("a.console",
                              "wind show > report.txt\nsim record /path=\"my run.csv\" /steps=2\n");
    EXPECT_EQ("Zephyr Console:\n"
              "\n"
              ">> wind show > report.txt\n"
              "    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.\n"
              "\n"
              ">> sim record /path=\"my run.csv\" /steps=2\n"
              "        step 1 of 2\n"
              "        step 2 of 2\n"
              "    Wrote steps 1 to 2 to 'my run.csv'.\n"
              "\n",
              program.run({"--batch", "a.console"}).out);
    EXPECT_EQ("    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.\n", program.directory().read("report.txt"));
    EXPECT_TRUE(program.directory().has("my run.csv"));
}

TEST(Batch, NeedsNoScreen)
{
    Program program;
    program.setEnvironment("QT_QPA_PLATFORM", "xcb");
    program.removeEnvironment("DISPLAY");
    program.directory().write("a.console", "sim step\n");
    const Ended ended = program.run({"--batch", "a.console"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ(std::string(kStart) + ">> sim step\n    Now at step 1 (0.00833333 s).\n\n", ended.out);
    EXPECT_EQ("", ended.err);
}

TEST(Batch, MakesTheSameRecordingEachTime)
{
    Program program;
    program.directory().write("a.console", "wind gust 20\nsim record /path=a.csv /steps=50\n"
                                           "sim reset\nwind gust 20\nsim record /path=b.csv /steps=50\n");
    EXPECT_EQ(0, program.run({"--batch", "a.console"}).exitCode);
    EXPECT_EQ(program.directory().read("a.csv"), program.directory().read("b.csv"));
}

TEST(Batch, RunsTheStartupFileFirstUnlessToldNotTo)
{
    Program program;
    program.directory().write("startup.console", "wind set 1\n");
    program.directory().write("a.console", "wind set 2\n");
    EXPECT_EQ(std::string(kStart) + ">> wind set 1\n    Wind: 1 m/s, heading 90 degrees, gust 0 m/s.\n\n"
                                    ">> wind set 2\n    Wind: 2 m/s, heading 90 degrees, gust 0 m/s.\n\n",
              program.run({"--batch", "a.console"}).out);
    EXPECT_EQ(std::string(kStart) + ">> wind set 2\n    Wind: 2 m/s, heading 90 degrees, gust 0 m/s.\n\n",
              program.run({"--batch", "a.console", "--no-startup"}).out);
}

TEST(Batch, RunsTheStartupFileThatIsNamedFirst)
{
    Program program;
    program.directory().write("startup.console", "wind set 1\n");
    program.directory().write("mine.console", "wind set 3\n");
    program.directory().write("a.console", "wind set 2\n");
    EXPECT_EQ(std::string(kStart) + ">> wind set 3\n    Wind: 3 m/s, heading 90 degrees, gust 0 m/s.\n\n"
                                    ">> wind set 2\n    Wind: 2 m/s, heading 90 degrees, gust 0 m/s.\n\n",
              program.run({"--batch", "a.console", "--startup", "mine"}).out);

    const Ended missing = program.run({"--batch", "a.console", "--startup", "no-such"});
    EXPECT_EQ(2, missing.exitCode);
    EXPECT_EQ("", missing.out);
    EXPECT_EQ("zephyr-sandbox: can't run 'no-such': there is no such file.\n", missing.err);
}

TEST(Batch, EndsAtQuit)
{
    Program program;
    program.directory().write("a.console", "run b\nwind show\n");
    program.directory().write("b.console", "quit\nwind show\n");
    const Ended ended = program.run({"--batch", "a.console"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ(std::string(kStart) + ">> run b\n>> quit\n", ended.out);
    EXPECT_EQ("", ended.err);
}

TEST(Batch, SaysInOneLineWhyAFileCantBeRun)
{
    Program program;
    const Ended missing = program.run({"--batch", "no/such.console"});
    EXPECT_EQ(2, missing.exitCode);
    EXPECT_EQ("", missing.out);
    EXPECT_EQ("zephyr-sandbox: can't run 'no/such.console': there is no such file.\n", missing.err);

    const Ended directory = program.run({"--batch", "."});
    EXPECT_EQ(2, directory.exitCode);
    EXPECT_EQ("", directory.out);
    EXPECT_EQ("zephyr-sandbox: can't run '.': it is a directory.\n", directory.err);

    program.directory().write("a.console", "wind show\n");
    program.directory().write("startup.console/a", "");
    const Ended startup = program.run({"--batch", "a.console"});
    EXPECT_EQ(2, startup.exitCode);
    EXPECT_EQ("", startup.out);
    EXPECT_EQ("zephyr-sandbox: can't run 'startup.console': it is a directory.\n", startup.err);
}

TEST(Batch, EndsAtALineThatThrows)
{
    Program program;
    const std::string name(300, 'x');
    program.directory().write("a.console", "run " + name + "\nwind show\n");
    const Ended ended = program.run({"--batch", "a.console"});
    EXPECT_EQ(1, ended.exitCode);
    const std::string caught = "The console caught an exception: filesystem error: exists: " +
                               systemText(std::errc::filename_too_long);
    EXPECT_TRUE(ended.out.starts_with(kStart + (">> run " + name + "\n") + caught)) << ended.out;
    EXPECT_TRUE(ended.err.starts_with("zephyr-sandbox: a.console:1: " + caught)) << ended.err;
    EXPECT_EQ(ended.err.size() - 1, ended.err.find('\n'));
}

TEST(Batch, PrintsEachLineBeforeTheNextOneIsThere)
{
    Program program;
    const Pipe file(program.directory().path() / "slow.console");
    program.start({"--batch", "slow.console"});
    file.write("wind show\n");
    EXPECT_EQ(std::string(kStart) + ">> wind show\n    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.\n\n",
              printedUpTo(program, "m/s.\n\n"));
    EXPECT_EQ(QProcess::Running, program.process().state());

    file.write("quit\n");
    const Ended ended = program.end();
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ(">> quit\n", ended.out);
}

TEST(Batch, PrintsTheProgressOfACommandWhileItWorks)
{
    Program program;
    const Terminal recording;
    program.directory().write("a.console",
                              "particles count 100\nsim record /path=" + recording.path() + " /steps=1000\n");
    program.start({"--batch", "a.console"});

    // The recording is far larger than a terminal's room, so that it can't end unless somebody reads.
    std::string printed;
    while (printed.find("step 100 of 1000\n") == std::string::npos) {
        recording.drain();
        program.process().waitForReadyRead(1);
        printed += program.process().readAllStandardOutput().toStdString();
    }
    EXPECT_EQ(std::string::npos, printed.find("step 900 of 1000"));
    EXPECT_EQ(QProcess::Running, program.process().state());
    program.process().kill();
    program.process().waitForFinished();
}

TEST(Batch, SaysInOneLineThatItsOutputCantBeWritten)
{
    Program full;
    full.directory().write("a.console", "help\n");
    full.process().setStandardOutputFile("/dev/full");
    const Ended noSpace = full.run({"--batch", "a.console"});
    EXPECT_EQ(2, noSpace.exitCode);
    EXPECT_EQ("zephyr-sandbox: can't write standard output: " + systemText(std::errc::no_space_on_device) +
                  ".\n",
              noSpace.err);

    Program broken;
    const Pipe file(broken.directory().path() / "b.console");
    auto reader = std::make_unique<Pipe>(broken.directory().path() / "out");
    broken.process().setStandardOutputFile(
        QString::fromStdString((broken.directory().path() / "out").string()));
    broken.start({"--batch", "b.console"});
    reader.reset();
    file.write("help\nquit\n");
    const Ended noReader = broken.end();
    EXPECT_EQ(2, noReader.exitCode);
    EXPECT_EQ("zephyr-sandbox: can't write standard output: " + systemText(std::errc::broken_pipe) + ".\n",
              noReader.err);
}

TEST(Batch, RunsTheTourBesideTheProgram)
{
    Program program;
    program.directory().write("a.console", "run tour\n");
    const Ended ended = program.run({"--batch", "a.console"});
    EXPECT_EQ(1, ended.exitCode); // for the mistakes that it shows
    EXPECT_EQ("zephyr-sandbox: a.console:1: wind set: '/colour' is not /speed or /heading.\n", ended.err);
    for (const char* const part :
         {">> run tour\n>> help\nRegistered Commands:\n", "\n>> tour_storm\n>> wind set /speed=45\n",
          "    Wind: 45 m/s, heading 90 degrees, gust 7.70126 m/s.\n",
          "    wind set: '/colour' is not /speed or /heading.\n", "\n>> run gusts\n>> wind gust 10\n",
          "    Now at step 540 (4.5 s).\n", "    Obstacle 7: x 20 m, y 48 m, radius 6 m.\n",
          "    Wrote 2 aliases to 'tour-aliases.console'.\n",
          "\n>> run tour-aliases\n>> alias tour_breeze \"wind set /speed=4 /heading=90; wind show\"\n    "
          "Done.\n",
          "\n>> run slalom\n>> sim reset\n", " lines to 'tour-log.txt'.\n",
          "    Cleared alias 'tour_storm'\n",
          "    Now at step 240 (2 s).\n\n>> sim resume\n    Running.\n\n\n"}) {
        EXPECT_NE(std::string::npos, ended.out.find(part)) << part;
    }
    EXPECT_EQ(std::string::npos, ended.out.find("not a recognized"));
    EXPECT_EQ(std::string::npos, ended.out.find("ERROR"));
    EXPECT_EQ("    Wind: 45 m/s, heading 90 degrees, gust 10.748 m/s.\n",
              program.directory().read("wind-report.txt"));
    const std::string log = program.directory().read("tour-log.txt");
    EXPECT_TRUE(ended.out.starts_with(log));
    EXPECT_TRUE(log.ends_with("\n>> log_save tour-log.txt\n"));
}

TEST(Batch, HasATourThatLeavesTheUsersAliasesAlone)
{
    Program program;
    program.directory().write("a.console", "alias breeze \"wind set 1\"\nalias storm \"wind set 2\"\n"
                                           "run tour\nhelp\n");
    const std::string out = program.run({"--batch", "a.console", "--keep-going"}).out;
    EXPECT_TRUE(out.ends_with("\nAliases:\n"
                              "    back -> \"wind set /heading=90; wind gust 10\"\n"
                              "    breeze -> \"wind set 1\"\n"
                              "    flip -> \"wind set /heading=270; wind gust 10\"\n"
                              "    storm -> \"wind set 2\"\n\n"))
        << out;
}

} // namespace
} // namespace zephyr::test
