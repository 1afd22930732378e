#include "BlinkTimer.h"

#include <QElapsedTimer>
#include <QTest>

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

constexpr int kDeadlineMs = 60000;

class ABlinkTimer : public testing::Test
{
protected:
    /// Waits until another timer has fired, which is set now and for a little longer than `seconds`.
    void letPass(double seconds)
    {
        int others = 0;
        BlinkTimer other(context, [&] { ++others; });
        other.setDue(seconds + 0.002);
        other.start();
        ASSERT_TRUE(QTest::qWaitFor([&] { return others == 1; }, kDeadlineMs));
    }

    QObject context;
    int changes = 0; // that the timer announced
    BlinkTimer timer{context, [this] { ++changes; }};
};

TEST_F(ABlinkTimer, FiresOnceAndNotBeforeTheTimeThatWasSet)
{
    QElapsedTimer clock;
    clock.start();
    timer.setDue(0.05);
    timer.start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return changes == 1; }, kDeadlineMs));
    EXPECT_GE(clock.elapsed(), 50);
    timer.start();
    letPass(0.05);
    EXPECT_EQ(1, changes);
}

TEST_F(ABlinkTimer, CountsTheTimeFromWhenItWasSet)
{
    timer.setDue(0.0);
    letPass(0.01);
    EXPECT_EQ(0, changes) << "it was not started";
    timer.start();
    ASSERT_TRUE(QTest::qWaitFor([this] { return changes == 1; }, kDeadlineMs));
}

TEST_F(ABlinkTimer, DoesNotFireWhenItWasStopped)
{
    timer.setDue(0.01);
    timer.start();
    timer.stop();
    timer.setDue(0.01);
    timer.stop();
    timer.start();
    letPass(0.01);
    EXPECT_EQ(0, changes);
}

} // namespace
} // namespace zephyr::console::qt
