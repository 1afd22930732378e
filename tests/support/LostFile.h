#ifndef ZEPHYR_TESTS_SUPPORT_LOSTFILE_H
#define ZEPHYR_TESTS_SUPPORT_LOSTFILE_H

#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zephyr::test {

/// A file that can be read until it is lost, and whose reading then fails, also for who has it open. It is the command
/// line of a process, which Linux shows as a file.
class LostFile
{
public:
    /// The file begins with a line that is a comment, and goes on with `text`, of less than 128 kB.
    explicit LostFile(const std::string& text)
    {
        EXPECT_EQ(pipe2(mPipe, O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, mPipe[0], STDIN_FILENO);
        // "//" stands where the program's name does. The process waits for the end of the pipe.
        std::string words[] = {"//", "-c", "read line", "\n" + text};
        char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
        EXPECT_EQ(posix_spawn(&mProcess, "/bin/sh", &actions, nullptr, arguments, nullptr), 0);
        posix_spawn_file_actions_destroy(&actions);
        close(mPipe[0]);
        // The process may be running before it has its words.
        waitUntil("the file's contents", [&] { return contents().find(text) != std::string::npos; });
    }

    ~LostFile() { lose(); }

    LostFile(const LostFile&) = delete;
    LostFile& operator=(const LostFile&) = delete;

    std::filesystem::path path() const
    {
        return std::filesystem::path("/proc") / std::to_string(mProcess) / "cmdline";
    }

    /// Loses the file, if it isn't lost yet. To read it is then the error `std::errc::no_such_process`.
    void lose()
    {
        if (!mIsLost) {
            mIsLost = true;
            close(mPipe[1]);
            while (waitpid(mProcess, nullptr, 0) < 0 && errno == EINTR) {
            }
        }
    }

private:
    std::string contents() const
    {
        std::ifstream file(path());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    int mPipe[2] = {-1, -1};
    pid_t mProcess = 0;
    bool mIsLost = false;
};

} // namespace zephyr::test

#endif
