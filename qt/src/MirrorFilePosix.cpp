#include "MirrorFile.h"

#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>

namespace zephyr::console::qt {

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

void blockWriteSignals()
{
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGPIPE); // the reader of a pipe is gone
    sigaddset(&blocked, SIGXFSZ); // the file is as large as the process may make one
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
}

} // namespace zephyr::console::qt
