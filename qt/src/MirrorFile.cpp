#include "MirrorFile.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>

#include <csignal>
#endif

#include <cstddef>

namespace zephyr::console::qt {

MirrorFile::MirrorFile(const QString& name) : mFile(name) {}

#ifdef Q_OS_UNIX
bool MirrorFile::open()
{
    constexpr mode_t kMode = 0666; // less what the process masks
    // O_NONBLOCK is for opening only: a named pipe without a reader is an error then, and not a wait for one.
    const int descriptor = ::open(QFile::encodeName(mFile.fileName()).constData(),
                                  O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, kMode);
    if (descriptor < 0) {
        return false;
    }
    ::fcntl(descriptor, F_SETFL, 0);
    return mFile.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
}
#else
bool MirrorFile::open()
{
    return mFile.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}
#endif

bool MirrorFile::write(std::string_view text)
{
    while (!text.empty()) {
        const qint64 size = mFile.write(text.data(), static_cast<qint64>(text.size()));
        if (size <= 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(size)); // the rest fails with a reason
    }
    return true;
}

void blockWriteSignals()
{
#ifdef Q_OS_UNIX
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGPIPE); // the reader of a pipe is gone
    sigaddset(&blocked, SIGXFSZ); // the file is as large as the process may make one
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
#endif
}

} // namespace zephyr::console::qt
