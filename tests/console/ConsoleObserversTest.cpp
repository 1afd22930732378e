#include "support/AssertRecorder.h"
#include "support/ConsoleInside.h"
#include "support/LogLine.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::output;
using test::partsOf;
using Lines = std::vector<test::LogLine>;
using Names = std::vector<std::string>;

/// A console with several observers, which note their names when they are called.
class ConsoleObservers : public testing::Test
{
protected:
    /// An observer that notes `name`, and then calls `then`.
    std::function<void()> noting(const std::string& name, const std::function<void()>& then = {})
    {
        return [this, name, then] {
            mCalled.push_back(name);
            if (then) {
                then();
            }
        };
    }

    /// The names since the last time.
    Names called() { return std::exchange(mCalled, {}); }

    Console mConsole;
    Names mCalled;
};

TEST_F(ConsoleObservers, AreCalledTheNewestFirstAndTheHostsLast)
{
    mConsole.addObserver(noting("a"));
    mConsole.addObserver(noting("b"));
    mConsole.setObserver(noting("host"));
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), (Names{"b", "a", "host"}));
    mConsole.open();
    EXPECT_EQ(called(), (Names{"b", "a", "host"}));
    mConsole.close();
    EXPECT_EQ(called(), (Names{"b", "a", "host"}));
}

TEST_F(ConsoleObservers, HaveIdsOfTheirOwnWhichAreNeverZeroNorUsedAgain)
{
    const std::uint64_t first = mConsole.addObserver(noting("a"));
    const std::uint64_t second = mConsole.addObserver(noting("b"));
    mConsole.removeObserver(second);
    const std::uint64_t third = mConsole.addObserver(noting("c"));
    EXPECT_NE(first, 0U);
    EXPECT_NE(second, 0U);
    EXPECT_NE(first, second);
    EXPECT_NE(third, first);
    EXPECT_NE(third, second);
}

TEST_F(ConsoleObservers, AreRemovedOneByOne)
{
    const std::uint64_t first = mConsole.addObserver(noting("a"));
    const std::uint64_t second = mConsole.addObserver(noting("b"));
    mConsole.setObserver(noting("host"));
    mConsole.removeObserver(first);
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), (Names{"b", "host"}));
    mConsole.setObserver({});
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), (Names{"b"}));
    mConsole.removeObserver(second);
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), Names());
}

TEST_F(ConsoleObservers, StayWhereAnUnknownIdIsRemoved)
{
    const std::uint64_t id = mConsole.addObserver(noting("a"));
    mConsole.setObserver(noting("host"));
    mConsole.removeObserver(0);
    mConsole.removeObserver(id + 1000);
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), (Names{"a", "host"}));
}

TEST_F(ConsoleObservers, MayBeEmptyFunctionsWhichAreNeverCalled)
{
    const std::uint64_t id = mConsole.addObserver({});
    EXPECT_NE(id, 0U);
    EXPECT_NO_THROW(mConsole.write(U"x", Output));
    mConsole.removeObserver(id);
}

TEST_F(ConsoleObservers, AreCalledForWhatAnotherDoesButNotForWhatTheyDo)
{
    bool isFirst = true;
    mConsole.addObserver(noting("a"));
    mConsole.addObserver(noting("b", [&] {
        if (std::exchange(isFirst, false)) {
            mConsole.write(U"from b", Output);
        }
    }));
    mConsole.addObserver(noting("c"));
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), (Names{"c", "b", "c", "a", "a"}));
    EXPECT_EQ(test::logLines(mConsole), Lines({output("x"), output("from b")}));
}

TEST_F(ConsoleObservers, ThatAnswerEachOtherComeToAnEnd)
{
    mConsole.addObserver(noting("a", [this] { mConsole.write(U"from a", Output); }));
    mConsole.addObserver(noting("b", [this] { mConsole.write(U"from b", Output); }));
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), (Names{"b", "a", "a", "b"}));
}

