#include "HistoryStore.h"

#include "support/FileSizeLimit.h"
#include "support/NamedPipe.h"
#include "support/TemporaryDirectory.h"
#include "support/Unprivileged.h"

#include <QLockFile>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

using test::TemporaryDirectory;
using Lines = std::vector<std::u32string>;

constexpr std::size_t kMany = 1000; // lines

class AHistoryStore : public testing::Test
{
protected:
    QString path(const std::string& name = "history") const
    {
        return QString::fromStdString((directory.path() / name).string());
    }

    qt::HistoryStore store(std::size_t maxLines = kMany) const { return {path(), maxLines}; }

    /// The lines of the file, of which `maxLines` may be read.
    Lines lines(std::size_t maxLines = kMany) const
    {
        Lines read;
        EXPECT_EQ(QString(), store(maxLines).read(read));
        return read;
    }

    /// Adds `added`. \return why that wasn't possible.
    std::string append(const Lines& added, std::size_t maxLines = kMany) const
    {
        return store(maxLines).append(added).toStdString();
    }

    /// Why the file can't be read.
    std::string readError() const
    {
        Lines read;
        const std::string error = store().read(read).toStdString();
        EXPECT_EQ(Lines{}, read);
        return error;
    }

    TemporaryDirectory directory;
};

TEST_F(AHistoryStore, HasNoLinesBeforeThereIsAFile) { EXPECT_EQ(Lines{}, lines()); }

TEST_F(AHistoryStore, KeepsLinesOfAllKinds)
{
    const Lines odd{U"plain", U"two\nlines", U"C:\\new", U"\x1b[0m\r", U" spaces ", U"\u6f22\U0001f600"};
    EXPECT_EQ("", append(odd));
    EXPECT_EQ(odd, lines());
    EXPECT_EQ("plain\ntwo\\nlines\nC:\\\\new\n\\u{1b}[0m\\u{d}\n spaces \n\xe6\xbc\xa2\xf0\x9f\x98\x80\n",
              directory.read("history"));
}

TEST_F(AHistoryStore, IsForItsUserOnly)
{
    EXPECT_EQ("", append({U"secret"}));
    const auto others = std::filesystem::perms::group_all | std::filesystem::perms::others_all;
    EXPECT_EQ(std::filesystem::perms::none,
              std::filesystem::status(directory.path() / "history").permissions() & others);
}

TEST_F(AHistoryStore, LeavesNoOtherFileBehind)
{
    EXPECT_EQ("", append({U"one"}));
    EXPECT_EQ("", append({U"two"}, 1));
    EXPECT_FALSE(directory.has("history.lock"));
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(directory.path()), {}));
}

TEST_F(AHistoryStore, AddsAtTheEnd)
{
    directory.write("history", "one\n");
    EXPECT_EQ("", append({U"two"}));
    EXPECT_EQ("one\ntwo\n", directory.read("history"));
}

TEST_F(AHistoryStore, EndsALineThatHasNoEnd)
{
    directory.write("history", "one");
    EXPECT_EQ("", append({U"two"}));
    EXPECT_EQ("one\ntwo\n", directory.read("history"));
}

TEST_F(AHistoryStore, AddsNoLineTwiceInARow)
{
    EXPECT_EQ("", append({U"one", U"one", U"two", U"one"}));
    EXPECT_EQ("", append({U"one"}));
    EXPECT_EQ("one\ntwo\none\n", directory.read("history"));
}

TEST_F(AHistoryStore, ReadsNoLineTwiceInARow)
{
    directory.write("history", "one\none\n\none\ntwo\none\n");
    EXPECT_EQ((Lines{U"one", U"two", U"one"}), lines());
}

TEST_F(AHistoryStore, ReadsWhatAnEditorLeaves)
{
    directory.write("history", "one\r\n\r\ntwo\r\nthree");
    EXPECT_EQ((Lines{U"one", U"two", U"three"}), lines());
}

TEST_F(AHistoryStore, ReadsWhatIsNotUtf8AsReplacementCharacters)
{
    directory.write("history", "a\xff\n");
    EXPECT_EQ(Lines{U"a\ufffd"}, lines());
}

TEST_F(AHistoryStore, ReadsTheNewestLines)
{
    directory.write("history", "one\ntwo\nthree\n");
    EXPECT_EQ((Lines{U"two", U"three"}), lines(2));
    EXPECT_EQ("one\ntwo\nthree\n", directory.read("history")) << "which changes nothing";
}

