#include "ConsoleLender.h"
#include "LogMirror.h"
#include "MirrorFile.h"
#include "support/ConsoleDriver.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace zephyr::console::qt {
namespace {

using namespace std::chrono_literals;

const std::string kStart = "Zephyr Console:\n\n";
constexpr std::chrono::seconds kTooLong{60};
constexpr std::chrono::milliseconds kPatience{800}; // less than a mirror waits for a file that hangs

/// What a file does, as the test sees it and arranges it.
class Disk
{
public:
    enum class Step
    {
        Open,
        Write,
        Close
    };

    /// Makes the file hang at each `step` from now on.
    void hangAt(Step step)
    {
        const std::lock_guard lock(mMutex);
        mHangsAt = step;
    }

    /// Lets the file go on.
    void answer()
    {
        const std::lock_guard lock(mMutex);
        mHangsAt.reset();
        mChanged.notify_all();
    }

    /// Ends `step`, unless the file hangs there.
    void pass(Step step)
    {
        std::unique_lock lock(mMutex);
        mChanged.wait(lock, [&] { return mHangsAt != step; });
    }

    void add(std::string_view text)
    {
        const std::lock_guard lock(mMutex);
        mText += text;
        mChanged.notify_all();
    }

    void close()
    {
        const std::lock_guard lock(mMutex);
        mIsClosed = true;
        mChanged.notify_all();
    }

    std::string text() const
    {
        const std::lock_guard lock(mMutex);
        return mText;
    }

    bool waitForText(const std::string& text)
    {
        std::unique_lock lock(mMutex);
        return mChanged.wait_for(lock, kTooLong, [&] { return mText == text; });
    }

    bool waitForTheEnd()
    {
        std::unique_lock lock(mMutex);
        return mChanged.wait_for(lock, kTooLong, [&] { return mIsClosed; });
    }

private:
    mutable std::mutex mMutex;
    std::condition_variable mChanged;
    std::optional<Step> mHangsAt;
    std::string mText;
    bool mIsClosed = false;
};

/// A file on such a disk.
class DiskFile : public MirrorFile
{
public:
    explicit DiskFile(std::shared_ptr<Disk> disk, std::function<void()> atWrite = {})
        : MirrorFile({}), mDisk(std::move(disk)), mAtWrite(std::move(atWrite))
    {}

    ~DiskFile() override
    {
        mDisk->pass(Disk::Step::Close);
        mDisk->close();
    }

    bool open() override
    {
        mDisk->pass(Disk::Step::Open);
        return true;
    }

    bool write(std::string_view text) override
    {
        mDisk->pass(Disk::Step::Write);
        if (mAtWrite) {
            mAtWrite();
        }
        mDisk->add(text);
        return true;
    }

private:
    const std::shared_ptr<Disk> mDisk;
    const std::function<void()> mAtWrite;
};

class HungMirror : public testing::Test
{
protected:
    ~HungMirror() override { disk->answer(); }

    bool start(const std::function<void()>& atWrite = {})
    {
        mirror.emplace(std::make_shared<ConsoleLender>(console));
        return mirror->start("a file", std::make_unique<DiskFile>(disk, atWrite));
    }

    /// The log as the file should hold it.
    std::string wholeLog() const
    {
        std::string text = kStart;
        for (const std::string& line : test::ConsoleDriver(*console).log()) {
            text += line + "\n";
        }
        return text;
    }

    /// How long `function` takes.
    static std::chrono::duration<double> durationOf(const std::function<void()>& function)
    {
        const auto begin = std::chrono::steady_clock::now();
        function();
        return std::chrono::steady_clock::now() - begin;
    }

