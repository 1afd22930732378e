#include "support/AssertRecorder.h"
#include "support/ConsoleInside.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/RunConsoleFileCommand.h"

#include <Qt>

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::echo;
using test::output;
using test::partsOf;
using Lines = std::vector<test::LogLine>;

/// A console whose observer notes how long the log is.
class ConsoleObserver : public testing::Test
{
protected:
    void observe()
    {
        mConsole.setObserver([this] { mSizes.push_back(mConsole.logSize()); });
    }

    /// Registers another command under `name` whenever anything but an echo is written.
    void replaceAfterTheEcho(const std::u32string& name)
    {
        mConsole.setObserver([this, name] {
            if (mConsole.snapshot().lines().back().type != Input) {
                test::addCommand(mConsole, name);
            }
        });
    }

    /// The calls since the last time.
    std::vector<std::size_t> calls() { return std::exchange(mSizes, {}); }

    Console mConsole;
    std::vector<std::size_t> mSizes;
};

TEST_F(ConsoleObserver, IsCalledAfterEachEntry)
{
    observe();
    mConsole.write(U"a", Output);
    mConsole.writeIndented("b", 4);
    mConsole.newline();
    EXPECT_EQ(calls(), (std::vector<std::size_t>{3, 4, 5}));
}

TEST_F(ConsoleObserver, IsCalledForEachLineOfAnAnswer)
{
    observe();
    mConsole.execute(U"nothing");
    EXPECT_EQ(calls(), (std::vector<std::size_t>{3, 4, 5}));
    mConsole.execute(U"");
    EXPECT_EQ(calls(), std::vector<std::size_t>{6});
}

TEST_F(ConsoleObserver, IsCalledAfterTheConsoleWasOpenedOrClosed)
{
    std::vector<bool> states;
    mConsole.setObserver([&] { states.push_back(mConsole.isOpen()); });
    mConsole.open();
    mConsole.close();
    mConsole.keyPressed(Qt::Key_QuoteLeft, 0, {});
    mConsole.keyPressed(Qt::Key_QuoteLeft, 0, {});
    EXPECT_EQ(states, (std::vector<bool>{true, false, true, false}));
}

TEST_F(ConsoleObserver, IsCalledWhereAnOpenConsoleIsOpenedButNotWhereAClosedOneIsClosed)
{
    observe();
    mConsole.close();
    EXPECT_EQ(calls().size(), 0U);
    mConsole.open();
    mConsole.open(); // which empties the input line
    EXPECT_EQ(calls().size(), 2U);
}

TEST_F(ConsoleObserver, IsNotCalledWhereNothingIsAppended)
{
    mConsole.open();
    observe();
    mConsole.keyPressed(Qt::Key_A, 0, U"a");
    mConsole.keyPressed(Qt::Key_Backspace, 0, {});
    mConsole.mouseWheel(Angle(15), Angle(0));
    mConsole.setWindowSize({10, 10});
    mConsole.addToHistory(U"a");
    mConsole.snapshot();
    EXPECT_EQ(calls().size(), 0U);
}

TEST_F(ConsoleObserver, SeesTheInputLineThatARunLineLeft)
{
    mConsole.open();
    for (const char32_t c : std::u32string(U"nothing")) {
        mConsole.keyPressed(0, 0, std::u32string(1, c));
    }
    std::vector<std::u32string> inputs;
    mConsole.setObserver([&] { inputs.push_back(mConsole.activeInput()); });
    mConsole.keyPressed(Qt::Key_Return, 0, {});
    EXPECT_EQ(inputs, (std::vector<std::u32string>{U"nothing", U"nothing", U""}));
}

TEST_F(ConsoleObserver, IsReplacedAndRemoved)
{
    observe();
    int others = 0;
    mConsole.setObserver([&] { ++others; });
    mConsole.write(U"a", Output);
    EXPECT_EQ(calls().size(), 0U);
    EXPECT_EQ(others, 1);
    mConsole.setObserver({});
    mConsole.write(U"b", Output);
    EXPECT_EQ(others, 1);
}

