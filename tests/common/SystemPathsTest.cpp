#include "zephyr/common/SystemPaths.h"

#include "TemporaryWorkingDirectory.h"

#include <QCoreApplication>
#include <QMessageLogContext>
#include <QString>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

namespace {

using zephyr::currentDir;
using zephyr::executableDir;
using zephyr::test::TemporaryWorkingDirectory;

namespace fs = std::filesystem;

/// The directory of this program, into which the build also put the helper program.
const fs::path kBuildDirectory = fs::path(PRINT_PATHS_PROGRAM).parent_path();

/// What the shell command prints.
std::string outputOf(const std::string& command)
{
    std::string output;
    FILE* const pipe = popen(command.c_str(), "r");
    std::array<char, 256> part{};
    while (pipe != nullptr && std::fgets(part.data(), part.size(), pipe) != nullptr) {
        output += part.data();
    }
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

int& warningCount()
{
    static int count = 0;
    return count;
}

TEST(SystemPaths, FindsTheExecutableWithoutAnApplicationObjectAndWithoutAWarning)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    warningCount() = 0;
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString&) { ++warningCount(); });
    EXPECT_EQ(executableDir(), fs::canonical(kBuildDirectory).u32string());
    qInstallMessageHandler(previous);
    EXPECT_EQ(warningCount(), 0);
}

TEST(SystemPaths, FindsTheSameExecutableWithAnApplicationObject)
{
    const std::u32string without = executableDir();
    int argumentCount = 1;
    char name[] = "/elsewhere/test";
    char* arguments[] = {name, nullptr};
    const QCoreApplication application(argumentCount, arguments);
    EXPECT_EQ(executableDir(), without);
    EXPECT_EQ(executableDir(), QCoreApplication::applicationDirPath().toStdU32String());
}

TEST(SystemPaths, FindsTheExecutableBehindALink)
{
    const TemporaryWorkingDirectory directory;
    fs::create_symlink(PRINT_PATHS_PROGRAM, directory.path() / "link");
    EXPECT_EQ(outputOf("./link"),
              fs::canonical(kBuildDirectory).string() + "\n" + directory.path().string() + "\n");
}

TEST(SystemPaths, ReplacesTheIllFormedPartsOfTheExecutablesDirectory)
{
    const TemporaryWorkingDirectory directory;
    const std::string odd = "caf\xE2\x82_\u00E9";
    fs::create_directory(odd);
    fs::copy_file(PRINT_PATHS_PROGRAM, odd + "/program");
    EXPECT_EQ(outputOf("./" + odd + "/program"),
              directory.path().string() + "/caf\uFFFD_\u00E9\n" + directory.path().string() + "\n");
}

TEST(SystemPaths, FollowsTheCurrentDirectory)
{
    const TemporaryWorkingDirectory directory;
    EXPECT_EQ(currentDir(), directory.path().u32string());
    fs::create_directory("sub \u00E9\U0001F680");
    fs::current_path("sub \u00E9\U0001F680");
    EXPECT_EQ(currentDir(), directory.path().u32string() + U"/sub \u00E9\U0001F680");
}

TEST(SystemPaths, ReplacesTheIllFormedPartsOfTheCurrentDirectory)
{
    const TemporaryWorkingDirectory directory;
    const fs::path odd = "\xFF\xFE_\xE2\x82_\xED\xA0\x80_\xC3";
    fs::create_directory(odd);
    fs::current_path(odd);
    EXPECT_EQ(currentDir(), directory.path().u32string() + U"/\uFFFD\uFFFD_\uFFFD_\uFFFD\uFFFD\uFFFD_\uFFFD");
}

TEST(SystemPaths, EndsOnlyTheRootDirectoryWithASlash)
{
    const TemporaryWorkingDirectory directory;
    fs::current_path("/");
    EXPECT_EQ(currentDir(), U"/");
}

TEST(SystemPaths, IsEmptyForARemovedCurrentDirectory)
{
    const TemporaryWorkingDirectory directory;
    fs::remove(directory.path());
    EXPECT_EQ(currentDir(), U"");
}

} // namespace
