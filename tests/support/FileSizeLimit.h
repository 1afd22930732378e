#ifndef ZEPHYR_TESTS_SUPPORT_FILESIZELIMIT_H
#define ZEPHYR_TESTS_SUPPORT_FILESIZELIMIT_H

#include <csignal>
#include <cstddef>

#include <sys/resource.h>

namespace zephyr::test {

/// Limits the size of the files that this process writes while it lives, as a full disk would.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(std::size_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &mBefore);
        rlimit limited = mBefore;
        limited.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limited);
        mHandlerBefore = std::signal(SIGXFSZ, SIG_IGN); // otherwise the signal ends the process
    }

    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &mBefore);
        std::signal(SIGXFSZ, mHandlerBefore);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit mBefore{};
    void (*mHandlerBefore)(int) = nullptr;
};

} // namespace zephyr::test

#endif
