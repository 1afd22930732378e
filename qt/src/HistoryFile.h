#ifndef ZEPHYR_CONSOLE_QT_HISTORYFILE_H
#define ZEPHYR_CONSOLE_QT_HISTORYFILE_H

#include <QString>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

class ConsoleLender;
class HistoryStore;
class HistoryWriter;

/// Keeps a console's history in a file: adds the file's lines to the history where that doesn't have them, and to the
/// file each line that is typed.
/// The first thing that goes wrong is one line in the log. In a process that fork() made, it does nothing. For the
/// host's thread.
class HistoryFile
{
public:
    /// Calls `notify`, on any thread, when catchUp() is to be called.
    HistoryFile(std::shared_ptr<ConsoleLender> console, std::function<void()> notify);
    ~HistoryFile();

    HistoryFile(const HistoryFile&) = delete;
    HistoryFile& operator=(const HistoryFile&) = delete;

    /// Ends what was begun before, and keeps the history in `store`, which is called `name`. Throws `std::bad_alloc`,
    /// or `std::system_error` if there can be no thread. An observer may destroy this object meanwhile.
    /// \return whether the file was read.
    bool start(const QString& name, std::unique_ptr<HistoryStore> store);

    /// Writes what is still missing, and ends. An observer may destroy this object meanwhile.
    void end();

    /// Must be called before Enter is pressed in the console.
    void noteLine(const Console& console);

    /// Must be called after Enter was pressed: writes the line if the console recorded it.
    void keepLine(const Console& console);

    /// Adds the lines to the history that were read since, and logs what went wrong since. An observer may destroy
    /// this object meanwhile.
    void catchUp();

private:
    /// The line that runs.
    struct RunningLine
    {
        std::u32string text;
        std::size_t record; // that it gets in the history if it is recorded
    };

    bool isWriting() const;
    void addLines(Console& console);
    void tryReport(const std::shared_ptr<HistoryWriter>& writer);

    const std::shared_ptr<ConsoleLender> mConsole;
    const std::function<void()> mNotify;
    std::shared_ptr<HistoryWriter> mWriter;
    std::unique_ptr<std::thread> mThread;
    QString mName;
    bool mIsReported = false;
    std::optional<RunningLine> mRunning;
};

} // namespace zephyr::console::qt

#endif
