#include "sandbox/program/StartupFile.h"

#include "sandbox/SandboxFixture.h"
#include "sandbox/program/Options.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/common/SystemPaths.h"

namespace zephyr::test {
namespace {

class StartupFile : public SandboxFixture
{
protected:
    StartupFile() { sandbox.console().appendRunpath(directory.path()); }

    std::string complaint() { return complaintAboutStartup(options, sandbox.console()).toStdString(); }

    /// The wind's speed after the file has run.
    double windAfterStart()
    {
        EXPECT_EQ("", complaint());
        runStartupFile(options, sandbox.console());
        return sandbox.simulation().wind().speed;
    }

    TemporaryDirectory directory;
    sandbox::Options options;
};

TEST_F(StartupFile, IsFoundInTheRunpathWithOrWithoutItsEnding)
{
    directory.write("calm.console", "wind set 1\n");
    directory.write("deep/wild.console", "wind set 2\n");
    options.startup = "calm";
    EXPECT_EQ(1.0, windAfterStart());
    options.startup = "deep/wild.console";
    EXPECT_EQ(2.0, windAfterStart());
}

TEST_F(StartupFile, MayBeNamedByItsWholePath)
{
    options.startup = QString::fromStdString(directory.write("calm.console", "wind set 1\n").string());
    EXPECT_EQ(1.0, windAfterStart());
    EXPECT_EQ("wind set 1", driver.log().front());
}

TEST_F(StartupFile, IsTakenFromTheFirstDirectoryThatHasIt)
{
    const TemporaryDirectory second;
    directory.write("calm.console", "wind set 1\n");
    second.write("calm.console", "wind set 2\n");
    sandbox.console().appendRunpath(second.path());
    options.startup = "calm";
    EXPECT_EQ(1.0, windAfterStart());
}

TEST_F(StartupFile, IsRunInPlaceOfTheUsualOne)
{
    directory.write("startup.console", "wind set 5\n");
    EXPECT_EQ(5.0, windAfterStart());

    directory.write("calm.console", "wind show\n");
    sandbox.restart();
    options.startup = "calm";
    EXPECT_EQ(12.0, windAfterStart());

    options.startup.clear();
    options.skipsStartup = true;
    EXPECT_EQ(12.0, windAfterStart());
}

TEST_F(StartupFile, MustBeThereAndReadableWhenItIsNamed)
{
    EXPECT_EQ("", complaint());
    options.startup = "no such";
    EXPECT_EQ("can't run 'no such': there is no such file.", complaint());
    options.startup = QString(300, 'x');
    EXPECT_EQ("can't run '" + std::string(300, 'x') + "': there is no such file.", complaint());
    directory.write("folder.console/a", "");
    options.startup = "folder";
    EXPECT_EQ("can't run 'folder': it is a directory.", complaint());
}

TEST_F(StartupFile, MayBeMissingButNotUnreadableWhenItIsTheUsualOne)
{
    EXPECT_EQ("", complaint());
    directory.write("startup.console/a", "");
    EXPECT_EQ("can't run 'startup.console': it is a directory.", complaint());
    options.skipsStartup = true;
    EXPECT_EQ("", complaint());
}

TEST_F(StartupFile, IsCalledAsTheUserCallsIt)
{
    EXPECT_EQ("startup.console", startupName(options));
    options.startup = "calm";
    EXPECT_EQ("calm", startupName(options));
}

} // namespace
} // namespace zephyr::test
