#include "HistoryStore.h"

#include "HistoryText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

#include <algorithm>
#include <chrono>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr qint64 kMostBytes = 64 << 20;             // of a file that may be a history
constexpr qsizetype kMostLineBytes = 64 << 10;      // of a line that is read or written
constexpr std::chrono::milliseconds kLockTime{300}; // until the lock file must be free
constexpr QFileDevice::Permissions kOwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

const char* const kNoFile = "It is no ordinary file";
const char* const kTooLarge = "It is larger than 64 MB";
const char* const kLocked = "Another program holds its lock file";
const char* const kNoFolder = "Its folder doesn't exist";
const char* const kNoLock = "Its lock file can't be created";

/// Why `lock` could not lock the file at `path`.
const char* whyNotLocked(const QLockFile& lock, const QString& path)
{
    if (lock.error() == QLockFile::LockFailedError) {
        return kLocked;
    }
    return QFileInfo(path).dir().exists() ? kNoLock : kNoFolder;
}

/// `lines` as text for the file.
QByteArray joined(const QByteArrayList& lines) { return lines.join('\n') + '\n'; }

/// Where a part of `text` fits, the rest fails with a reason.
bool writeAll(QFileDevice& file, QByteArray text)
{
    while (!text.isEmpty()) {
        const qint64 written = file.write(text);
        if (written <= 0) {
            return false;
        }
        text.remove(0, static_cast<qsizetype>(written)); // of `text`, so it fits
    }
    return true;
}

} // namespace

HistoryStore::HistoryStore(QString name, std::size_t maxLines)
    : mName(std::move(name)), mMaxLines(std::max<std::size_t>(1, maxLines))
{}

QString HistoryStore::read(std::vector<std::u32string>& lines) const
{
    Contents contents;
    if (QString error = load(path(), contents); !error.isNull()) {
        return error;
    }
    contents.lines.removeIf([](const QByteArray& line) { return line.size() > kMostLineBytes; });
    contents.lines.erase(std::unique(contents.lines.begin(), contents.lines.end()), contents.lines.end());
    const auto size = static_cast<std::size_t>(contents.lines.size());
    for (std::size_t i = size - std::min(size, mMaxLines); i < size; ++i) {
        lines.push_back(unescapedLine(contents.lines[static_cast<qsizetype>(i)].toStdString()));
    }
    return {};
}

QString HistoryStore::append(const std::vector<std::u32string>& lines) const
{
    const QString file = path();
    QLockFile lock(file + ".lock");
    if (!lock.tryLock(kLockTime)) {
        return whyNotLocked(lock, file);
    }
    Contents contents;
    if (QString error = load(file, contents); !error.isNull()) {
        return error;
    }
    const qsizetype sizeBefore = contents.lines.size();
    for (const std::u32string& line : lines) {
        const QByteArray text = QByteArray::fromStdString(escapedLine(line));
        const bool isRepeated = !contents.lines.isEmpty() && contents.lines.back() == text;
        if (!text.isEmpty() && text.size() <= kMostLineBytes && !isRepeated) {
            contents.lines.push_back(text);
        }
    }
    const auto maxLines = static_cast<qsizetype>(mMaxLines);
    if (contents.lines.size() == sizeBefore) {
        return {};
    }
    if (contents.lines.size() > maxLines) {
        return replace(file, joined(contents.lines.mid(contents.lines.size() - maxLines)));
    }
    return add(file, (contents.endsLine ? "" : "\n") + joined(contents.lines.mid(sizeBefore)));
}

/// The file's own path: programs that reach it by different links must use the same lock file.
QString HistoryStore::path() const
{
    const QString path = QFileInfo(mName).canonicalFilePath();
    return path.isEmpty() ? mName : path;
}

QString HistoryStore::load(const QString& path, Contents& contents)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return {};
    }
    if (!info.isFile()) { // nothing must be read from a device or a pipe
        return kNoFile;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return file.errorString();
    }
    const QByteArray text = file.read(kMostBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        return file.errorString();
    }
    if (text.size() > kMostBytes) {
        return kTooLarge;
    }
    for (QByteArray& line : text.split('\n')) {
        if (line.endsWith('\r')) { // from an editor; one of the line's own would be escaped
            line.chop(1);
        }
        if (!line.isEmpty()) {
            contents.lines.push_back(std::move(line));
        }
    }
    contents.endsLine = text.isEmpty() || text.endsWith('\n');
    return {};
}

QString HistoryStore::add(const QString& path, QByteArray text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered, kOwnerOnly)) {
        return file.errorString();
    }
    const qint64 sizeBefore = file.size();
    if (writeAll(file, std::move(text))) {
        return {};
    }
    QString error = file.errorString();
    file.resize(sizeBefore); // half a line would be read as one
    return error;
}

QString HistoryStore::replace(const QString& path, const QByteArray& text)
{
    QSaveFile file(path);
    // Without a buffer, since commit() takes no notice of what it can't write of that.
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, text) && file.commit()) {
        return {};
    }
    return file.errorString();
}

} // namespace zephyr::console::qt
