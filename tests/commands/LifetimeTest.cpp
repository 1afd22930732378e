#include "commands/CommandsFixture.h"

#include <memory>

namespace zephyr::test {
namespace {

using namespace console::commands;

class CommandLifetime : public CommandsFixture
{
protected:
    bool has(const std::u32string& name) { return mConsole.lookupCommand(name) != nullptr; }

    Added addLamp()
    {
        return add(mConsole, U"lamp", U"", [alive = mAlive] {});
    }

    std::shared_ptr<int> mAlive = std::make_shared<int>();
};

TEST_F(CommandLifetime, LastsAsLongAsTheConsoleWithoutARegistration)
{
    addLamp();
    EXPECT_TRUE(has(U"lamp"));
    EXPECT_TRUE(commands::remove(mConsole, U"lamp"));
    EXPECT_FALSE(has(U"lamp"));
    EXPECT_EQ(1, mAlive.use_count());
    EXPECT_FALSE(commands::remove(mConsole, U"lamp"));
}

TEST_F(CommandLifetime, EndsWithItsRegistration)
{
    {
        const Registration lamp = addLamp();
        EXPECT_TRUE(lamp.isActive());
        EXPECT_TRUE(has(U"lamp"));
    }
    EXPECT_FALSE(has(U"lamp"));
    EXPECT_EQ(1, mAlive.use_count());
}

TEST_F(CommandLifetime, MovesWithItsRegistration)
{
    Registration first = addLamp();
    Registration second = std::move(first);
    EXPECT_FALSE(first.isActive()); // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(second.isActive());
    first = std::move(second);
    EXPECT_TRUE(has(U"lamp"));
    first = Registration();
    EXPECT_FALSE(has(U"lamp"));
}

TEST_F(CommandLifetime, CanBeLeftToTheConsole)
{
    Registration lamp = addLamp();
    lamp.release();
    EXPECT_FALSE(lamp.isActive());
    EXPECT_TRUE(has(U"lamp"));
}

TEST_F(CommandLifetime, OfTheOneThatReplacedAnotherIsItsOwn)
{
    Registration first = addLamp();
    const Registration second = addLamp();
    EXPECT_FALSE(first.isActive());
    first.remove();
    EXPECT_TRUE(second.isActive());
    EXPECT_TRUE(has(U"lamp"));
}

TEST_F(CommandLifetime, MayEndBeforeItsRegistration)
{
    Registration lamp;
    {
        console::Console console;
        lamp = add(console, U"lamp", U"", [] {});
        EXPECT_TRUE(lamp.isActive());
    }
    EXPECT_FALSE(lamp.isActive());
    lamp.remove();
    lamp = addLamp();
    mConsole.shutdown();
    EXPECT_FALSE(lamp.isActive());
}

TEST_F(CommandLifetime, LastsUntilTheCallInWhichItIsRemovedReturns)
{
    Registration lamp;
    long usesInside = 0;
    lamp = add(mConsole, U"lamp", U"", [&, alive = mAlive] {
        lamp.remove();
        usesInside = alive.use_count();
    });
    mConsole.execute(U"lamp");
    EXPECT_EQ(2, usesInside);
    EXPECT_EQ(1, mAlive.use_count());
    EXPECT_FALSE(has(U"lamp"));
}

TEST_F(CommandLifetime, MayReplaceItselfWhileItRuns)
{
    std::vector<int> ran;
    add(mConsole, U"next", U"", [&](console::Console& console) {
        add(console, U"next", U"", [&] { ran.push_back(2); });
        ran.push_back(1);
    });
    mConsole.execute(U"next");
    mConsole.execute(U"next");
    EXPECT_EQ((std::vector<int>{1, 2}), ran);
}

} // namespace
} // namespace zephyr::test
