#ifndef ZEPHYR_CONSOLE_QT_MIRRORFILE_H
#define ZEPHYR_CONSOLE_QT_MIRRORFILE_H

#include <QFile>
#include <QString>

#include <string_view>

namespace zephyr::console::qt {

/// The file that a mirror of the log is written to. Its functions may block for as long as a disk hangs, or until the
/// reader of a named pipe reads.
class MirrorFile
{
public:
    explicit MirrorFile(const QString& name);
    virtual ~MirrorFile() = default;

    MirrorFile(const MirrorFile&) = delete;
    MirrorFile& operator=(const MirrorFile&) = delete;

    /// Creates the file, or empties it. \return false if that isn't possible. A named pipe must have a reader already.
    virtual bool open();

    /// Passes `text` to the system, which keeps it even if the program crashes. \return false if errorString() says why
    /// it was not taken, or not all of it.
    virtual bool write(std::string_view text);

    /// Why the last write() failed.
    QString errorString() const { return mFile.errorString(); }

private:
    QFile mFile;
};

/// Keeps the signals from the calling thread that the system sends with a failed write and that would end the program.
void blockWriteSignals();

} // namespace zephyr::console::qt

#endif
