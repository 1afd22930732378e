#include "terminal/LineHistory.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QLockFile>
#include <QSaveFile>

#include <chrono>

namespace zephyr::console::remote {

namespace {

constexpr int kMaxLines = 1000;
constexpr qint64 kMaxBytes = qint64{16} << 20;      // of a file that is looked at
constexpr std::chrono::milliseconds kLockTime{200}; // nobody waits longer for another program
constexpr QFileDevice::Permissions kForTheUser = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Keeps other programs from the file while it is read, appended to or cut. One that waits too long goes on without.
class FileLock
{
public:
    explicit FileLock(const QString& path) : mLock(path + ".lock"), mIsHeld(mLock.tryLock(kLockTime)) {}

    bool isHeld() const { return mIsHeld; }

private:
    QLockFile mLock;
    bool mIsHeld;
};

/// The lines of the file's end that is looked at; the first may be a part of one.
QList<QByteArray> linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    if (file.size() > kMaxBytes) {
        file.seek(file.size() - kMaxBytes);
    }
    QList<QByteArray> lines = file.read(kMaxBytes).split('\n');
    lines.removeAll({});
    return lines;
}

void replaceLines(const QString& path, const QList<QByteArray>& lines)
{
    const QByteArray bytes = lines.join('\n') + '\n';
    QSaveFile file(path);
    // Without a buffer, as what is left in one when the disk is full is lost without a word.
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        file.setPermissions(kForTheUser);
        if (file.write(bytes) == bytes.size()) {
            file.commit();
        }
    }
}

} // namespace

LineHistory::LineHistory() : mHistory(history_winit(), history_wend)
{
    HistEventW event{};
    history_w(mHistory.get(), &event, H_SETSIZE, kMaxLines);
    history_w(mHistory.get(), &event, H_SETUNIQUE, 1);
}

void LineHistory::setFile(const QString& path)
{
    mPath.clear();
    const QFileInfo info(path);
    if (path.isEmpty() || (info.exists() && !info.isFile())) { // a FIFO may keep its reader for ever
        return;
    }
    QDir().mkpath(info.absolutePath());
    mPath = path;
    const FileLock lock(path);
    QList<QByteArray> lines = linesOf(path);
    if (lines.size() > kMaxLines) {
        lines.remove(0, lines.size() - kMaxLines);
        if (lock.isHeld()) {
            replaceLines(path, lines);
        }
    }
    for (const QByteArray& line : lines) {
        enter(QString::fromUtf8(line).toStdWString());
    }
}

void LineHistory::add(const std::wstring& line)
{
    if (!line.empty() && enter(line) && !mPath.isEmpty()) {
        append(line);
    }
}

/// \return whether the line was added, that is, isn't the newest one.
bool LineHistory::enter(const std::wstring& line)
{
    HistEventW event{};
    // Where one has been looked at, "the same as before" would mean the same as that one.
    history_w(mHistory.get(), &event, H_FIRST);
    return history_w(mHistory.get(), &event, H_ENTER, line.c_str()) == 1;
}

void LineHistory::append(const std::wstring& line) const
{
    [[maybe_unused]] const FileLock lock(mPath);
    QFile file(mPath);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered, kForTheUser)) {
        file.setPermissions(kForTheUser);
        file.write((QString::fromStdWString(line) + u'\n').toUtf8()); // in one call, so that lines stay whole
    }
}

} // namespace zephyr::console::remote
