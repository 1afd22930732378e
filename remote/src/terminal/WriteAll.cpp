#include "terminal/WriteAll.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <string_view>

#include <poll.h>
#include <unistd.h>

namespace zephyr::console::remote {

namespace {

/// Keeps this thread's writes from raising SIGPIPE. One that was there before stays.
class NoPipeSignal
{
public:
    NoPipeSignal()
    {
        sigemptyset(&mPipe);
        sigaddset(&mPipe, SIGPIPE);
        sigset_t pending{};
        sigpending(&pending);
        mWasPending = sigismember(&pending, SIGPIPE) == 1;
        ::pthread_sigmask(SIG_BLOCK, &mPipe, &mBefore);
    }

    ~NoPipeSignal()
    {
        const timespec now{};
        while (!mWasPending && sigtimedwait(&mPipe, nullptr, &now) == -1 && errno == EINTR) {
        }
        ::pthread_sigmask(SIG_SETMASK, &mBefore, nullptr);
    }

    NoPipeSignal(const NoPipeSignal&) = delete;
    NoPipeSignal& operator=(const NoPipeSignal&) = delete;

private:
    sigset_t mPipe{};
    sigset_t mBefore{};
    bool mWasPending = false;
};

void waitUntilWritable(int descriptor)
{
    pollfd wanted{descriptor, POLLOUT, 0};
    ::poll(&wanted, 1, -1);
}

int writeTo(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            waitUntilWritable(descriptor);
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

} // namespace

int writeAll(std::FILE* out, const QByteArray& bytes)
{
    const NoPipeSignal noSignal;
    std::fflush(out); // where that fails, the rest does too
    return writeTo(::fileno(out), {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

} // namespace zephyr::console::remote
