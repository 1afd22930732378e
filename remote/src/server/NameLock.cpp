#include "server/NameLock.h"

#include <QFile>

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zephyr::console::remote {

namespace {

constexpr mode_t kMode = 0600;

/// Whether the file that was opened is still the one at `path`: who held it before may have removed it meanwhile.
bool isAt(const QByteArray& path, int file)
{
    struct stat opened = {};
    struct stat there = {};
    return fstat(file, &opened) == 0 && lstat(path.constData(), &there) == 0 &&
           opened.st_ino == there.st_ino && opened.st_dev == there.st_dev;
}

QString systemError() { return QString::fromStdString(std::generic_category().message(errno)); }

} // namespace

NameLock::NameLock(const QString& path) : mPath(path)
{
    while (!tryOnce()) {
    }
}

/// \return false if the file was removed meanwhile, and all is to be tried again.
bool NameLock::tryOnce()
{
    const QByteArray path = QFile::encodeName(mPath);
    const int file = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kMode);
    if (file < 0) {
        mError = systemError();
        return true;
    }
    if (flock(file, LOCK_EX | LOCK_NB) != 0) {
        mIsTaken = errno == EWOULDBLOCK;
        mError = mIsTaken ? QString() : systemError();
        close(file);
        return true;
    }
    if (!isAt(path, file)) {
        close(file);
        return false;
    }
    mFile = file;
    return true;
}

NameLock::~NameLock()
{
    if (isHeld()) {
        QFile::remove(mPath); // before it is let go of, or it could be another's
        close(mFile);
    }
}

} // namespace zephyr::console::remote
