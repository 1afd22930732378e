#include "KeyDelivery.h"

#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <gtest/gtest.h>

#ifdef __GLIBCXX__
#include <pthread.h>
#endif

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

} // namespace
} // namespace zephyr::console::qt
