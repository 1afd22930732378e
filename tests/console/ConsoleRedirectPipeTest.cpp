#include "support/TemporaryDirectory.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

namespace zephyr::console {
namespace {

/// Whether the thread with this number sleeps in the kernel.
bool isAsleepNow(pid_t thread)
{
    std::ifstream stat("/proc/self/task/" + std::to_string(thread) + "/stat");
    std::string field;
    for (int i = 0; i < 3; ++i) {
        stat >> field;
    }
    return field == "S";
}

/// Whether it sleeps for longer than one that waits for a lock.
bool isAsleep(pid_t thread)
{
    constexpr int kLooks = 100;
    int looks = 0;
    while (looks < kLooks && isAsleepNow(thread)) {
        ++looks;
    }
    return looks == kLooks;
}

TEST(ConsoleRedirectPipe, LetsOtherThreadsWriteAndLookWhileNobodyReadsThePipe)
{
    const test::TemporaryDirectory directory;
    const std::filesystem::path pipe = directory.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    Console console;
    const pid_t host = gettid();
    std::size_t seen = 0;
    std::string received;
    std::thread other([&] {
        while (console.logSize() < 3 ||
               !isAsleep(host)) { // until the line is echoed and the target is being opened
            std::this_thread::yield();
        }
        console.write(U"from another thread", Output);
        seen = console.snapshot().lines().size();
        std::ifstream reader(pipe);
        received.assign(std::istreambuf_iterator<char>(reader), {});
    });
    console.execute(U"help alias > " + StringUtil::toU32String(pipe.string()));
    other.join();
    EXPECT_EQ(seen, 4U);
    EXPECT_EQ(console.snapshot().lines()[3].text, U"from another thread");
    EXPECT_EQ(received, "") << "a command without arguments writes nothing, and the other line came before";
}

TEST(ConsoleRedirectPipe, GetsTheOutputOnceSomebodyReads)
{
    const test::TemporaryDirectory directory;
    const std::filesystem::path pipe = directory.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    Console console;
    std::string received;
    std::thread reader([&] {
        std::ifstream stream(pipe);
        received.assign(std::istreambuf_iterator<char>(stream), {});
    });
    console.execute(U"help > " + StringUtil::toU32String(pipe.string()));
    reader.join();
    EXPECT_EQ(received, "Registered Commands:\n    alias\n    help\n\nAliases:\n");
}

} // namespace
} // namespace zephyr::console
