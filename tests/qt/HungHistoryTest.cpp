#include "ConsoleLender.h"
#include "HistoryFile.h"
#include "HistoryStore.h"
#include "support/ConsoleDriver.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::u32string>;

constexpr std::chrono::seconds kTooLong{60};

/// A disk that hangs when the test says so, with a history's file on it.
class Disk
{
public:
    void hang(bool hangs)
    {
        const std::lock_guard lock(mMutex);
        mHangs = hangs;
        mChanged.notify_all();
    }

    Lines read()
    {
        std::unique_lock lock(mMutex);
        mChanged.wait(lock, [this] { return !mHangs; });
        return mLines;
    }

    void append(const Lines& lines)
    {
        std::unique_lock lock(mMutex);
        mChanged.wait(lock, [this] { return !mHangs; });
        mLines.insert(mLines.end(), lines.begin(), lines.end());
        mChanged.notify_all();
    }

    bool waitForLines(const Lines& lines)
    {
        std::unique_lock lock(mMutex);
        return mChanged.wait_for(lock, kTooLong, [&] { return mLines == lines; });
    }

    void close()
    {
        const std::lock_guard lock(mMutex);
        mIsClosed = true;
        mChanged.notify_all();
    }

    bool waitForTheEnd()
    {
        std::unique_lock lock(mMutex);
        return mChanged.wait_for(lock, kTooLong, [this] { return mIsClosed; });
    }

private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    Lines mLines{U"old"};
    bool mHangs = false;
    bool mIsClosed = false;
};

/// The file on such a disk.
class DiskStore : public HistoryStore
{
public:
    explicit DiskStore(std::shared_ptr<Disk> disk) : HistoryStore({}, 1), mDisk(std::move(disk)) {}

    ~DiskStore() override { mDisk->close(); }

    DiskStore(const DiskStore&) = delete;
    DiskStore& operator=(const DiskStore&) = delete;

    QString read(Lines& lines) const override
    {
        lines = mDisk->read();
        return {};
    }

    QString append(const Lines& lines) const override
    {
        mDisk->append(lines);
        return {};
    }

private:
    const std::shared_ptr<Disk> mDisk;
};

class HungHistory : public testing::Test
{
protected:
    HungHistory() { console->open(); }
    ~HungHistory() override { disk->hang(false); }

    bool start() { return file->start("a file", std::make_unique<DiskStore>(disk)); }

    /// Types and runs a line.
    void type(const std::u32string& line)
    {
        for (const char32_t c : line) {
            console->keyPressed(0, Qt::NoModifier, std::u32string(1, c));
        }
        file->noteLine(*console);
        console->keyPressed(Qt::Key_Return, Qt::NoModifier, {});
        file->keepLine(*console);
    }

    /// Waits until the thread has something to take.
    bool waitForNotice()
    {
        std::unique_lock lock(mutex);
        return noticed.wait_for(lock, kTooLong, [this] { return isNoticed; });
    }

    /// How long `function` takes.
    static std::chrono::duration<double> durationOf(const std::function<void()>& function)
    {
        const auto begin = std::chrono::steady_clock::now();
        function();
        return std::chrono::steady_clock::now() - begin;
    }

    std::mutex mutex; // guards isNoticed
    std::condition_variable noticed;
    bool isNoticed = false;

    std::shared_ptr<Disk> disk = std::make_shared<Disk>();
    std::shared_ptr<Console> console = std::make_shared<Console>();
    std::optional<HistoryFile> file{std::in_place, std::make_shared<ConsoleLender>(console), [this] {
                                        const std::lock_guard lock(mutex);
                                        isNoticed = true;
                                        noticed.notify_all();
                                    }};
};

TEST_F(HungHistory, DelaysItsProgramByAboutASecondAtMost)
{
    disk->hang(true);
    EXPECT_LT(durationOf([&] { EXPECT_FALSE(start()); }), 5s);
    EXPECT_LT(durationOf([&] { type(U"typed"); }), 800ms);
    EXPECT_LT(durationOf([&] { file.reset(); }), 5s);
    disk->hang(false);
    EXPECT_TRUE(disk->waitForTheEnd()) << "the thread ends by itself";
}

TEST_F(HungHistory, BringsItsLinesWhenTheDiskAnswers)
{
    disk->hang(true);
    EXPECT_FALSE(start());
    type(U"typed");
    disk->hang(false);
    EXPECT_TRUE(waitForNotice());
    file->catchUp();
    EXPECT_EQ((Lines{U"typed", U"old"}), console->history());
    EXPECT_TRUE(disk->waitForLines({U"old", U"typed"}));
}

TEST_F(HungHistory, HoldsUpNoTyping)
{
    EXPECT_TRUE(start());
    disk->hang(true);
    const auto duration = durationOf([&] {
        type(U"one");
        type(U"two");
        type(U"three");
    });
    EXPECT_LT(duration, 800ms);
    disk->hang(false);
    EXPECT_TRUE(disk->waitForLines({U"old", U"one", U"two", U"three"}));
}

TEST_F(HungHistory, EndsWithItsConsoleGone)
{
    disk->hang(true);
    EXPECT_FALSE(start());
    console.reset();
    disk->hang(false);
    EXPECT_TRUE(waitForNotice());
    file->catchUp();
    file.reset();
    EXPECT_TRUE(disk->waitForTheEnd());
}

TEST_F(HungHistory, NotifiesNobodyAfterItsEnd)
{
    disk->hang(true);
    EXPECT_FALSE(start());
    file.reset();
    disk->hang(false);
    EXPECT_TRUE(disk->waitForTheEnd());
    const std::lock_guard lock(mutex);
    EXPECT_FALSE(isNoticed);
}

} // namespace
} // namespace zephyr::console::qt
