#include "commands/Wind.h"

#include <memory>

namespace zephyr::test {
namespace {

using namespace console::commands;

class CommandFailures : public WindFixture
{
protected:
    CommandFailures()
    {
        add(mConsole, U"fail", U"", [](Answer& answer) {
            answer << "tried";
            fail(U"It does not work.");
        });
        add(mConsole, U"throw", U"", [] { throw CommandError("Nor does th\u00EFs."); });
    }
};

TEST_F(CommandFailures, AreAnsweredWithOneLine)
{
    EXPECT_EQ((Lines{output("tried", 4), output("It does not work.", 4)}), answer(U"fail"));
    EXPECT_EQ((Lines{output("Nor does th\u00EFs.", 4)}), answer(U"throw"));
}

TEST_F(CommandFailures, AreCounted)
{
    const FailureCounter failures(mConsole);
    mConsole.execute(U"wind show");
    mConsole.execute(U"wind set 3");
    mConsole.execute(U"wind");
    EXPECT_EQ(0U, failures.count());
    EXPECT_EQ(U"", failures.lastLine());
    mConsole.execute(U"fail");
    EXPECT_EQ(1U, failures.count());
    EXPECT_EQ(U"It does not work.", failures.lastLine());
    mConsole.execute(U"wind set 75");
    EXPECT_EQ(2U, failures.count());
    EXPECT_EQ(U"speed: 75 is above 60 m/s.", failures.lastLine());
    mConsole.execute(U"wind fall");
    EXPECT_EQ(3U, failures.count());
}

TEST_F(CommandFailures, AreCountedWhileTheCounterLives)
{
    const FailureCounter outer(mConsole);
    {
        const FailureCounter inner(mConsole);
        mConsole.execute(U"fail");
        EXPECT_EQ(1U, inner.count());
    }
    mConsole.execute(U"fail");
    EXPECT_EQ(2U, outer.count());
}

TEST_F(CommandFailures, AreCountedInAnyOrderOfTheCountersEnds)
{
    auto first = std::make_unique<FailureCounter>(mConsole);
    auto second = std::make_unique<FailureCounter>(mConsole);
    auto third = std::make_unique<FailureCounter>(mConsole);
    second.reset();
    mConsole.execute(U"fail");
    EXPECT_EQ(1U, first->count());
    EXPECT_EQ(1U, third->count());
    first.reset();
    mConsole.execute(U"fail");
    EXPECT_EQ(2U, third->count());
}

TEST_F(CommandFailures, OfAnotherConsoleAreNotCounted)
{
    console::Console other;
    const FailureCounter failures(other);
    mConsole.execute(U"fail");
    EXPECT_EQ(0U, failures.count());
}

TEST_F(CommandFailures, OfALineInALineAreCountedAndLetTheOuterGoOn)
{
    bool wentOn = false;
    add(mConsole, U"outer", U"", [&](console::Console& console) {
        console.execute(U"fail");
        wentOn = true;
    });
    const FailureCounter failures(mConsole);
    mConsole.execute(U"outer");
    EXPECT_TRUE(wentOn);
    EXPECT_EQ(1U, failures.count());
}

TEST_F(CommandFailures, AreCountedThoughTheCommandIsRemoved)
{
    add(mConsole, U"last", U"", [](console::Console& console) {
        commands::remove(console, U"last");
        fail(U"Gone.");
    });
    const FailureCounter failures(mConsole);
    mConsole.execute(U"last");
    EXPECT_EQ(1U, failures.count());
    EXPECT_EQ(nullptr, mConsole.lookupCommand(U"last"));
}

} // namespace
} // namespace zephyr::test
