#include "sandbox/program/StartupFile.h"

#include "sandbox/SandboxFixture.h"
#include "support/TemporaryDirectory.h"

#include <optional>

namespace zephyr::test {
namespace {

class StartupFile : public SandboxFixture
{
protected:
    StartupFile() { sandbox.console().appendRunpath(directory.path()); }

    std::optional<std::string> complaint()
    {
        const std::optional<QString> text = complaintAboutStartup(startup, sandbox.console());
        return text ? std::optional(text->toStdString()) : std::nullopt;
    }

    /// The wind's speed after the file has run.
    double windAfterStart()
    {
        EXPECT_EQ(std::nullopt, complaint());
        runStartupFile(startup, sandbox.console());
        return sandbox.simulation().wind().speed;
    }

    TemporaryDirectory directory;
    sandbox::StartupChoice startup;
};

TEST_F(StartupFile, IsFoundInTheRunpathWithOrWithoutItsEnding)
{
    directory.write("calm.console", "wind set 1\n");
    directory.write("deep/wild.console", "wind set 2\n");
    startup = sandbox::NamedStartup{"calm"};
    EXPECT_EQ(1.0, windAfterStart());
    startup = sandbox::NamedStartup{"deep/wild.console"};
    EXPECT_EQ(2.0, windAfterStart());
}

TEST_F(StartupFile, MayBeNamedByItsWholePath)
{
    startup = sandbox::NamedStartup{
        QString::fromStdString(directory.write("calm.console", "wind set 1\n").string())};
    EXPECT_EQ(1.0, windAfterStart());
    EXPECT_EQ("wind set 1", driver.log().front());
}

TEST_F(StartupFile, IsTakenFromTheFirstDirectoryThatHasIt)
{
    const TemporaryDirectory second;
    directory.write("calm.console", "wind set 1\n");
    second.write("calm.console", "wind set 2\n");
    sandbox.console().appendRunpath(second.path());
    startup = sandbox::NamedStartup{"calm"};
    EXPECT_EQ(1.0, windAfterStart());
}

TEST_F(StartupFile, IsRunInPlaceOfTheUsualOne)
{
    directory.write("startup.console", "wind set 5\n");
    EXPECT_EQ(5.0, windAfterStart());

    directory.write("calm.console", "wind show\n");
    sandbox.restart();
    startup = sandbox::NamedStartup{"calm"};
    EXPECT_EQ(12.0, windAfterStart());

    startup = sandbox::NoStartup();
    EXPECT_EQ(12.0, windAfterStart());
}

TEST_F(StartupFile, MustExistAndBeReadableWhenItIsNamed)
{
    EXPECT_EQ(std::nullopt, complaint());
    startup = sandbox::NamedStartup{"no such"};
    EXPECT_EQ("can't run 'no such': there is no such file.", complaint());
    startup = sandbox::NamedStartup{QString(300, 'x')};
    EXPECT_EQ("can't run '" + std::string(300, 'x') + "': there is no such file.", complaint());
    directory.write("folder.console/a", "");
    startup = sandbox::NamedStartup{"folder"};
    EXPECT_EQ("can't run 'folder': it is a directory.", complaint());
}

TEST_F(StartupFile, MayBeMissingButNotUnreadableWhenItIsTheUsualOne)
{
    EXPECT_EQ(std::nullopt, complaint());
    directory.write("startup.console/a", "");
    EXPECT_EQ("can't run 'startup.console': it is a directory.", complaint());
    startup = sandbox::NoStartup();
    EXPECT_EQ(std::nullopt, complaint());
}

TEST_F(StartupFile, IsNamedAsTheUserNamesIt)
{
    EXPECT_EQ("startup.console", startupName(startup));
    startup = sandbox::NamedStartup{"calm"};
    EXPECT_EQ("calm", startupName(startup));
}

} // namespace
} // namespace zephyr::test