TEST_F(AHistoryStore, DropsTheOldestLines)
{
    EXPECT_EQ("", append({U"one", U"two", U"three"}, 3));
    EXPECT_EQ("", append({U"four"}, 3));
    EXPECT_EQ("two\nthree\nfour\n", directory.read("history"));
    EXPECT_EQ("", append({U"five", U"six"}, 1));
    EXPECT_EQ("six\n", directory.read("history"));
    EXPECT_EQ("", append({U"seven"}, 0));
    EXPECT_EQ("seven\n", directory.read("history")) << "it has one at least";
}

TEST_F(AHistoryStore, LeavesVeryLongLinesOut)
{
    const std::u32string longest(64 << 10, U'x');
    EXPECT_EQ("", append({U"one", longest + U'x', longest}));
    EXPECT_EQ((Lines{U"one", longest}), lines());
    directory.write("history", std::string(1 << 20, 'x') + "\ntwo\n");
    EXPECT_EQ(Lines{U"two"}, lines());
    EXPECT_EQ("", append({U"three"}));
    EXPECT_EQ((1U << 20) + 11U, directory.read("history").size()) << "somebody's line is left alone";
}

TEST_F(AHistoryStore, LeavesWhatIsNoOrdinaryFileAlone)
{
    std::filesystem::create_directory(directory.path() / "history");
    EXPECT_EQ("It is no ordinary file", readError());
    EXPECT_EQ("It is no ordinary file", append({U"one"}));
    std::filesystem::remove(directory.path() / "history");
    const test::NamedPipe pipe(directory.path() / "history");
    EXPECT_EQ("It is no ordinary file", readError());
    EXPECT_EQ("It is no ordinary file", append({U"one"}));
    std::filesystem::remove(directory.path() / "history");
    std::filesystem::create_symlink("/dev/full", directory.path() / "history");
    EXPECT_EQ("It is no ordinary file", readError());
}

TEST_F(AHistoryStore, LeavesAVeryLargeFileAlone)
{
    const std::filesystem::path file = directory.write("history", "");
    std::filesystem::resize_file(file, std::uintmax_t{1} << 30);
    EXPECT_EQ("It is larger than 64 MB", readError());
    EXPECT_EQ("It is larger than 64 MB", append({U"one"}));
    EXPECT_EQ(std::uintmax_t{1} << 30, std::filesystem::file_size(file));
}

TEST_F(AHistoryStore, SaysThatItsFolderIsMissing)
{
    const qt::HistoryStore nowhere(path("no/such/folder/history"), kMany);
    EXPECT_EQ("Its folder doesn't exist", nowhere.append({U"one"}).toStdString());
}

TEST_F(AHistoryStore, FollowsALink)
{
    directory.write("real/history", "one\n");
    std::filesystem::create_symlink("real/history", directory.path() / "history");
    EXPECT_EQ("", append({U"two"}));
    EXPECT_EQ("one\ntwo\n", directory.read("real/history"));
    EXPECT_EQ("", append({U"three"}, 1));
    EXPECT_EQ("three\n", directory.read("real/history"));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.path() / "history"));
    QLockFile lock(path("real/history.lock"));
    ASSERT_TRUE(lock.tryLock());
    EXPECT_EQ("Another program holds its lock file", append({U"four"})) << "it is the file's own";
}

TEST_F(AHistoryStore, LeavesTheFileToWhoHoldsItsLock)
{
    QLockFile lock(path("history.lock"));
    ASSERT_TRUE(lock.tryLock());
    EXPECT_EQ("Another program holds its lock file", append({U"one"}));
    EXPECT_FALSE(directory.has("history"));
    lock.unlock();
    EXPECT_EQ("", append({U"one"}));
}

