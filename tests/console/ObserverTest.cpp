#include "Observer.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace zephyr::console {
namespace {

std::shared_ptr<const Observer::Function> aFunction()
{
    return std::make_shared<const Observer::Function>([] {});
}

TEST(Observer, BeginsNoCallWithoutAFunction)
{
    Observer observer;
    Observer::Call call;
    observer.begin(call);
    EXPECT_EQ(call.function(), nullptr);
    EXPECT_FALSE(observer.isCalledHere());
}

TEST(Observer, BeginsOneCallOnAThreadAtATime)
{
    Observer observer;
    observer.replace(aFunction());
    Observer::Call outer;
    Observer::Call inner;
    observer.begin(outer);
    observer.begin(inner);
    EXPECT_NE(outer.function(), nullptr);
    EXPECT_EQ(inner.function(), nullptr);
    EXPECT_TRUE(observer.isCalledHere());
    outer.release();
    observer.end(outer);
    EXPECT_FALSE(observer.isCalledHere());
}

TEST(Observer, BeginsACallOnAnotherThreadMeanwhileAndEndsThemInAnyOrder)
{
    Observer observer;
    const auto function = aFunction();
    observer.replace(function);
    Observer::Call mine;
    Observer::Call others;
    observer.begin(mine);
    std::thread([&] { observer.begin(others); }).join();
    EXPECT_NE(others.function(), nullptr);
    mine.release();
    observer.end(mine);
    EXPECT_FALSE(observer.isCalledHere());
    EXPECT_TRUE(observer.isCalled(function.get()));
    others.release();
    observer.end(others);
    EXPECT_FALSE(observer.isCalled(function.get()));
}

TEST(Observer, KnowsACallOfAFunctionThatWasReplacedAndReleased)
{
    Observer observer;
    const auto first = aFunction();
    observer.replace(first);
    Observer::Call call;
    observer.begin(call);
    EXPECT_EQ(observer.replace(aFunction()), first);
    call.release();
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_TRUE(observer.isCalled(first.get()));
    observer.end(call);
    EXPECT_FALSE(observer.isCalled(first.get()));
}

} // namespace
} // namespace zephyr::console
