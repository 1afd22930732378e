#include "sandbox/Pipe.h"
#include "sandbox/SandboxFixture.h"
#include "support/SystemText.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/commands/Failure.h"

#include <algorithm>
#include <sstream>

namespace zephyr::test {
namespace {

using SimCommand = SandboxFixture;

const std::string kStepUsage = "sim step [COUNT]";
const std::string kSpeedUsage = "sim speed [FACTOR]";
const std::string kRecordUsage = "sim record /path=FILE [/steps=NUMBER]";

Lines linesOf(const std::string& text)
{
    std::istringstream stream(text);
    Lines lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST_F(SimCommand, PausesAndResumes)
{
    EXPECT_EQ(Lines({"    Paused."}), answerTo("sim pause"));
    EXPECT_TRUE(sandbox.clock().isPaused());
    EXPECT_EQ(Lines({"    Running."}), answerTo("sim resume"));
    EXPECT_FALSE(sandbox.clock().isPaused());
}

TEST_F(SimCommand, StepsOnceOrAsOftenAsAsked)
{
    EXPECT_EQ(Lines({"    Now at step 1 (0.00833333 s)."}), answerTo("sim step"));
    EXPECT_EQ(Lines({"    Now at step 120 (1 s)."}), answerTo("sim step 119"));
    EXPECT_EQ(120U, sandbox.simulation().stepCount());
}

TEST_F(SimCommand, RefusesBadStepCounts)
{
    expectErrors("sim step",
                 {{"0", "count: 0 is below 1."},
                  {"-1", "count: -1 is below 1."},
                  {"10001", "count: 10001 is above 10000."},
                  {"1.5", "count: '1.5' is not a whole number from 1 to 10000."},
                  {"x", "count: 'x' is not a whole number from 1 to 10000."},
                  {"1 2", "sim step: '2' is one word too many."}},
                 kStepUsage);
    EXPECT_EQ(0U, sandbox.simulation().stepCount());
}

TEST_F(SimCommand, ShowsAndSetsTheSpeed)
{
    EXPECT_EQ(Lines({"    Speed: 1."}), answerTo("sim speed"));
    EXPECT_EQ(Lines({"    Speed: 0.1."}), answerTo("sim speed 0.1"));
    EXPECT_EQ(Lines({"    Speed: 10."}), answerTo("sim speed 10"));
    EXPECT_EQ(10.0, sandbox.clock().speed());
}

TEST_F(SimCommand, RefusesBadSpeeds)
{
    expectErrors("sim speed",
                 {{"0", "factor: 0 is below 0.1."},
                  {"0.09", "factor: 0.09 is below 0.1."},
                  {"10.1", "factor: 10.1 is above 10."},
                  {"-1", "factor: -1 is below 0.1."},
                  {"nan", "factor: 'nan' is not a number from 0.1 to 10."},
                  {"x", "factor: 'x' is not a number from 0.1 to 10."},
                  {"1 2", "sim speed: '2' is one word too many."}},
                 kSpeedUsage);
    EXPECT_EQ(1.0, sandbox.clock().speed());
}

TEST_F(SimCommand, ResetsTheSimulationButNeitherPauseNorSpeed)
{
    answerTo("sim pause");
    answerTo("sim speed 2");
    answerTo("wind set 5 5");
    answerTo("particles clear");
    answerTo("sim step 3");

    EXPECT_EQ(Lines({"    Back at the start."}), answerTo("sim reset"));
    EXPECT_EQ(0U, sandbox.simulation().stepCount());
    EXPECT_EQ(4000U, sandbox.simulation().particles().size());
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
    EXPECT_TRUE(sandbox.clock().isPaused());
    EXPECT_EQ(2.0, sandbox.clock().speed());
}

TEST_F(SimCommand, RefusesWordsAfterPauseResumeAndReset)
{
    expectErrors("sim pause", {{"now", "sim pause: 'now' is one word too many."}}, "sim pause");
    expectErrors("sim resume", {{"now", "sim resume: 'now' is one word too many."}}, "sim resume");
    expectErrors("sim reset", {{"now", "sim reset: 'now' is one word too many."}}, "sim reset");
    EXPECT_FALSE(sandbox.clock().isPaused());
}

TEST_F(SimCommand, RecordsPositionsToAFileWithASpaceInItsName)
{
    const TemporaryDirectory directory;
    const std::string path = (directory.path() / "my run.csv").string();

    EXPECT_EQ(Lines({"        step 2 of 20", "        step 4 of 20", "        step 6 of 20",
                     "        step 8 of 20", "        step 10 of 20", "        step 12 of 20",
                     "        step 14 of 20", "        step 16 of 20", "        step 18 of 20",
                     "        step 20 of 20", "    Wrote steps 1 to 20 to '" + path + "'."}),
              answerTo("sim record /path=\"" + path + "\" /steps=20"));
    const Lines rows = linesOf(directory.read("my run.csv"));
    ASSERT_EQ(1U + 20U * 100U, rows.size());
    EXPECT_EQ("step,time,particle,x,y", rows[0]);
    EXPECT_EQ(0U, rows[1].find("1,0.008,0,"));
    EXPECT_EQ(0U, rows[100].find("1,0.008,99,"));
    EXPECT_EQ(0U, rows[101].find("2,0.017,0,"));
    EXPECT_EQ(20U, sandbox.simulation().stepCount());
}

TEST_F(SimCommand, RecordsWhereTheParticlesAre)
{
    const TemporaryDirectory directory;
    answerTo("particles count 1");
    answerTo("sim record /steps=1 /path=" + (directory.path() / "one.csv").string());

    const glm::dvec2 position = sandbox.simulation().particles().front().position;
    double x = 0.0;
    double y = 0.0;
    char comma = 0;
    std::istringstream row(linesOf(directory.read("one.csv")).at(1).substr(std::string("1,0.008,0,").size()));
    row >> x >> comma >> y;
    EXPECT_NEAR(position.x, x, 0.0006);
    EXPECT_NEAR(position.y, y, 0.0006);
    EXPECT_EQ(',', comma);
}

TEST_F(SimCommand, ReportsEachStepOfAShortRecordingOnce)
{
    const TemporaryDirectory directory;
    const std::string path = (directory.path() / "short.csv").string();

    EXPECT_EQ(Lines({"        step 1 of 3", "        step 2 of 3", "        step 3 of 3",
                     "    Wrote steps 1 to 3 to '" + path + "'."}),
              answerTo("sim record /steps=3 /path=" + path));
}

TEST_F(SimCommand, RecordsSixHundredStepsIfNotToldOtherwise)
{
    answerTo("particles count 1");
    const Lines answer = answerTo("sim record /path=/dev/null");
    EXPECT_EQ("    Wrote steps 1 to 600 to '/dev/null'.", answer.back());
    EXPECT_EQ(11U, answer.size());
}

TEST_F(SimCommand, SaysInOneLineWhyAFileCantBeWritten)
{
    const TemporaryDirectory directory;
    const std::string path = directory.path().string();

    EXPECT_EQ(Lines({"    Can't write '" + path +
                     "/no/x.csv': " + systemText(std::errc::no_such_file_or_directory) + "."}),
              answerTo("sim record /path=" + path + "/no/x.csv"));
    EXPECT_EQ(Lines({"    Can't write '" + path + "': " + systemText(std::errc::is_a_directory) + "."}),
              answerTo("sim record /path=" + path));
    EXPECT_EQ(0U, sandbox.simulation().stepCount());
}

TEST_F(SimCommand, RefusesToRecordToAPipe)
{
    const TemporaryDirectory directory;
    const WorkingDirectory here(directory.path());
    const Pipe pipe("pipe");
    EXPECT_EQ(Lines({"    Can't write 'pipe': it is no regular file."}),
              answerTo("sim record /path=pipe /steps=1"));
    EXPECT_EQ(0U, sandbox.simulation().stepCount());
}

TEST_F(SimCommand, StopsRecordingOnAFullDisk)
{
    const Lines answer = answerTo("sim record /path=/dev/full /steps=10000");
    EXPECT_EQ(Lines({"    Can't write '/dev/full': " + systemText(std::errc::no_space_on_device) + "."}),
              answer);
    EXPECT_LT(sandbox.simulation().stepCount(), 100U);
}

TEST_F(SimCommand, NoticesAFullDiskWhenTheLastRowsAreWritten)
{
    answerTo("particles count 1");
    EXPECT_EQ(Lines({"        step 1 of 1",
                     "    Can't write '/dev/full': " + systemText(std::errc::no_space_on_device) + "."}),
              answerTo("sim record /path=/dev/full /steps=1"));
}

TEST_F(SimCommand, RefusesBadRecordings)
{
    const TemporaryDirectory directory;
    const WorkingDirectory here(directory.path());
    expectErrors(
        "sim record",
        {{"", "/path: nothing given; expected a file."},
         {"/steps=5", "/path: nothing given; expected a file."},
         {"/path=", "/path: '' is no file."},
         {"/path", "/path: nothing given; expected a file."},
         {"/path=a.csv /steps=0", "/steps: 0 is below 1."},
         {"/path=a.csv /steps=x", "/steps: 'x' is not a whole number from 1 to 10000."},
         {"/path=a.csv /steps=10001", "/steps: 10001 is above 10000."},
         {"/path=a.csv 5", "sim record: '5' is one word too many; quote words that belong together."},
         {"a.csv", "sim record: 'a.csv' is one word too many."},
         {"/path=a.csv /path=b.csv", "/path: given twice."},
         {"/path=a.csv /colour=red", "sim record: '/colour' is not /path or /steps."}},
        kRecordUsage);
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST_F(SimCommand, SendsItsProgressWhereItIsRedirected)
{
    const TemporaryDirectory directory;
    const WorkingDirectory here(directory.path());
    answerTo("sim record /path=a.csv /steps=1 > progress.txt");

    EXPECT_EQ("        step 1 of 1\n    Wrote steps 1 to 1 to 'a.csv'.\n", directory.read("progress.txt"));
}

TEST_F(SimCommand, FailsIfARecordingCantBeWritten)
{
    const console::commands::FailureCounter failures(sandbox.console());
    answerTo("particles count 1");
    answerTo("sim record /path=/dev/null /steps=1");
    EXPECT_EQ(0U, failures.count());
    answerTo("sim record /path=/no/such/a.csv");
    EXPECT_EQ(1U, failures.count());
    answerTo("sim record /path=/dev/full /steps=1");
    EXPECT_EQ(2U, failures.count());
}

TEST_F(SimCommand, FailsIfARecordingIsWorking)
{
    const console::commands::FailureCounter failures(sandbox.console());
    sandbox.recording().moveToBackground();
    answerTo("sim record /path=/dev/null /steps=10");
    EXPECT_EQ(0U, failures.count());
    const Lines working{"    Still recording to '/dev/null', step 0 of 10.  'sim reset' ends that."};
    EXPECT_EQ(working, answerTo("sim step"));
    EXPECT_EQ(working, answerTo("sim record /path=/dev/null"));
    EXPECT_EQ(2U, failures.count());
}

TEST_F(SimCommand, IsDescribedByHelp)
{
    EXPECT_EQ(Lines({"    Shows or sets how fast simulated time passes.",
                     "    Usage: sim speed [FACTOR]\n"
                     "       FACTOR: a number from 0.1 to 10. 1 is as fast as a clock."}),
              answerTo("help sim speed"));
    EXPECT_EQ(Lines({"    Moves the simulation on at once, paused or not.",
                     "    Usage: sim step [COUNT]\n"
                     "       COUNT: a whole number from 1 to 10000, by default 1. Steps of 1/120 s."}),
              answerTo("help sim step"));
    EXPECT_EQ(
        Lines({"    Moves the simulation on and writes the places of its first 100 particles to a CSV file.",
               "    Usage: sim record /path=FILE [/steps=NUMBER]\n"
               "       /path: a file. Quote a name with spaces.\n"
               "       /steps: a whole number from 1 to 10000, by default 600."}),
        answerTo("help sim record"));
}

} // namespace
} // namespace zephyr::test