    std::shared_ptr<Disk> disk = std::make_shared<Disk>();
    std::shared_ptr<Console> console = std::make_shared<Console>();
    std::optional<LogMirror> mirror;
};

TEST_F(HungMirror, DelaysItsProgramOnceAndByASecondAtMost)
{
    ASSERT_TRUE(start());
    disk->hangAt(Disk::Step::Write);
    EXPECT_LT(durationOf([&] { console->write(U"one", Output); }), 5s);
    const auto others = durationOf([&] {
        for (int i = 0; i < 100; ++i) {
            console->write(U"more", Output);
        }
    });
    EXPECT_LT(others, 5s);
    EXPECT_LT(durationOf([&] { mirror.reset(); }), kPatience);
}

TEST_F(HungMirror, GoesOnWhereItWasOnceTheDiskAnswers)
{
    ASSERT_TRUE(start());
    disk->hangAt(Disk::Step::Write);
    for (int i = 0; i < 1000; ++i) {
        console->write("line " + std::to_string(i), Output);
    }
    EXPECT_EQ(kStart, disk->text());
    disk->answer();
    EXPECT_TRUE(disk->waitForText(wholeLog()));
    console->write(U"in time again", Output);
    EXPECT_EQ(wholeLog(), disk->text());
}

TEST_F(HungMirror, DelaysItsProgramByASecondAtMostHoweverOftenTheDiskIsSlow)
{
    ASSERT_TRUE(start());
    const auto duration = durationOf([&] {
        for (int i = 0; i < 20; ++i) {
            disk->hangAt(Disk::Step::Write);
            console->write(U"a line", Output);
            disk->answer();
            EXPECT_TRUE(disk->waitForText(wholeLog()));
        }
    });
    EXPECT_LT(duration, 10s);
}

TEST_F(HungMirror, OpensItsFileWhenTheDiskAnswers)
{
    disk->hangAt(Disk::Step::Open);
    EXPECT_LT(durationOf([&] { EXPECT_FALSE(start()); }), 5s);
    console->write(U"one", Output);
    disk->answer();
    EXPECT_TRUE(disk->waitForText(wholeLog()));
    EXPECT_EQ(kStart + "one\n", wholeLog()) << "there is no word of it in the log";
}

TEST_F(HungMirror, EndsWhileItsFileIsNotOpen)
{
    disk->hangAt(Disk::Step::Open);
    EXPECT_FALSE(start());
    EXPECT_LT(durationOf([&] { mirror.reset(); }), kPatience);
    disk->answer();
    EXPECT_TRUE(disk->waitForTheEnd());
    EXPECT_EQ("", disk->text()) << "the mirror has ended";
}

TEST_F(HungMirror, EndsWithItsFileWhenTheDiskAnswers)
{
    ASSERT_TRUE(start());
    disk->hangAt(Disk::Step::Write);
    console->write(U"one", Output);
    console->write(U"two", Output);
    mirror.reset();
    disk->answer();
    EXPECT_TRUE(disk->waitForTheEnd());
    EXPECT_EQ(kStart + "one\n", disk->text()) << "what was on its way";
}

TEST_F(HungMirror, EndsThoughItsFileHangsWhereItIsClosed)
{
    ASSERT_TRUE(start());
    disk->hangAt(Disk::Step::Close);
    EXPECT_LT(durationOf([&] { mirror.reset(); }), 5s);
    disk->answer();
    EXPECT_TRUE(disk->waitForTheEnd());
}

TEST_F(HungMirror, OutlivesItsConsole)
{
    ASSERT_TRUE(start());
    disk->hangAt(Disk::Step::Write);
    console->write(U"one", Output);
    console->write(U"two", Output);
    console.reset();
    disk->answer();
    EXPECT_TRUE(disk->waitForText(kStart + "one\n"));
    mirror.reset();
    EXPECT_TRUE(disk->waitForTheEnd());
}

TEST_F(HungMirror, DoesNotWaitForWhatItsOwnThreadLogs)
{
    bool isFirst = true;
    const auto duration = durationOf([&] {
        start([&] {
            if (std::exchange(isFirst, false)) {
                console->write(U"a message about the file", Output);
            }
        });
    });
    EXPECT_LT(duration, kPatience);
    EXPECT_TRUE(disk->waitForText(kStart + "a message about the file\n"));
}

} // namespace
} // namespace zephyr::console::qt
