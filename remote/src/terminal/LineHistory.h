#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_LINEHISTORY_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_LINEHISTORY_H

#include <QString>

#include <histedit.h>

#include <memory>
#include <string>

namespace zephyr::console::remote {

/// The lines that were entered, 1,000 at most, in memory and in a file of one line each in UTF-8. Several programs
/// may keep theirs in one file, whose lines come in the order in which they were entered.
class LineHistory
{
public:
    LineHistory();

    /// Adds the file's newest lines, and appends to it from now on what add() adds. Cuts it to 1,000 lines if it has
    /// more. A file that isn't there is made, for the user alone; one that can't be used is none.
    void setFile(const QString& path);

    /// Adds a line, unless it is empty or equals the one before.
    void add(const std::wstring& line);

    /// For EL_HIST. It stays the history's.
    HistoryW* handle() const { return mHistory.get(); }

private:
    bool enter(const std::wstring& line);
    void append(const std::wstring& line) const;

    std::unique_ptr<HistoryW, void (*)(HistoryW*)> mHistory;
    QString mPath;
};

} // namespace zephyr::console::remote

#endif
