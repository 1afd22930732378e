// The files that commands write: what becomes of them where the disk is full, and behind a link.

#include "commands/CommandsFixture.h"
#include "support/FileSizeLimit.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/commands/Variable.h"

#include <algorithm>
#include <filesystem>

namespace zephyr::test {
namespace {

namespace fs = std::filesystem;
using namespace console::commands;

constexpr std::size_t kDiskSize = 100; // bytes
const std::string kOld = "old\n";
const std::string kFile = "mine.console";

/// Each command that writes a file, with something to write.
class SavedFiles : public CommandsFixture, public testing::WithParamInterface<const char*>
{
protected:
    SavedFiles()
    {
        addVars(mConsole);
        addAliasSave(mConsole);
        addLogSave(mConsole);
        fill(2 * kDiskSize);
    }

    /// Gives each of the commands at least `size` bytes to write.
    void fill(std::size_t size)
    {
        const std::string text(size, 'x');
        mText.set(text);
        mConsole.execute(U"alias long " + StringUtil::toU32String(text)); // and so into the log
    }

    Texts save(const fs::path& file = kFile)
    {
        return textsOfAnswer(GetParam() + std::string(" ") + file.string());
    }

    void expectOnlyTheOldFile()
    {
        EXPECT_EQ(kOld, mDirectory.read(kFile));
        EXPECT_EQ(1, std::distance(fs::directory_iterator(mDirectory.path()), fs::directory_iterator()));
    }

    TemporaryDirectory mDirectory;
    WorkingDirectory mInside{mDirectory.path()};
    Variable<std::string> mText{mConsole, U"text", "", U""};
};

TEST_P(SavedFiles, StayAsTheyWereWhereTheDiskIsFull)
{
    mDirectory.write(kFile, kOld);
    for (const std::size_t size : {2 * kDiskSize, 1000 * kDiskSize}) { // within one write, and beyond it
        fill(size);
        const FailureCounter failures(mConsole);
        {
            const FileSizeLimit limit(kDiskSize);
            EXPECT_EQ(Texts({"    Can't write 'mine.console': File too large."}), save());
        }
        EXPECT_EQ(1U, failures.count());
        expectOnlyTheOldFile();
    }
    save();
    EXPECT_LT(1000 * kDiskSize, mDirectory.read(kFile).size());
}

TEST_P(SavedFiles, AreReplacedWhereTheyAreAndNotTheLinkToThem)
{
    mDirectory.write("real/" + kFile, kOld);
    fs::create_symlink("real/" + kFile, kFile);
    save();
    EXPECT_TRUE(fs::is_symlink(kFile));
    EXPECT_LT(2 * kDiskSize, mDirectory.read("real/" + kFile).size());
}

TEST_P(SavedFiles, AreReplacedBehindALinkToALink)
{
    mDirectory.write("real/" + kFile, kOld);
    fs::create_symlink(kFile, "real/link.console");
    fs::create_symlink("real/link.console", kFile);
    save();
    EXPECT_TRUE(fs::is_symlink(kFile));
    EXPECT_TRUE(fs::is_symlink("real/link.console"));
    EXPECT_LT(2 * kDiskSize, mDirectory.read("real/" + kFile).size());
}

TEST_P(SavedFiles, AreMadeWhereALinkLeadsToNothing)
{
    fs::create_symlink("none.console", kFile);
    save();
    EXPECT_TRUE(fs::is_symlink(kFile));
    EXPECT_LT(2 * kDiskSize, mDirectory.read("none.console").size());
}

TEST_P(SavedFiles, StayAsTheyWereBehindALinkWhereTheDiskIsFull)
{
    mDirectory.write("real/" + kFile, kOld);
    fs::create_symlink("real/" + kFile, kFile);
    {
        const FileSizeLimit limit(kDiskSize);
        EXPECT_EQ(Texts({"    Can't write 'mine.console': File too large."}), save());
    }
    EXPECT_TRUE(fs::is_symlink(kFile));
    EXPECT_EQ(kOld, mDirectory.read("real/" + kFile));
    EXPECT_EQ(1, std::distance(fs::directory_iterator("real"), fs::directory_iterator()));
}

TEST_P(SavedFiles, AreNotMadeBehindALinkToItself)
{
    fs::create_symlink(kFile, kFile);
    EXPECT_EQ(Texts({"    Can't write 'mine.console': Too many levels of symbolic links."}), save());
    EXPECT_TRUE(fs::is_symlink(kFile));
}

INSTANTIATE_TEST_SUITE_P(OfEachCommand, SavedFiles, testing::Values("vars save", "alias_save", "log_save"));

} // namespace
} // namespace zephyr::test
