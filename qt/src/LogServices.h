#ifndef ZEPHYR_CONSOLE_QT_LOGSERVICES_H
#define ZEPHYR_CONSOLE_QT_LOGSERVICES_H

#include "LastAnswer.h"

#include <QString>

#include <cstddef>
#include <memory>
#include <vector>

namespace zephyr::console {
struct LogEntry;
}

namespace zephyr::console::qt {

class ConsoleLender;
class LogMirror;
class QtMessageLog;

/// What a host may ask for around the log: copies on the clipboard, a mirror in a file, Qt's messages.
class LogServices
{
public:
    explicit LogServices(std::shared_ptr<ConsoleLender> console);
    ~LogServices();

    LogServices(const LogServices&) = delete;
    LogServices& operator=(const LogServices&) = delete;

    /// Copies the whole log to the clipboard.
    void copyLog() const;

    /// Copies the last answer to the clipboard, if there is one.
    void copyLastAnswer() const;

    /// The answer that copyLastAnswer() copies.
    LastAnswer& lastAnswer() { return mLastAnswer; }

    /// Ends the mirror, and starts one in the file `fileName` unless that is empty. \return whether the log could be
    /// written so far.
    bool mirrorLog(const QString& fileName);

    /// Starts or ends writing Qt's messages into the log.
    void captureQtMessages(bool capture);

    /// Ends what goes on by itself: the mirror and Qt's messages.
    void end();

private:
    const std::shared_ptr<ConsoleLender> mConsole;
    LastAnswer mLastAnswer;
    std::unique_ptr<LogMirror> mMirror;
    std::unique_ptr<QtMessageLog> mMessages;
};

} // namespace zephyr::console::qt

#endif