TEST_F(ConsoleObservers, AreNotCalledForWhatWasAppendedBeforeTheyWereAdded)
{
    bool isFirst = true;
    mConsole.addObserver(noting("a", [&] {
        if (std::exchange(isFirst, false)) {
            mConsole.addObserver(noting("new"));
        }
    }));
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), Names{"a"});
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), (Names{"new", "a"}));
}

TEST_F(ConsoleObservers, ThatAnotherRemovesAreNotCalledAnyMore)
{
    auto life = std::make_shared<int>();
    const std::weak_ptr<int> watched = life;
    const std::uint64_t first = mConsole.addObserver(noting("a", [life = std::move(life)] {}));
    mConsole.addObserver(noting("b", [&] {
        mConsole.removeObserver(first);
        EXPECT_TRUE(watched.expired());
    }));
    mConsole.write(U"x", Output);
    EXPECT_EQ(called(), Names{"b"});
}

TEST_F(ConsoleObservers, MayRemoveThemselvesAndTheOthersAreStillCalled)
{
    auto life = std::make_shared<int>();
    const std::weak_ptr<int> watched = life;
    mConsole.addObserver(noting("a", [&] { EXPECT_TRUE(watched.expired()); }));
    std::uint64_t second = 0;
    second = mConsole.addObserver([&, life = std::move(life)] {
        mCalled.emplace_back("b");
        mConsole.removeObserver(second);
        EXPECT_FALSE(watched.expired()) << "it lives until it has returned";
    });
    mConsole.write(U"x", Output);
    mConsole.write(U"y", Output);
    EXPECT_EQ(called(), (Names{"b", "a", "a"}));
}

TEST_F(ConsoleObservers, AreStillCalledWhereOneThrowsAStandardException)
{
    mConsole.setObserver(noting("host", [] { throw std::runtime_error("no"); }));
    mConsole.addObserver(noting("a", [] { throw std::bad_alloc(); }));
    mConsole.addObserver(noting("b"));
    const test::AssertRecorder recorder;
    EXPECT_NO_THROW(mConsole.write(U"x", Output));
    EXPECT_EQ(called(), (Names{"b", "a", "host"}));
    EXPECT_EQ(recorder.failures().size(), 2U);
}

TEST_F(ConsoleObservers, AreLeftByWhatIsNoStandardException)
{
    mConsole.addObserver(noting("a"));
    mConsole.addObserver(noting("b", [] { throw 42; }));
    EXPECT_THROW(mConsole.write(U"x", Output), int);
    EXPECT_EQ(test::logLines(mConsole), Lines({output("x")}));
    called();
    EXPECT_THROW(mConsole.write(U"y", Output), int);
    EXPECT_EQ(called(), Names{"b"}) << "the call that was left has ended";
}

TEST_F(ConsoleObservers, HaveReturnedOnOtherThreadsWhenTheirRemovalReturns)
{
    std::binary_semaphore isInside(0);
    std::atomic<bool> isRunning = false;
    auto life = std::make_shared<int>();
    const std::weak_ptr<int> watched = life;
    const std::uint64_t id = mConsole.addObserver([&, life = std::move(life)] {
        isRunning = true;
        isInside.release();
        while (!partsOf(mConsole).lock()->observers.isEmpty()) { // until the removal has begun to wait
            std::this_thread::yield();
        }
        isRunning = false;
    });
    std::thread writer([this] { mConsole.write(U"x", Output); });
    isInside.acquire();
    mConsole.removeObserver(id);
    EXPECT_FALSE(isRunning);
    EXPECT_TRUE(watched.expired());
    writer.join();
}

