#include "Runpath.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace zephyr::console {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

TEST(Runpath, KeepsItsFirstPathsEvenTwoAlike)
{
    EXPECT_EQ(Runpath({"/a", "/a"}).paths(), (Paths{"/a", "/a"}));
}

TEST(Runpath, AddsAPathOnce)
{
    Runpath runpath({"/a"});
    EXPECT_TRUE(runpath.append("/b"));
    EXPECT_FALSE(runpath.append("/b"));
    EXPECT_FALSE(runpath.append("//a"));
    EXPECT_TRUE(runpath.append("/A"));
    EXPECT_EQ(runpath.paths(), (Paths{"/a", "/b", "/A"}));
}

TEST(Runpath, RemovesTheFirstEqualPathAndKeepsTheOrder)
{
    Runpath runpath({"/a", "/b", "/a", "/c"});
    EXPECT_TRUE(runpath.remove("/a"));
    EXPECT_EQ(runpath.paths(), (Paths{"/b", "/a", "/c"}));
    EXPECT_FALSE(runpath.remove("/d"));
    EXPECT_FALSE(Runpath({}).remove("/a"));
}

TEST(Runpath, RemovesThePathThatItIsHandedOfItsOwn)
{
    Runpath runpath({"/a", "/b"});
    EXPECT_TRUE(runpath.remove(runpath.paths().front()));
    EXPECT_EQ(runpath.paths(), Paths{"/b"});
}

TEST(Runpath, FindsWhateverHasTheNameInItsOrder)
{
    const test::TemporaryDirectory directory;
    const fs::path first = directory.path() / "first";
    const fs::path second = directory.path() / "second";
    fs::create_directories(first / "x.console"); // a directory counts, too
    fs::create_directories(second);
    std::ofstream(second / "x.console") << "help\n";
    const Runpath runpath({second, directory.path() / "missing", first});
    EXPECT_EQ(runpath.find(U"x.console"), (Paths{second / "x.console", first / "x.console"}));
    EXPECT_EQ(runpath.find(U"y.console"), Paths());
}

TEST(Runpath, ThrowsWhereAPathCannotBeTested)
{
    const test::TemporaryDirectory directory;
    fs::create_symlink("loop", directory.path() / "loop");
    EXPECT_THROW(Runpath({directory.path()}).find(U"loop"), fs::filesystem_error);
}

} // namespace
} // namespace zephyr::console