TEST_F(ConsoleObserver, IsDestroyedWhenItIsReplaced)
{
    auto life = std::make_shared<int>();
    const std::weak_ptr<int> watched = life;
    mConsole.setObserver([life = std::move(life)] {});
    EXPECT_FALSE(watched.expired());
    mConsole.setObserver({});
    EXPECT_TRUE(watched.expired());
}

TEST_F(ConsoleObserver, MayWriteAndRunLinesWithoutBeingCalledForThem)
{
    int count = 0;
    mConsole.setObserver([&] {
        ++count;
        mConsole.write(U"seen", Output);
        mConsole.execute(U"");
    });
    mConsole.write(U"a", Output);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(test::logLines(mConsole), Lines({output("a"), output("seen"), echo("")}));
    mConsole.write(U"b", Output);
    EXPECT_EQ(count, 2);
}

TEST_F(ConsoleObserver, MayOpenAndCloseTheConsoleWithoutBeingCalledForThat)
{
    int count = 0;
    mConsole.setObserver([&] {
        ++count;
        mConsole.open();
        mConsole.close();
    });
    mConsole.write(U"a", Output);
    EXPECT_EQ(count, 1);
}

TEST_F(ConsoleObserver, OfOneConsoleMayMakeAnotherCallItsOwn)
{
    Console other;
    int others = 0;
    other.setObserver([&] { ++others; });
    mConsole.setObserver([&] { other.write(U"passed on", Output); });
    mConsole.write(U"a", Output);
    EXPECT_EQ(others, 1);
}

TEST_F(ConsoleObserver, MayRemoveItselfAndLivesUntilItHasReturned)
{
    auto life = std::make_shared<int>(0);
    const std::weak_ptr<int> watched = life;
    mConsole.setObserver([this, life = std::move(life)] {
        ++*life;
        mConsole.setObserver({});
        EXPECT_EQ(*life, 1);
    });
    mConsole.write(U"a", Output);
    EXPECT_TRUE(watched.expired());
    mConsole.write(U"b", Output);
}

TEST_F(ConsoleObserver, MayPutAnotherInItsPlace)
{
    int others = 0;
    mConsole.setObserver([&] {
        mConsole.setObserver([&] { ++others; });
        mConsole.write(U"not for the new one either", Output);
    });
    mConsole.write(U"a", Output);
    EXPECT_EQ(others, 0);
    mConsole.write(U"b", Output);
    EXPECT_EQ(others, 1);
}

TEST_F(ConsoleObserver, MayReplaceTheCommandThatWrites)
{
    test::addCommand(mConsole, U"wind").onExecute = [](const ConsoleArgs&, Console& console) {
        console.write(U"3 m/s", Output);
        console.write(U"gusts", Output);
    };
    replaceAfterTheEcho(U"wind");
    mConsole.execute(U"wind");
    EXPECT_EQ(test::logLines(mConsole), Lines({echo("wind"), output("3 m/s"), output("gusts"), output("")}));
}

TEST_F(ConsoleObserver, MayReplaceTheCommandThatHelpDescribes)
{
    auto& command = test::addCommand(mConsole, U"wind");
    const auto nothing = [](const ConsoleArgs&, Console&) {};
    command.registerArgHandler(U"set", nothing, std::u32string(500, U'd'), std::u32string(500, U'h'));
    command.registerArgHandler(U"show", nothing, std::u32string(500, U'e'), U"");
    replaceAfterTheEcho(U"wind");
    mConsole.execute(U"help wind");
    EXPECT_EQ(test::logLines(mConsole),
              Lines({echo("help wind"), output("set: " + std::string(500, 'd'), 4), output(""),
                     output("show: " + std::string(500, 'e'), 4), output(""), output("")}));
}

