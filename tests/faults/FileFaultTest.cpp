// Files that fail while a console uses them: full disks, places that are write-protected, files that change.

#include "support/ConsoleFilesFixture.h"
#include "support/FileSizeLimit.h"
#include "support/LostFile.h"
#include "support/SystemText.h"
#include "support/Unprivileged.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include <sys/mount.h>

namespace zephyr::test {
namespace {

namespace fs = std::filesystem;
using console::Console;
using console::ConsoleArgs;

constexpr int kLines = 5000;
constexpr std::size_t kDiskSize = 65536; // bytes, fewer than the lines need
const std::string kLine(59, 'x');

/// Mounts a file system of kDiskSize in `directory` while it lives, if the process may mount one.
class SmallDisk
{
public:
    explicit SmallDisk(fs::path directory) : mDirectory(std::move(directory))
    {
        const std::string options = "size=" + std::to_string(kDiskSize);
        mIsMounted = mount("tmpfs", mDirectory.c_str(), "tmpfs", 0, options.c_str()) == 0;
    }

    ~SmallDisk()
    {
        if (mIsMounted) {
            umount(mDirectory.c_str());
        }
    }

    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isMounted() const { return mIsMounted; }

private:
    fs::path mDirectory;
    bool mIsMounted;
};

class FileFault : public ConsoleFilesFixture
{
protected:
    FileFault()
    {
        add(U"fill", [](const ConsoleArgs&, Console& console) {
            for (int i = 0; i < kLines; ++i) {
                console.write(kLine, console::Output);
            }
        });
        addWriter(U"say", U"said");
    }

    /// Redirects more lines to `file` than its disk holds. Expects all of them in the log, and the first of them
    /// in the file.
    void expectFilled(const std::string& file)
    {
        const Lines log = logOf("fill > " + file);
        ASSERT_EQ(log.size(), kLines + 2U);
        EXPECT_EQ(log[kLines], output(kLine));
        const std::string written = mDirectory.read(file);
        EXPECT_GT(written.size(), kDiskSize / 2);
        EXPECT_LE(written.size(), kDiskSize);
        EXPECT_EQ(written.substr(0, 2 * (kLine.size() + 1)), kLine + '\n' + kLine + '\n');
        EXPECT_EQ(logOf("say"), (Lines{echo("say"), output("said"), output("")}));
    }

    /// The line about a file that is open and can't be read any further.
    static LogLine unreadable(const fs::path& file, std::errc error)
    {
        return output("ERROR: Console file '" + file.string() +
                          "' can't be read to its end: " + systemText(error) + ".  The rest will not be run.",
                      4);
    }

