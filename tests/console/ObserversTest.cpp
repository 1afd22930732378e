#include "Observers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

namespace zephyr::console {
namespace {

std::shared_ptr<const Observers::Function> aFunction()
{
    return std::make_shared<const Observers::Function>([] {});
}

TEST(Observers, BeginNoRoundWhereThereAreNone)
{
    Observers observers;
    observers.put(Observers::kHosts, nullptr);
    EXPECT_TRUE(observers.isEmpty());
    Observers::Round round(observers);
    EXPECT_EQ(round.function(), nullptr);
    EXPECT_FALSE(observers.areCalledHere());
}

TEST(Observers, AreCalledOneAfterTheOtherTheNewestFirst)
{
    Observers observers;
    const auto first = aFunction();
    const auto second = aFunction();
    const auto hosts = aFunction();
    observers.put(observers.newNumber(), first);
    observers.put(observers.newNumber(), second);
    observers.put(Observers::kHosts, hosts);
    Observers::Round round(observers);
    EXPECT_EQ(round.function(), second.get());
    round.release();
    round.goOn();
    EXPECT_EQ(round.function(), first.get());
    round.release();
    round.goOn();
    EXPECT_EQ(round.function(), hosts.get());
    EXPECT_TRUE(observers.areCalledHere());
    round.release();
    round.goOn();
    EXPECT_EQ(round.function(), nullptr);
    EXPECT_FALSE(observers.areCalledHere());
}

TEST(Observers, AreLeftOutOfARoundThatBeganBeforeThem)
{
    Observers observers;
    observers.put(observers.newNumber(), aFunction());
    Observers::Round round(observers);
    observers.put(observers.newNumber(), aFunction());
    round.release();
    round.goOn();
    EXPECT_EQ(round.function(), nullptr);
}

TEST(Observers, AreLeftOutOfARoundOnceTheyAreTaken)
{
    Observers observers;
    const auto older = aFunction();
    const std::uint64_t id = observers.newNumber();
    observers.put(id, older);
    observers.put(observers.newNumber(), aFunction());
    Observers::Round round(observers);
    EXPECT_EQ(observers.take(id), older);
    EXPECT_EQ(observers.take(id), nullptr);
    round.release();
    round.goOn();
    EXPECT_EQ(round.function(), nullptr);
}

TEST(Observers, AreNotCalledInsideOfTheirOwnCallButTheOthersAre)
{
    Observers observers;
    const auto first = aFunction();
    const auto second = aFunction();
    observers.put(observers.newNumber(), first);
    observers.put(observers.newNumber(), second);
    Observers::Round outer(observers);
    Observers::Round inner(observers);
    Observers::Round innermost(observers);
    EXPECT_EQ(outer.function(), second.get());
    EXPECT_EQ(inner.function(), first.get());
    EXPECT_EQ(innermost.function(), nullptr);
    inner.release();
    inner.goOn();
    EXPECT_EQ(inner.function(), nullptr);
    outer.release();
    outer.goOn();
    EXPECT_EQ(outer.function(), first.get());
    EXPECT_TRUE(observers.areCalledHere());
    outer.release();
    outer.goOn();
    EXPECT_FALSE(observers.areCalledHere());
}

TEST(Observers, AreCalledOnSeveralThreadsAtOnceAndReturnInAnyOrder)
{
    Observers observers;
    const std::uint64_t id = observers.newNumber();
    observers.put(id, aFunction());
    std::optional<Observers::Round> mine(std::in_place, observers);
    const std::uint64_t afterMine = observers.newNumber();
    std::optional<Observers::Round> others;
    std::thread([&] { others.emplace(observers); }).join();
    EXPECT_NE(others->function(), nullptr);
    mine.reset();
    EXPECT_FALSE(observers.areCalledHere());
    EXPECT_TRUE(observers.isUnderWay(id, observers.newNumber()));
    EXPECT_FALSE(observers.isUnderWay(id, afterMine)) << "the first round has ended";
    others.reset();
    EXPECT_FALSE(observers.isUnderWay(id, observers.newNumber()));
}

TEST(Observers, KnowWhichOfThemIsCalled)
{
    Observers observers;
    const std::uint64_t first = observers.newNumber();
    const std::uint64_t second = observers.newNumber();
    observers.put(first, aFunction());
    observers.put(second, aFunction());
    Observers::Round round(observers);
    EXPECT_FALSE(observers.isUnderWay(first, observers.newNumber()));
    EXPECT_TRUE(observers.isUnderWay(second, observers.newNumber()));
    round.release();
    round.goOn();
    EXPECT_TRUE(observers.isUnderWay(first, observers.newNumber()));
    EXPECT_FALSE(observers.isUnderWay(second, observers.newNumber()));
    EXPECT_TRUE(observers.isUnderWay(std::nullopt, observers.newNumber()));
    round.release();
    round.goOn();
    EXPECT_FALSE(observers.isUnderWay(std::nullopt, observers.newNumber()));
}

TEST(Observers, KnowACallOfAFunctionThatWasTakenAndReleased)
{
    Observers observers;
    const auto function = aFunction();
    observers.put(Observers::kHosts, function);
    std::optional<Observers::Round> round(std::in_place, observers);
    EXPECT_EQ(observers.take(Observers::kHosts), function);
    round->release();
    EXPECT_EQ(function.use_count(), 1);
    EXPECT_TRUE(observers.isUnderWay(Observers::kHosts, observers.newNumber()));
    round.reset();
    EXPECT_FALSE(observers.isUnderWay(Observers::kHosts, observers.newNumber()));
}

} // namespace
} // namespace zephyr::console