TEST_F(ConsoleObserver, ReportsAnExceptionAsAnAssertionAndLetsTheWriterGoOn)
{
    mConsole.setObserver([] { throw std::runtime_error("no wind"); });
    const test::AssertRecorder recorder;
    EXPECT_NO_THROW(mConsole.write(U"a", Output));
    ASSERT_EQ(recorder.failures().size(), 1U);
    EXPECT_TRUE(recorder.failures()[0].starts_with("Console:"));
    EXPECT_TRUE(recorder.failures()[0].ends_with(": observer() throws nothing"));
    EXPECT_NO_THROW(mConsole.open());
    EXPECT_EQ(recorder.failures().size(), 2U) << "it is called again";
    EXPECT_EQ(test::logLines(mConsole), Lines({output("a")}));
}

TEST_F(ConsoleObserver, LetsWhatIsNoStandardExceptionLeaveAfterTheEntryWasAppended)
{
    mConsole.setObserver([] { throw 42; });
    EXPECT_THROW(mConsole.write(U"a", Output), int);
    EXPECT_EQ(test::logLines(mConsole), Lines({output("a")}));
    observe();
    mConsole.write(U"b", Output);
    EXPECT_EQ(calls().size(), 1U) << "the call that was left has ended";
}

TEST_F(ConsoleObserver, IsCalledByTheThreadThatWrites)
{
    std::atomic<std::thread::id> caller;
    mConsole.setObserver([&] { caller = std::this_thread::get_id(); });
    std::thread writer([this] { mConsole.write(U"a", Output); });
    const std::thread::id id = writer.get_id();
    writer.join();
    EXPECT_EQ(caller.load(), id);
}

TEST_F(ConsoleObserver, IsCalledForOneThreadWhileAnothersCallIsRunning)
{
    std::binary_semaphore isInside(0);
    std::binary_semaphore mayLeave(0);
    std::atomic<int> count = 0;
    mConsole.setObserver([&] {
        if (count++ == 0) {
            isInside.release();
            mayLeave.acquire();
        }
    });
    std::thread writer([this] { mConsole.write(U"a", Output); });
    isInside.acquire();
    mConsole.write(U"b", Output);
    EXPECT_EQ(count, 2);
    mayLeave.release();
    writer.join();
}

TEST_F(ConsoleObserver, HasEndedOnOtherThreadsWhenItsRemovalReturns)
{
    std::binary_semaphore isInside(0);
    std::atomic<bool> isRemoved = false;
    std::atomic<bool> isRunning = false;
    auto life = std::make_shared<int>();
    const std::weak_ptr<int> watched = life;
    mConsole.setObserver([&, life = std::move(life)] {
        isRunning = true;
        isInside.release();
        while (!partsOf(mConsole).lock()->observers.isEmpty()) { // until the removal has begun to wait
            std::this_thread::yield();
        }
        EXPECT_FALSE(isRemoved);
        isRunning = false;
    });
    std::thread writer([this] { mConsole.write(U"a", Output); });
    isInside.acquire();
    mConsole.setObserver({});
    isRemoved = true;
    EXPECT_FALSE(isRunning);
    EXPECT_TRUE(watched.expired());
    writer.join();
}

TEST_F(ConsoleObserver, HasEndedWhenASecondRemovalReturnsThoughItRemovedItselfFirst)
{
    std::binary_semaphore isInside(0);
    std::binary_semaphore mayLeave(0);
    std::atomic<bool> isRunning = true;
    mConsole.setObserver([&] {
        mConsole.setObserver({});
        isInside.release();
        mayLeave.acquire();
        isRunning = false;
    });
    std::thread writer([this] { mConsole.write(U"a", Output); });
    isInside.acquire();
    std::thread owner([&] {
        mConsole.setObserver({});
        EXPECT_FALSE(isRunning);
    });
    mayLeave.release();
    owner.join();
    writer.join();
}

TEST_F(ConsoleObserver, WaitsForNoOtherThreadWhereItReplacesItself)
{
    std::binary_semaphore isInside(0);
    std::binary_semaphore mayLeave(0);
    std::atomic<int> count = 0;
    mConsole.setObserver([&] {
        if (count++ == 0) {
            isInside.release();
            mayLeave.acquire();
        } else {
            mConsole.setObserver({}); // would wait for the call above for ever
        }
    });
    std::thread writer([this] { mConsole.write(U"a", Output); });
    isInside.acquire();
    mConsole.write(U"b", Output);
    EXPECT_EQ(count, 2);
    mayLeave.release();
    writer.join();
}