    void expectRedirected(const std::string& file)
    {
        execute("say > " + file);
        EXPECT_EQ(mDirectory.read(file), "said\n");
    }
};

TEST_F(FileFault, KeepsTheLogWhereAFileMayNotGrowFurther)
{
    {
        const FileSizeLimit limit(kDiskSize);
        expectFilled("out");
    }
    expectRedirected("other");
}

TEST_F(FileFault, KeepsTheLogWhereADiskFillsUpHalfWay)
{
    const SmallDisk disk(makeDirectory("disk"));
    if (!disk.isMounted()) {
        GTEST_SKIP()
            << "only the superuser may mount a file system; the limited file above fails in the same way";
    }
    expectFilled("disk/out");
    expectRedirected("other");
    fs::remove(at("disk/out"));
    expectRedirected("disk/out");
}

TEST_F(FileFault, WritesToTheLogOnlyWhereTheTargetIsADirectory)
{
    makeDirectory("folder");
    EXPECT_EQ(logOf("say > folder"), (Lines{echo("say > folder"), output("said"), output("")}));
    expectRedirected("other");
}

using FileFaultDeathTest = FileFault;

TEST_F(FileFaultDeathTest, WritesToTheLogOnlyWhereTheUserMayNotWrite)
{
    mDirectory.write("kept", "as it was");
    EXPECT_EXIT(runUnprivileged([this] {
                    // This fails if the superuser runs the tests: both then belong to him, and are closed to others.
                    std::error_code ignored;
                    fs::permissions("kept", fs::perms(0444), ignored);
                    fs::permissions(".", fs::perms(0555), ignored);
                    execute("say > kept");
                    execute("say > new");
                    execute("say");
                    printLog(mConsole);
                }),
                testing::ExitedWithCode(0), "^say > kept\nsaid\n\nsay > new\nsaid\n\nsay\nsaid\n\n$");
    fs::permissions(".", fs::perms(0755));
    EXPECT_EQ(mDirectory.read("kept"), "as it was");
    EXPECT_FALSE(mDirectory.has("new"));
}

TEST_F(FileFault, RunsAFileToItsEndThoughItIsRemovedMeanwhile)
{
    add(U"remove", [this](const ConsoleArgs&, Console&) { fs::remove(at("go.console")); });
    EXPECT_TRUE(mConsole.runFile(mDirectory.write("go.console", "remove\nsay\nsay\n")));
    EXPECT_FALSE(mDirectory.has("go.console"));
    EXPECT_EQ(log(), (Lines{echo("remove"), output(""), echo("say"), output("said"), output(""), echo("say"),
                            output("said"), output("")}));
}

TEST_F(FileFault, RunsTheFileThatItOpenedThoughAnotherTakesItsPlaceMeanwhile)
{
    add(U"replace", [this](const ConsoleArgs&, Console&) {
        fs::rename(mDirectory.write("other", "fill\n"), at("go.console"));
    });
    EXPECT_TRUE(mConsole.runFile(mDirectory.write("go.console", "replace\nsay\n")));
    EXPECT_EQ(log(), (Lines{echo("replace"), output(""), echo("say"), output("said"), output("")}));
}

TEST_F(FileFault, EndsAFileThatIsEmptiedMeanwhileAndRunsOn)
{
    std::string text = "empty\n";
    while (text.size() < kDiskSize) { // more than one read of the stream takes
        text += "say\n";
    }
    add(U"empty", [this](const ConsoleArgs&, Console&) { mDirectory.write("go.console", ""); });
    EXPECT_TRUE(mConsole.runFile(mDirectory.write("go.console", text)));
    const Lines ran = log();
    EXPECT_LT(ran.size(), kDiskSize / 4);
    EXPECT_EQ(ran.front(), echo("empty"));
    EXPECT_EQ(logOf("say"), (Lines{echo("say"), output("said"), output("")}));
}

TEST_F(FileFault, SaysThatAFileCantBeReadToItsEnd)
{
    const fs::path unreadableFromTheStart = "/proc/self/mem";
    EXPECT_TRUE(mConsole.runFile(unreadableFromTheStart));
    EXPECT_EQ(log(), (Lines{unreadable(unreadableFromTheStart, std::errc::io_error)}));
}

TEST_F(FileFault, RunsWhatItReadOfAFileThatIsLostMeanwhile)
{
    std::string text = "lose\n";
    while (text.size() < kDiskSize) { // more than one read of the stream takes
        text += "say\n";
    }
    LostFile file(text);
    add(U"lose", [&file](const ConsoleArgs&, Console&) { file.lose(); });
    EXPECT_TRUE(mConsole.runFile(file.path()));
    Lines ran = log();
    EXPECT_EQ(ran.front(), echo("lose"));
    EXPECT_EQ(ran.back(), unreadable(file.path(), std::errc::no_such_process));
    EXPECT_GT(ran.size(), 100U);
    EXPECT_LT(ran.size(), kDiskSize / 4);
    EXPECT_EQ(std::count(ran.begin(), ran.end(), echo("say")),
              std::count(ran.begin(), ran.end(), output("said")))
        << "the part of a line ran";
    EXPECT_EQ(logOf("say"), (Lines{echo("say"), output("said"), output("")}));
}

TEST_F(FileFault, NamesTheFileThatCantBeReadThoughItsPathIsGone)
{
    const LostFile other("say\n");
    LostFile file("forget\n" + std::string(kDiskSize, '\n'));
    setRunpath({file.path()});
    add(U"forget", [&](const ConsoleArgs&, Console& console) {
        console.removeRunpath(fs::path(file.path()));
        console.appendRunpath(other.path());
        file.lose();
    });
    const fs::path expected = file.path();
    EXPECT_TRUE(mConsole.runFile(mConsole.runPaths().front()));
    EXPECT_EQ(log().back(), unreadable(expected, std::errc::no_such_process));
}

TEST_F(FileFault, RunsLinesThatAreAppendedMeanwhile)
{
    int rounds = 0;
    add(U"again", [this, &rounds](const ConsoleArgs&, Console&) {
        if (++rounds < 3) {
            std::ofstream(at("go.console"), std::ios::app) << "again\n";
        }
    });
    EXPECT_TRUE(mConsole.runFile(mDirectory.write("go.console", "again\n")));
    EXPECT_EQ(rounds, 3);
    EXPECT_EQ(log(),
              (Lines{echo("again"), output(""), echo("again"), output(""), echo("again"), output("")}));
}

} // namespace
} // namespace zephyr::test