TEST_F(ConsoleObservers, AreRemovedWithoutAWaitForTheOthers)
{
    std::binary_semaphore isInside(0);
    std::binary_semaphore mayLeave(0);
    const std::uint64_t first = mConsole.addObserver([] { ADD_FAILURE() << "was removed"; });
    mConsole.addObserver([&] {
        isInside.release();
        mayLeave.acquire();
    });
    const std::uint64_t last = mConsole.addObserver([] {});
    std::thread writer([this] { mConsole.write(U"x", Output); });
    isInside.acquire();
    mConsole.removeObserver(first);
    mConsole.removeObserver(last);
    mConsole.setObserver({});
    mayLeave.release();
    writer.join();
}

TEST_F(ConsoleObservers, MayRemoveEachOtherOnTwoThreads)
{
    std::binary_semaphore firstIsInside(0);
    std::binary_semaphore secondIsInside(0);
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    const auto inThread = [main = std::this_thread::get_id()] { return std::this_thread::get_id() != main; };
    first = mConsole.addObserver([&] {
        if (inThread()) {
            firstIsInside.release();
            secondIsInside.acquire();
            mConsole.removeObserver(second);
        }
    });
    second = mConsole.addObserver([&] {
        if (!inThread()) {
            secondIsInside.release();
            mConsole.removeObserver(first);
        }
    });
    std::thread writer([this] { mConsole.write(U"x", Output); });
    firstIsInside.acquire();
    mConsole.write(U"y", Output);
    writer.join();
    EXPECT_TRUE(partsOf(mConsole).lock()->observers.isEmpty());
}

/// Looks at a console when it is destroyed, as what an observer captured may.
class LookAtTheEnd
{
public:
    LookAtTheEnd(Console& console, std::vector<std::size_t>& sizes) : mConsole(console), mSizes(sizes) {}
    ~LookAtTheEnd() { mSizes.push_back(mConsole.logSize()); }
    LookAtTheEnd(const LookAtTheEnd&) = delete;
    LookAtTheEnd& operator=(const LookAtTheEnd&) = delete;

private:
    Console& mConsole;
    std::vector<std::size_t>& mSizes;
};

TEST_F(ConsoleObservers, AreDestroyedWithoutALockWhereTheyAreRemoved)
{
    std::vector<std::size_t> sizes;
    const std::uint64_t id =
        mConsole.addObserver([look = std::make_shared<LookAtTheEnd>(mConsole, sizes)] {});
    mConsole.removeObserver(id);
    EXPECT_EQ(sizes.size(), 1U);
}

TEST(ConsoleObserversAtTheEnd, AreDestroyedWhileTheConsoleCanStillBeUsed)
{
    std::vector<std::size_t> sizes;
    std::optional<Console> console(std::in_place);
    console->addObserver([look = std::make_shared<LookAtTheEnd>(*console, sizes)] {});
    console->setObserver([look = std::make_shared<LookAtTheEnd>(*console, sizes)] {});
    console->addObserver([look = std::make_shared<LookAtTheEnd>(*console, sizes)] {});
    console.reset();
    EXPECT_EQ(sizes, std::vector<std::size_t>(3, 2));
}

TEST_F(ConsoleObservers, ComeAndGoOnManyThreadsWhileManyWrite)
{
    constexpr int kRounds = 100;
    std::atomic<bool> stops = false;
    std::vector<std::thread> writers;
    for (int i = 0; i < 2; ++i) {
        writers.emplace_back([&] {
            while (!stops) {
                mConsole.write(U"line", Output);
            }
        });
    }
    std::vector<std::thread> hosts;
    for (int i = 0; i < 3; ++i) {
        hosts.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                auto isAlive = std::make_unique<std::atomic<bool>>(true);
                const auto id = mConsole.addObserver([alive = isAlive.get()] { EXPECT_TRUE(*alive); });
                mConsole.write(U"mine", Output);
                mConsole.removeObserver(id);
                *isAlive = false;
            }
        });
    }
    for (std::thread& host : hosts) {
        host.join();
    }
    stops = true;
    for (std::thread& writer : writers) {
        writer.join();
    }
}

} // namespace
} // namespace zephyr::console
