#include "view/CompletionSource.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <pthread.h>

namespace zephyr::console::qt {
namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::u32string>;

class TheSource : public testing::Test
{
protected:
    std::optional<Words> ask(const std::u32string& line)
    {
        const std::optional<SharedTexts> answer = source.ask(console, line);
        return answer ? std::optional(Words(answer->begin(), answer->end())) : std::nullopt;
    }

    /// Registers a command that takes so long to answer.
    test::ScriptedCommand& addTimed(const std::u32string& name, std::chrono::milliseconds duration)
    {
        test::ScriptedCommand& command = test::addCommand(console, name);
        command.onComplete = [this, duration](const ConsoleArgs&) {
            now += duration;
            return Words{U"a"};
        };
        return command;
    }

    Console console;
    std::chrono::steady_clock::time_point now;
    CompletionSource source{[this] { return now; }};
};

TEST_F(TheSource, AsksTheCommandOfTheLineForWhatCompletesItsLastWord)
{
    Words words;
    test::addCommand(console, U"cmd").onComplete = [&](const ConsoleArgs& args) {
        words = test::wordsOf(args);
        return Words{U"beta", U"alpha", U"beta"};
    };
    EXPECT_EQ((Words{U"beta", U"alpha", U"beta"}), ask(U"cmd \"a  b"));
    EXPECT_EQ((Words{U"cmd", U"\"a", U"", U"b"}), words);
    EXPECT_EQ(Words{}, ask(U"help "));
    EXPECT_EQ(std::nullopt, ask(U"none a"));
    EXPECT_EQ(std::nullopt, ask(U""));
}

TEST_F(TheSource, PassesOnNothingThatACommandThrows)
{
    test::ScriptedCommand& command = test::addCommand(console, U"cmd");
    command.onComplete = [](const ConsoleArgs&) -> Words { throw std::runtime_error("x"); };
    EXPECT_EQ(std::nullopt, ask(U"cmd "));
    command.onComplete = [](const ConsoleArgs&) -> Words { throw 42; };
    EXPECT_EQ(std::nullopt, ask(U"cmd "));
    command.onComplete = {};
    EXPECT_EQ(Words{}, ask(U"cmd "));
}

TEST_F(TheSource, RemembersWhichCommandTookLongerThan30Milliseconds)
{
    addTimed(U"quick", 30ms);
    addTimed(U"slow", 31ms);
    ask(U"quick ");
    ask(U"slow ");
    EXPECT_FALSE(source.isSlow(U"quick"));
    EXPECT_TRUE(source.isSlow(U"slow"));
    EXPECT_EQ(Words{U"a"}, ask(U"slow ")) << "whoever asks nonetheless";
}

TEST_F(TheSource, RemembersACommandThatThrowsLate)
{
    test::addCommand(console, U"cmd").onComplete = [this](const ConsoleArgs&) -> Words {
        now += 31ms;
        throw 42;
    };
    EXPECT_EQ(std::nullopt, ask(U"cmd "));
    EXPECT_TRUE(source.isSlow(U"cmd"));
}

/// Registers a command that changes the console while it is asked, and returns a life that ends with it.
std::weak_ptr<int> addChanging(Console& console, std::function<void()> change)
{
    const auto life = std::make_shared<int>(1);
    test::addCommand(console, U"cmd").onComplete = [life, change = std::move(change)](const ConsoleArgs&) {
        change();
        return Words(static_cast<std::size_t>(*life), U"a"); // reads what dies with the command
    };
    return life;
}

TEST_F(TheSource, KeepsACommandAliveThatRemovesItself)
{
    const auto life = addChanging(console, [&] { console.unregisterCommand(U"cmd"); });
    EXPECT_EQ(Words{U"a"}, ask(U"cmd "));
    EXPECT_TRUE(life.expired());
    EXPECT_EQ(std::nullopt, ask(U"cmd "));
}

TEST_F(TheSource, KeepsACommandAliveThatReplacesItself)
{
    const auto life = addChanging(console, [&] { test::addCommand(console, U"cmd"); });
    EXPECT_EQ(Words{U"a"}, ask(U"cmd "));
    EXPECT_TRUE(life.expired());
    EXPECT_EQ(Words{}, ask(U"cmd "));
}

TEST_F(TheSource, KeepsACommandAliveThatShutsTheConsoleDown)
{
    const auto life = addChanging(console, [&] { console.shutdown(); });
    EXPECT_EQ(Words{U"a"}, ask(U"cmd "));
    EXPECT_TRUE(life.expired());
}

#ifdef __GLIBCXX__ // whose pthread_exit() unwinds the stack

void* askLeaving(void*)
{
    Console console;
    CompletionSource source(&std::chrono::steady_clock::now);
    test::addCommand(console, U"leave").onComplete = [](const ConsoleArgs&) -> Words {
        pthread_exit(nullptr);
    };
    source.ask(console, U"leave ");
    return console.isOpen() ? nullptr : &console; // never reached
}

TEST(ACompletion, MayEndItsThread)
{
    pthread_t thread = {};
    ASSERT_EQ(0, pthread_create(&thread, nullptr, &askLeaving, nullptr));
    void* result = &thread;
    ASSERT_EQ(0, pthread_join(thread, &result));
    EXPECT_EQ(nullptr, result);
}

#endif

} // namespace
} // namespace zephyr::console::qt
