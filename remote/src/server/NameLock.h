#ifndef ZEPHYR_CONSOLE_REMOTE_SERVER_NAMELOCK_H
#define ZEPHYR_CONSOLE_REMOTE_SERVER_NAMELOCK_H

#include <QString>

namespace zephyr::console::remote {

/// Holds a name for a process. The system lets go of it when the process ends, in whatever way, so that a name that is
/// held belongs to a program that is running.
class NameLock
{
public:
    /// Tries to hold the name whose lock file is `path`, in a folder that is the user's alone, and doesn't wait.
    explicit NameLock(const QString& path);

    /// Lets go of the name, and removes the file.
    ~NameLock();

    NameLock(const NameLock&) = delete;
    NameLock& operator=(const NameLock&) = delete;
    NameLock(NameLock&&) = delete;
    NameLock& operator=(NameLock&&) = delete;

    /// Whether this object holds the name.
    bool isHeld() const { return mFile >= 0; }

    /// Whether somebody else holds it.
    bool isTaken() const { return mIsTaken; }

    /// Why neither is the case, in the system's words; empty otherwise.
    const QString& error() const { return mError; }

private:
    bool tryOnce();

    QString mPath;
    int mFile = -1; // descriptor
    bool mIsTaken = false;
    QString mError;
};

} // namespace zephyr::console::remote

#endif