/// Looks at a console when it is destroyed, as what an observer captured may.
class LastLook
{
public:
    explicit LastLook(Console& console) : mConsole(console) {}
    ~LastLook() { mConsole.write(U"last look", Output); }
    LastLook(const LastLook&) = delete;
    LastLook& operator=(const LastLook&) = delete;

private:
    Console& mConsole;
};

TEST_F(ConsoleObserver, IsDestroyedWithoutALockWhereItIsReplaced)
{
    mConsole.setObserver([look = std::make_shared<LastLook>(mConsole)] {});
    EXPECT_NO_THROW(mConsole.setObserver({}));
    EXPECT_EQ(test::logLines(mConsole), Lines{output("last look")});
}

TEST_F(ConsoleObserver, IsDestroyedWithoutALockWhereItReplacedItself)
{
    mConsole.setObserver([this, look = std::make_shared<LastLook>(mConsole)] { mConsole.setObserver({}); });
    EXPECT_NO_THROW(mConsole.write(U"a", Output));
    EXPECT_EQ(test::logLines(mConsole), Lines({output("a"), output("last look")}));
}

TEST(ConsoleObserverAtTheEnd, IsDestroyedWhileTheConsoleCanStillBeUsed)
{
    std::size_t size = 0;
    {
        Console console;
        const auto tell = [&](const LastLook* look) {
            delete look;
            size = console.logSize();
        };
        console.setObserver([look = std::shared_ptr<LastLook>(new LastLook(console), tell)] {});
    }
    EXPECT_EQ(size, 3U);
}

TEST_F(ConsoleObserver, CanBeSetByAnyThread)
{
    std::thread([this] { observe(); }).join();
    mConsole.write(U"a", Output);
    EXPECT_EQ(calls().size(), 1U);
}

TEST_F(ConsoleObserver, MayChangeTheRunpathThatIsListed)
{
    mConsole.registerCommand(std::make_unique<RunConsoleFileCommand>());
    const std::vector<std::filesystem::path> paths = mConsole.runPaths();
    int added = 0;
    mConsole.setObserver([&] { mConsole.appendRunpath("/added" + std::to_string(++added)); });
    const std::size_t before = mConsole.logSize();
    mConsole.execute(U"run path_list");
    const Lines lines = test::logLines(mConsole, before + 1);
    EXPECT_EQ(lines.size(), paths.size() + 2)
        << "those there were, the one that the echo added, and an empty line";
}

TEST_F(ConsoleObserver, CanBeRemovedWhileManyThreadsWrite)
{
    constexpr int kWriters = 4;
    constexpr int kRounds = 200;
    std::atomic<bool> stops = false;
    std::vector<std::thread> writers;
    for (int i = 0; i < kWriters; ++i) {
        writers.emplace_back([&] {
            while (!stops) {
                mConsole.write(U"line", Output);
            }
        });
    }
    for (int i = 0; i < kRounds; ++i) {
        auto isAlive = std::make_unique<std::atomic<bool>>(true);
        mConsole.setObserver([alive = isAlive.get()] { EXPECT_TRUE(*alive); });
        mConsole.write(U"mine", Output);
        mConsole.setObserver({});
        *isAlive = false;
    }
    stops = true;
    for (std::thread& writer : writers) {
        writer.join();
    }
}

TEST_F(ConsoleObserver, HoldsNoLock)
{
    mConsole.setObserver([this] {
        EXPECT_NO_THROW(test::partsOf(mConsole).lock()); // would throw where this thread held it
        std::thread other([this] { mConsole.snapshot(); });
        other.join();
    });
    mConsole.write(U"a", Output);
    mConsole.open();
}

} // namespace
} // namespace zephyr::console
