#ifndef ZEPHYR_CONSOLE_QT_HISTORYSTORE_H
#define ZEPHYR_CONSOLE_QT_HISTORYSTORE_H

#include <QByteArrayList>
#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console::qt {

/// A file that keeps the newest lines of a history, which several programs may use at once. Its functions may block for
/// as long as a disk hangs, and throw `std::bad_alloc`.
///
/// The file has a line for each of the history's, oldest first, as escapedLine() writes it. Who writes it holds the
/// lock file beside it, whose name ends in ".lock", so that nothing of anybody's is lost.
class HistoryStore
{
public:
    /// The file `name` is to have `maxLines` lines at most, and has one at least.
    HistoryStore(QString name, std::size_t maxLines);
    virtual ~HistoryStore() = default;

    HistoryStore(const HistoryStore&) = delete;
    HistoryStore& operator=(const HistoryStore&) = delete;

    /// Reads the newest lines, oldest first and without a line that equals the one before. A file that isn't there has
    /// none. \return why it can't be read, or a null string.
    virtual QString read(std::vector<std::u32string>& lines) const;

    /// Adds `lines` at the end but for each that equals the one before, and drops the oldest ones that are too many.
    /// \return why that isn't possible, or a null string. A file that could be written in part is as it was.
    virtual QString append(const std::vector<std::u32string>& lines) const;

private:
    /// What the file holds.
    struct Contents
    {
        QByteArrayList lines; // none of them empty
        bool endsLine = true; // whether a line feed ends the last one
    };

    QString path() const;
    static QString load(const QString& path, Contents& contents);
    static QString add(const QString& path, QByteArray text);
    static QString replace(const QString& path, const QByteArray& text);

    const QString mName;
    const std::size_t mMaxLines;
};

} // namespace zephyr::console::qt

#endif
