#include "KeyDelivery.h"

#include "support/ConsoleDriver.h"
#include "support/ScriptedCommand.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/RunConsoleFileCommand.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <Qt>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <pthread.h>

namespace zephyr::console::qt {
namespace {

#ifdef __GLIBCXX__ // whose pthread_exit() unwinds the stack

/// A thread that runs the command `leave`, which ends the thread.
struct LeavingThread
{
    Console console;
    int caught = 0;
    bool goesOn = false;
    bool isUnwound = false;

    static void* run(void* self)
    {
        static_cast<LeavingThread*>(self)->pressReturn();
        return nullptr;
    }

    void pressReturn()
    {
        struct Unwound
        {
            bool& isUnwound;
            ~Unwound() { isUnwound = true; }
        };
        const Unwound unwound{isUnwound};
        KeyDelivery keys([this](const QString&) { ++caught; });
        keys.press(console, Qt::Key_Return, Qt::NoModifier, {});
        goesOn = true;
    }
};

TEST(KeyDelivery, LetsACommandEndItsThread)
{
    LeavingThread leaving;
    test::addCommand(leaving.console, U"leave").onExecute = [&](const ConsoleArgs&, Console&) {
        pthread_exit(&leaving);
    };
    leaving.console.open();
    KeyDelivery keys([](const QString&) {});
    keys.press(leaving.console, 0, Qt::NoModifier, U"leave");
    const std::size_t before = leaving.console.logSize();

    pthread_t thread = {};
    ASSERT_EQ(0, pthread_create(&thread, nullptr, &LeavingThread::run, &leaving));
    void* result = nullptr;
    ASSERT_EQ(0, pthread_join(thread, &result));

    EXPECT_EQ(&leaving, result) << "what the command passed on";
    EXPECT_FALSE(leaving.goesOn);
    EXPECT_TRUE(leaving.isUnwound);
    EXPECT_EQ(0, leaving.caught);
    EXPECT_EQ(before + 1, leaving.console.logSize()) << "the echo alone";
}

#endif

TEST(KeyDelivery, TellsOfWhatACommandThrows)
{
    Console console;
    test::addCommand(console, U"fail").onExecute = [](const ConsoleArgs&, Console&) { throw 42; };
    console.open();
    QStringList caught;
    KeyDelivery keys([&](const QString& line) { caught.push_back(line); });
    keys.press(console, 0, Qt::NoModifier, U"fail");
    keys.press(console, Qt::Key_Return, Qt::NoModifier, {});
    EXPECT_EQ(QStringList("The console caught an exception: unknown exception"), caught);
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kStackFactor = 8; // the sanitizers make each function's frame larger
#else
constexpr std::size_t kStackFactor = 1;
#endif

/// A thread with a stack of 512 kB, on which an alias and a console file lead back to themselves.
struct SmallThread
{
    test::TemporaryDirectory directory;
    std::vector<std::string> log;

    static void* run(void* self)
    {
        static_cast<SmallThread*>(self)->runLines();
        return nullptr;
    }

    void runLines()
    {
        Console console;
        console.setDepthLimit(ConsoleHost::kDefaultDepthLimit);
        console.registerCommand(std::make_unique<RunConsoleFileCommand>());
        console.appendRunpath(directory.path());
        console.execute(U"alias again \"again\"");
        console.open();
        KeyDelivery keys([](const QString&) {});
        for (const std::u32string& line : {std::u32string(U"again"), std::u32string(U"run loop")}) {
            keys.press(console, 0, Qt::NoModifier, line);
            keys.press(console, Qt::Key_Return, Qt::NoModifier, {});
            keys.press(console, Qt::Key_QuoteLeft, Qt::NoModifier, {});
            keys.press(console, Qt::Key_QuoteLeft, Qt::NoModifier, {});
        }
        log = test::ConsoleDriver(console).log();
    }
};

TEST(KeyDelivery, EndsWhatLeadsBackToItselfOnAStackOf512KB)
{
    SmallThread thread;
    std::ofstream(thread.directory.path() / "loop.console") << "run loop\n";
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, kStackFactor * 512 * 1024));
    pthread_t id{};
    ASSERT_EQ(0, pthread_create(&id, &attributes, &SmallThread::run, &thread));
    pthread_join(id, nullptr);
    pthread_attr_destroy(&attributes);
    const auto refused = [&](const std::string& line) {
        return std::count(thread.log.begin(), thread.log.end(),
                          "'" + line + "' was not run: lines are nested deeper than the limit of 64.");
    };
    EXPECT_EQ(1, refused("again"));
    EXPECT_EQ(1, refused("run loop"));
}

} // namespace
} // namespace zephyr::console::qt
