#ifndef ZEPHYR_TESTS_SUPPORT_UNPRIVILEGED_H
#define ZEPHYR_TESTS_SUPPORT_UNPRIVILEGED_H

#include "support/LogLine.h"
#include "zephyr/console/Console.h"

#include <filesystem>
#include <functional>
#include <iostream>
#include <utility>

#include <cstdlib>
#include <grp.h>
#include <unistd.h>

namespace zephyr::test {

/// Denies access to a file or directory to everybody but the superuser while it lives.
class Locked
{
public:
    explicit Locked(std::filesystem::path path)
        : mPath(std::move(path)), mBefore(std::filesystem::status(mPath).permissions())
    {
        std::filesystem::permissions(mPath, std::filesystem::perms::none);
    }

    ~Locked() { std::filesystem::permissions(mPath, mBefore); }

    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

private:
    std::filesystem::path mPath;
    std::filesystem::perms mBefore;
};

/// Runs `body` as a user who may write nothing here, then ends the process. For death tests. That user can read the
/// current directory, and can rely on relative paths only, since the directories above may be closed to him.
[[noreturn]] inline void runUnprivileged(const std::function<void()>& body)
{
    constexpr uid_t kNobody = 65534;
    constexpr int kStillPrivileged = 99;
    std::filesystem::permissions(".", std::filesystem::perms(0555)); // who isn't the superuser owns it
    // The groups go first: only the superuser can give them up.
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0)) {
        std::_Exit(kStillPrivileged);
    }
    body();
    std::_Exit(0);
}

/// Prints the texts of the log to standard error, one a line, for a death test to match.
inline void printLog(const console::Console& console)
{
    for (const LogLine& line : logLines(console)) {
        std::cerr << line.text << '\n';
    }
}

} // namespace zephyr::test

#endif
