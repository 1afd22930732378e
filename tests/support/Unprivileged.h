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

/// While it lives, nobody but the superuser gets at a file or into a directory.
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

/// Runs `body` as a user who owns nothing, then ends the process: for death tests. That user may read the
/// current directory and reaches files by relative paths only, since what is above it may be closed.
[[noreturn]] inline void runUnprivileged(const std::function<void()>& body)
{
    constexpr uid_t kNobody = 65534;
    constexpr int kStillPrivileged = 99;
    std::filesystem::permissions(".", std::filesystem::perms(0755));
    // The groups go first: without the user's rights they can't be given up any more.
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0)) {
        std::_Exit(kStillPrivileged);
    }
    body();
    std::_Exit(0);
}

/// Prints the texts of the log, one a line, where a death test looks.
inline void printLog(const console::Console& console)
{
    for (const LogLine& line : logLines(console)) {
        std::cerr << line.text << '\n';
    }
}

} // namespace zephyr::test

#endif
