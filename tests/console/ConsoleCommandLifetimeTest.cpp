#include "support/ConsoleDriver.h"
#include "support/LogLine.h"
#include "support/MortalCommand.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::addCommand;
using test::echo;
using test::Life;
using test::output;
using Lines = std::vector<test::LogLine>;

/// When a command goes that is replaced, unregistered or shut down.
class ConsoleCommandLifetime : public testing::Test
{
protected:
    Life addMortal(const std::u32string& name, test::ScriptedCommand::Run run = {})
    {
        return test::addMortalCommand(mConsole, name, std::move(run));
    }

    Console mConsole;
};

TEST_F(ConsoleCommandLifetime, EndsAtOnceWhileAnotherCommandRuns)
{
    const Life wind = addMortal(U"wind");
    addMortal(U"reload", [&](const ConsoleArgs&, Console&) {
        addMortal(U"wind");
        EXPECT_TRUE(wind.expired());
    });
    mConsole.execute(U"reload");
    EXPECT_TRUE(wind.expired());
}

TEST_F(ConsoleCommandLifetime, EndsAtOnceAtAShutdownByAnotherCommand)
{
    const Life wind = addMortal(U"wind");
    Life quit;
    quit = addMortal(U"quit", [&](const ConsoleArgs&, Console& console) {
        console.shutdown();
        EXPECT_TRUE(wind.expired());
        EXPECT_FALSE(quit.expired());
    });
    mConsole.execute(U"quit");
    EXPECT_TRUE(quit.expired());
}

TEST_F(ConsoleCommandLifetime, EndsAtOnceWhenItIsUnregistered)
{
    const Life wind = addMortal(U"wind");
    EXPECT_TRUE(mConsole.unregisterCommand(U"wind"));
    EXPECT_TRUE(wind.expired());
    EXPECT_EQ(nullptr, mConsole.lookupCommand(U"wind"));
    EXPECT_FALSE(mConsole.unregisterCommand(U"wind"));
    EXPECT_NE(nullptr, mConsole.lookupCommand(U"help"));
}

TEST_F(ConsoleCommandLifetime, EndsWhenItsCallReturnsIfItUnregistersItself)
{
    Life once;
    once = addMortal(U"once", [&](const ConsoleArgs&, Console& console) {
        EXPECT_TRUE(console.unregisterCommand(U"once"));
        EXPECT_EQ(nullptr, console.lookupCommand(U"once"));
        EXPECT_FALSE(once.expired());
    });
    mConsole.execute(U"once");
    EXPECT_TRUE(once.expired());
}

TEST_F(ConsoleCommandLifetime, EndsWhenItsOwnCallReturnsThoughAnOuterCommandGoesOn)
{
    Life swap;
    swap = addMortal(U"swap", [&](const ConsoleArgs&, Console&) {
        addMortal(U"swap");
        EXPECT_FALSE(swap.expired());
    });
    addMortal(U"outer", [&](const ConsoleArgs&, Console& console) {
        console.execute(U"swap");
        EXPECT_TRUE(swap.expired());
    });
    mConsole.execute(U"outer");
}

TEST_F(ConsoleCommandLifetime, EndsWhenTheOutermostOfItsOwnCallsReturns)
{
    Life swap;
    swap = addMortal(U"swap", [&](const ConsoleArgs& args, Console& console) {
        if (args.argCount() == 1) {
            console.execute(U"swap inner");
            EXPECT_FALSE(swap.expired());
        } else {
            addMortal(U"swap");
        }
    });
    addMortal(U"outer", [&](const ConsoleArgs&, Console& console) {
        console.execute(U"swap");
        EXPECT_TRUE(swap.expired());
    });
    mConsole.execute(U"outer");
}

TEST_F(ConsoleCommandLifetime, EndsByAnExceptionOfItsOwnThoughAnOuterCommandCatchesIt)
{
    const Life swap = addMortal(U"swap", [&](const ConsoleArgs&, Console&) {
        addMortal(U"swap");
        throw std::runtime_error("no wind");
    });
    addMortal(U"outer", [&](const ConsoleArgs&, Console& console) {
        EXPECT_THROW(console.execute(U"swap"), std::runtime_error);
        EXPECT_TRUE(swap.expired());
    });
    mConsole.execute(U"outer");
}

TEST_F(ConsoleCommandLifetime, LastsAsLongAsItsArgumentHandlerRuns)
{
    Life life;
    auto command = std::make_unique<test::ScriptedCommand>(U"wind");
    {
        auto owner = std::make_shared<int>();
        life = owner;
        command->registerArgHandler(
            U"set",
            [&, owner](const ConsoleArgs&, Console&) {
                addCommand(mConsole, U"wind");
                EXPECT_FALSE(life.expired());
            },
            U"", U"");
        command->onExecute = [raw = command.get()](const ConsoleArgs& args, Console& console) {
            raw->executeArgHandler(args, console);
        };
    }
    mConsole.registerCommand(std::move(command));
    mConsole.execute(U"wind set");
    EXPECT_TRUE(life.expired());
}

