#include "sandbox/recording/FileWriting.h"

#include "sandbox/Pipe.h"
#include "support/FileSizeLimit.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace zephyr::sandbox {
namespace {

class FileWriting : public testing::Test
{
protected:
    QString pathOf(const char* name) const
    {
        return QString::fromStdString((directory.path() / name).string());
    }

    test::TemporaryDirectory directory;
};

TEST_F(FileWriting, AllowsARegularFileAndAMissingOne)
{
    const std::filesystem::path file = directory.write("a", "");
    for (const Devices devices : {Devices::Refused, Devices::Allowed}) {
        EXPECT_EQ(std::nullopt, reasonNotToWrite(file, devices));
        EXPECT_EQ(std::nullopt, reasonNotToWrite(directory.path() / "none", devices));
        EXPECT_EQ(std::nullopt, reasonNotToWrite(std::string(300, 'x'), devices));
    }
}

TEST_F(FileWriting, RefusesAPipeAndALinkToOne)
{
    const test::Pipe pipe(directory.path() / "pipe");
    std::filesystem::create_symlink("pipe", directory.path() / "link");
    for (const Devices devices : {Devices::Refused, Devices::Allowed}) {
        EXPECT_EQ("it is no regular file", reasonNotToWrite(directory.path() / "pipe", devices));
        EXPECT_EQ("it is no regular file", reasonNotToWrite(directory.path() / "link", devices));
    }
}

TEST_F(FileWriting, AllowsADeviceOnlyWhenToldTo)
{
    EXPECT_EQ("it is no regular file", reasonNotToWrite("/dev/null", Devices::Refused));
    EXPECT_EQ(std::nullopt, reasonNotToWrite("/dev/null", Devices::Allowed));
}

TEST_F(FileWriting, ReplacesWhatIsThereWhole)
{
    directory.write("a", "something longer");
    EXPECT_EQ(std::nullopt, writeWhole(pathOf("a"), "new"));
    EXPECT_EQ("new", directory.read("a"));
}

TEST_F(FileWriting, LeavesTheOldFileWhereTheDiskIsFull)
{
    directory.write("a", "old");
    for (const int size : {200, 100000}) { // within one write, and beyond it
        const test::FileSizeLimit limit(100);
        EXPECT_EQ("File too large", writeWhole(pathOf("a"), QByteArray(size, 'x')));
        EXPECT_EQ("old", directory.read("a"));
    }
}

TEST_F(FileWriting, LeavesAPipeAsItIs)
{
    const test::Pipe pipe(directory.path() / "pipe");
    EXPECT_EQ("it is no regular file", writeWhole(pathOf("pipe"), "new"));
    EXPECT_TRUE(std::filesystem::is_fifo(directory.path() / "pipe"));
}

} // namespace
} // namespace zephyr::sandbox
