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
    observer.replace(aFunction());
    Observer::Call mine;
    Observer::Call others;
    observer.begin(mine);
    std::thread([&] { observer.begin(others); }).join();
    EXPECT_NE(others.function(), nullptr);
    mine.release();
    observer.end(mine);
    EXPECT_FALSE(observer.isCalledHere());
    EXPECT_TRUE(observer.isUnderWay(2));
    EXPECT_FALSE(observer.isUnderWay(1)) << "the first call has ended";
    others.release();
    observer.end(others);
    EXPECT_FALSE(observer.isUnderWay(2));
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
    EXPECT_TRUE(observer.isUnderWay(observer.begunCalls()));
    observer.end(call);
    EXPECT_FALSE(observer.isUnderWay(observer.begunCalls()));
}

} // namespace
} // namespace zephyr::console