TEST_F(ConsoleCommandLifetime, LastsAsLongAsItsCompletionIsAskedAndNotLonger)
{
    Life life;
    {
        auto owner = std::make_shared<int>();
        life = owner;
        addCommand(mConsole, U"pick").onComplete = [&, owner](const ConsoleArgs&) {
            mConsole.shutdown();
            EXPECT_FALSE(life.expired());
            return std::vector<std::u32string>{U"alpha"};
        };
    }
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("pick a");
    user.press(Qt::Key_Tab);
    EXPECT_EQ(user.input(), "pick alpha");
    EXPECT_TRUE(life.expired());
}

TEST_F(ConsoleCommandLifetime, EndsByAnExceptionOfItsCompletion)
{
    Life life;
    {
        auto owner = std::make_shared<int>();
        life = owner;
        addCommand(mConsole, U"pick").onComplete =
            [&, owner](const ConsoleArgs&) -> std::vector<std::u32string> {
            addCommand(mConsole, U"pick");
            throw std::runtime_error("no wind");
        };
    }
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("pick a");
    EXPECT_THROW(user.press(Qt::Key_Tab), std::runtime_error);
    EXPECT_TRUE(life.expired());
}

TEST_F(ConsoleCommandLifetime, LastsAsLongAsItIsVisited)
{
    const Life a = addMortal(U"a");
    const Life b = addMortal(U"b");
    bool isFirst = true;
    mConsole.forEachCommand([&](const ConsoleCommand& command) {
        if (std::exchange(isFirst, false)) {
            mConsole.shutdown();
            EXPECT_FALSE(a.expired());
            EXPECT_TRUE(b.expired());
            EXPECT_EQ(command.name(), U"a");
        }
    });
    EXPECT_TRUE(a.expired());
}

TEST_F(ConsoleCommandLifetime, EndsByAnExceptionOfItsVisitor)
{
    const Life a = addMortal(U"a");
    const auto visit = [&](const ConsoleCommand&) {
        mConsole.shutdown();
        throw std::runtime_error("no wind");
    };
    EXPECT_THROW(mConsole.forEachCommand(visit), std::runtime_error);
    EXPECT_TRUE(a.expired());
}

/// A command that calls back when it is asked for its name.
class NamedCommand : public ConsoleCommand
{
public:
    std::u32string name() const override
    {
        if (onName) {
            onName();
        }
        return U"named";
    }

    std::function<void()> onName;
};

TEST_F(ConsoleCommandLifetime, LastsAsLongAsItIsAskedForItsName)
{
    auto owner = std::make_shared<int>();
    const Life life = owner;
    auto command = std::make_unique<NamedCommand>();
    NamedCommand& named = *command;
    mConsole.registerCommand(std::move(command));
    named.onName = [&, owner = std::move(owner)] {
        addCommand(mConsole, U"named");
        EXPECT_FALSE(life.expired());
    };
    mConsole.execute(U"help");
    EXPECT_TRUE(life.expired());
}

TEST_F(ConsoleCommandLifetime, IsNoConcernOfTheHistory)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    addMortal(U"wind");
    user.type("wind 1\nwind 2\n");
    mConsole.shutdown();
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "wind 2");
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "wind 1");
    EXPECT_EQ(mConsole.history(), (std::vector<std::u32string>{U"wind 1", U"wind 2"}));
    user.press(Qt::Key_Return);
    EXPECT_EQ(user.log().back(), "");
}

/// A command library that stays loaded as long as this lives.
class Library
{
public:
    explicit Library(const char* path) : mHandle(dlopen(path, RTLD_NOW | RTLD_LOCAL))
    {
        if (mHandle == nullptr) {
            throw std::runtime_error(dlerror());
        }
    }
    ~Library() { EXPECT_EQ(dlclose(mHandle), 0); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    void registerCommands(Console& console) const
    {
        using Register = void (*)(Console&);
        reinterpret_cast<Register>(dlsym(mHandle, "registerCommands"))(console);
    }

private:
    void* mHandle;
};

bool isLoaded(const char* path)
{
    void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) {
        dlclose(handle);
    }
    return handle != nullptr;
}

TEST_F(ConsoleCommandLifetime, EndsBeforeACommandThatReloadsALibraryUnloadsTheOldOne)
{
    auto library = std::make_unique<Library>(FIRST_PLUGIN);
    library->registerCommands(mConsole);
    addCommand(mConsole, U"reload").onExecute = [&](const ConsoleArgs&, Console& console) {
        auto next = std::make_unique<Library>(SECOND_PLUGIN);
        next->registerCommands(console); // replaces the old library's command
        library = std::move(next);       // and unloads its code
        EXPECT_FALSE(isLoaded(FIRST_PLUGIN));
        console.execute(U"plugin");
    };
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("plugin\nreload\n");
    EXPECT_EQ(user.log(),
              (std::vector<std::string>{"plugin", "first", "", "reload", "plugin", "second", "", ""}));
    user.press(Qt::Key_Up);
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "plugin");
    mConsole.shutdown();
    library.reset();
    EXPECT_FALSE(isLoaded(SECOND_PLUGIN));
}

} // namespace
} // namespace zephyr::console
