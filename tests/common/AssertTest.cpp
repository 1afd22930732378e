#include "zephyr/common/Assert.h"

#include <QMessageLogContext>
#include <QString>
#include <QStringList>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using zephyr::Assert;
using zephyr::AssertFailure;

// Read before any test sets it.
const bool kShownAtStart = Assert::showQAVerify();

QStringList& loggedWarnings()
{
    static QStringList warnings;
    return warnings;
}

void keepWarning(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    EXPECT_EQ(type, QtWarningMsg);
    loggedWarnings().append(text);
}

class AssertTest : public testing::Test
{
protected:
    AssertTest() { loggedWarnings().clear(); }

    ~AssertTest() override
    {
        qInstallMessageHandler(mPreviousMessageHandler);
        Assert::setHandler({});
        Assert::setShowQAVerify(true);
    }

private:
    QtMessageHandler mPreviousMessageHandler = qInstallMessageHandler(keepWarning);
};

bool notify(const char* message = "")
{
    return Assert::notifyAssert("ConsoleArgs", 31, "!mArgs.empty()", message, true);
}

TEST_F(AssertTest, LogsAWarningAndGoesOnWithoutAHandler)
{
    EXPECT_TRUE(notify());
    EXPECT_EQ(loggedWarnings(), QStringList{"ConsoleArgs:31: assertion failed: !mArgs.empty()"});
}

TEST_F(AssertTest, LogsTheMessageWhereThereIsOne)
{
    EXPECT_TRUE(notify("no words"));
    EXPECT_EQ(loggedWarnings(), QStringList{"ConsoleArgs:31: assertion failed: !mArgs.empty(): no words"});
}

TEST_F(AssertTest, LogsTextAsItIs)
{
    EXPECT_TRUE(Assert::notifyAssert("100%s", -1, "a %n \"b\"", "caf\u00E9 %1", false));
    EXPECT_EQ(loggedWarnings(),
              QStringList{QString::fromUtf8("100%s:-1: assertion failed: a %n \"b\": caf\u00E9 %1")});
}

TEST_F(AssertTest, LogsWhatItHasWhenTextsAreMissing)
{
    EXPECT_TRUE(Assert::notifyAssert(nullptr, 7, nullptr, nullptr, true));
    EXPECT_EQ(loggedWarnings(), QStringList{":7: assertion failed: "});
}

TEST_F(AssertTest, PassesEveryArgumentToTheHandler)
{
    std::vector<AssertFailure> failures;
    Assert::setHandler([&](const AssertFailure& failure) {
        failures.push_back(failure);
        return true;
    });
    Assert::notifyAssert("Console", 12, "command", "text", true);
    Assert::notifyAssert("Other", 13, "x", "", false);

    ASSERT_EQ(failures.size(), 2U);
    EXPECT_STREQ(failures[0].source, "Console");
    EXPECT_EQ(failures[0].line, 12);
    EXPECT_STREQ(failures[0].expression, "command");
    EXPECT_STREQ(failures[0].message, "text");
    EXPECT_TRUE(failures[0].canContinue);
    EXPECT_FALSE(failures[1].canContinue);
    EXPECT_TRUE(loggedWarnings().isEmpty());
}

TEST_F(AssertTest, ReturnsWhatTheHandlerReturns)
{
    Assert::setHandler([](const AssertFailure& failure) { return failure.canContinue; });
    EXPECT_TRUE(Assert::notifyAssert("Console", 1, "x", "", true));
    EXPECT_FALSE(Assert::notifyAssert("Console", 1, "x", "", false));
}

TEST_F(AssertTest, ReturnsThePreviousHandler)
{
    EXPECT_FALSE(Assert::setHandler([](const AssertFailure&) { return false; })) << "the default is empty";
    const Assert::Handler first = Assert::setHandler([](const AssertFailure&) { return true; });
    ASSERT_TRUE(first);
    EXPECT_FALSE(first(AssertFailure{"", 0, "", "", true}));
    EXPECT_TRUE(notify());

    Assert::setHandler(first);
    EXPECT_FALSE(notify());
}

TEST_F(AssertTest, ReturnsToTheDefaultWithAnEmptyHandler)
{
    Assert::setHandler([](const AssertFailure&) { return false; });
    EXPECT_TRUE(Assert::setHandler({}));
    EXPECT_TRUE(notify());
    EXPECT_EQ(loggedWarnings().size(), 1);
    EXPECT_FALSE(Assert::setHandler({}));
}

TEST_F(AssertTest, CallsTheHandlerItselfAndNotACopy)
{
    Assert::setHandler([calls = 0](const AssertFailure&) mutable { return ++calls == 2; });
    EXPECT_FALSE(notify());
    EXPECT_TRUE(notify());
}

TEST_F(AssertTest, LetsAHandlerReplaceItself)
{
    Assert::setHandler([](const AssertFailure&) {
        Assert::setHandler({});
        return notify();
    });
    EXPECT_TRUE(notify());
    EXPECT_EQ(loggedWarnings().size(), 1);
}

TEST_F(AssertTest, LetsAHandlersExceptionThrough)
{
    Assert::setHandler([](const AssertFailure&) -> bool { throw std::logic_error("stop"); });
    EXPECT_THROW(notify(), std::logic_error);
    EXPECT_THROW(notify(), std::logic_error);
}

TEST_F(AssertTest, CountsEveryFailureOfSeveralThreadsWhileHandlersChange)
{
    constexpr int kThreads = 4;
    constexpr int kFailures = 500;
    std::atomic<int> handled = 0;
    const auto count = [&](const AssertFailure&) { return ++handled > 0; };
    Assert::setHandler(count);

    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < kFailures; ++j) {
                EXPECT_TRUE(notify());
                Assert::setHandler(count);
                Assert::setShowQAVerify(!Assert::showQAVerify());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(handled, kThreads * kFailures);
}

TEST_F(AssertTest, ShowsQualityChecksUntilToldOtherwise)
{
    EXPECT_TRUE(kShownAtStart);
    Assert::setShowQAVerify(false);
    EXPECT_FALSE(Assert::showQAVerify());
    Assert::setShowQAVerify(true);
    EXPECT_TRUE(Assert::showQAVerify());
}

/// Raises an assertion while the process's static objects are destroyed.
struct LateFailure
{
    ~LateFailure() { std::_Exit(notify() ? EXIT_FAILURE : 42); }
};

void exitWithALateFailure()
{
    static const LateFailure failure;
    const std::vector<int> state(1000, 0);
    Assert::setHandler([state](const AssertFailure&) { return state.back() != 0; });
    std::exit(EXIT_SUCCESS);
}

TEST(AssertDeathTest, ReachesTheHandlerWhileStaticObjectsAreDestroyed)
{
    // In a new process, since only there the static objects are created in the order that matters.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(exitWithALateFailure(), testing::ExitedWithCode(42), "");
}

} // namespace
