#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_PLAINLINES_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_PLAINLINES_H

#include "terminal/LineEditor.h"
#include "terminal/LineSource.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <optional>

namespace zephyr::console::remote {

/// Lines of a pipe, a file or what else isn't edited. One is delivered each time that the event loop has done
/// everything else. Standard error has a word about a line of more than 1 MiB, which is left out, and about the first
/// failure to print, unless nobody reads any more.
class PlainLines : public QObject, public LineSource
{
public:
    /// Reads `in`, unless `reads` is false.
    PlainLines(std::FILE* in, std::FILE* out, LineCallbacks callbacks, bool reads);

    void setHistoryFile(const QString&) override {}
    void print(const QString& text) override;
    void setPromptShown(bool shown) override;
    bool isInteractive() const override { return false; }

private:
    void takeTurn();
    void read();
    void deliver(const QByteArray& line);
    void end();
    std::optional<QByteArray> nextLine();
    std::optional<QByteArray> takeUpTo(qsizetype end);

    int mIn;
    std::FILE* mOut;
    LineCallbacks mCallbacks;
    bool mIsShown = true;
    bool mIsDelivering = false;
    bool mIsAtEnd = false;       // of the input
    bool mHasEnded = false;      // as the host was told
    bool mHasComplained = false; // of output that can't be written
    bool mIsSkipping = false;    // the rest of a line that is too long
    QByteArray mBytes;
    qsizetype mBegin = 0;                       // of the line that comes next
    std::unique_ptr<QSocketNotifier> mReadable; // null for a file, which always is
    QTimer mTurn;
};

} // namespace zephyr::console::remote

#endif