/// Waits for a child process. \return its exit code, or -1 if a signal ended it.
int exitCodeOf(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(AHistoryStore, PassesALockThatAProgramLeftBehind)
{
    const QString name = path("history.lock");
    const pid_t child = fork();
    if (child == 0) {
        QLockFile lock(name);
        const bool isLocked = lock.tryLock();
        _exit(isLocked ? 0 : 1);
    }
    ASSERT_EQ(0, exitCodeOf(child));
    ASSERT_TRUE(directory.has("history.lock"));
    EXPECT_EQ("", append({U"one"}));
    EXPECT_EQ("one\n", directory.read("history"));
}

/// Starts a process that adds `count` lines, each by itself. \return its id.
pid_t startAppending(const QString& path, char name, int count, std::size_t maxLines)
{
    constexpr unsigned kTooLong = 600; // seconds; ends it with a test that was stopped
    const pid_t child = fork();
    if (child == 0) {
        alarm(kTooLong);
        const qt::HistoryStore store(path, maxLines);
        for (int i = 0; i < count; ++i) {
            const QString line = QChar(QLatin1Char(name)) + QString::number(i);
            while (!store.append({line.toStdU32String()}).isNull()) { // the others may be too busy
            }
        }
        _exit(0);
    }
    return child;
}

/// The numbers of the lines that begin with each name, in their order.
std::map<char32_t, std::vector<int>> numbersOf(const Lines& lines)
{
    std::map<char32_t, std::vector<int>> numbers;
    for (const std::u32string& line : lines) {
        numbers[line.front()].push_back(QString::fromStdU32String(line.substr(1)).toInt());
    }
    return numbers;
}

/// The numbers from `first` up to but without `last`.
std::vector<int> numbers(int first, int last)
{
    std::vector<int> all;
    for (int i = first; i < last; ++i) {
        all.push_back(i);
    }
    return all;
}

TEST_F(AHistoryStore, LosesNothingOfSeveralProgramsThatUseItAtOnce)
{
    constexpr int kCount = 40;
    std::vector<pid_t> children;
    for (const char name : {'a', 'b', 'c'}) {
        children.push_back(startAppending(path(), name, kCount, kMany));
    }
    for (const pid_t child : children) {
        EXPECT_EQ(0, exitCodeOf(child));
    }
    const auto all = numbers(0, kCount);
    EXPECT_EQ((std::map<char32_t, std::vector<int>>{{U'a', all}, {U'b', all}, {U'c', all}}),
              numbersOf(lines()));
}

TEST_F(AHistoryStore, LosesNothingOfSeveralProgramsThatDropOldLines)
{
    constexpr int kMost = 300;
    constexpr int kCount = 40;
    std::string old;
    for (int i = 0; i < kMost; ++i) {
        old += "x" + std::to_string(i) + "\n";
    }
    directory.write("history", old); // so that each line replaces the file
    const pid_t one = startAppending(path(), 'a', kCount, kMost);
    const pid_t other = startAppending(path(), 'b', kCount, kMost);
    EXPECT_EQ(0, exitCodeOf(one));
    EXPECT_EQ(0, exitCodeOf(other));
    const auto all = numbers(0, kCount);
    const auto newestOld = numbers(2 * kCount, kMost);
    EXPECT_EQ((std::map<char32_t, std::vector<int>>{{U'a', all}, {U'b', all}, {U'x', newestOld}}),
              numbersOf(lines()));
}

class HistoryStoreDeathTest : public AHistoryStore
{
protected:
    HistoryStoreDeathTest() { GTEST_FLAG_SET(death_test_style, "fast"); }
};

TEST_F(HistoryStoreDeathTest, SaysThatAFileMayNotBeReadOrItsFolderWritten)
{
    directory.write("history", "one\n");
    const test::WorkingDirectory here(directory.path());
    const auto tryBoth = [] {
        const qt::HistoryStore mine("history", kMany);
        Lines read;
        std::cerr << mine.read(read).toStdString() << ", " << mine.append({U"two"}).toStdString()
                  << std::endl;
    };
    {
        const test::Locked locked(directory.path() / "history");
        EXPECT_EXIT(test::runUnprivileged(tryBoth), testing::ExitedWithCode(0),
                    "^Permission denied, Its lock file can't be created\n");
    }
    EXPECT_EQ("one\n", directory.read("history"));
}

/// Adds lines up to the size that the program may give a file.
[[noreturn]] void fillFile(const QString& path)
{
    constexpr rlim_t kMostBytes = 4096;
    const rlimit limit{kMostBytes, kMostBytes};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_IGN);
    const qt::HistoryStore store(path, kMany);
    store.append({std::u32string(4000, U'x')});
    std::cerr << store.append({std::u32string(4000, U'y')}).toStdString() << std::endl;
    std::cerr << store.append({U"short"}).toStdString() << std::endl;
    std::_Exit(0);
}

TEST_F(HistoryStoreDeathTest, LeavesTheFileAsItWasWhereALineDoesNotFit)
{
    EXPECT_EXIT(fillFile(path()), testing::ExitedWithCode(0), "^File too large\n\n");
    EXPECT_EQ(std::string(4000, 'x') + "\nshort\n", directory.read("history"));
}

/// Adds a line that has the file written anew, larger than the program may make a file.
[[noreturn]] void rewriteFile(const QString& path)
{
    const test::FileSizeLimit limit(4096);
    const qt::HistoryStore store(path, 2);
    std::cerr << store.append({std::u32string(5000, U'y')}).toStdString() << std::endl;
    std::_Exit(0);
}

TEST_F(HistoryStoreDeathTest, LeavesTheFileAsItWasWhereItIsWrittenAnewAndDoesNotFit)
{
    directory.write("history", "one\ntwo\n");
    EXPECT_EXIT(rewriteFile(path()), testing::ExitedWithCode(0), "^File too large\n");
    EXPECT_EQ("one\ntwo\n", directory.read("history"));
}

} // namespace
} // namespace zephyr::console::qt
