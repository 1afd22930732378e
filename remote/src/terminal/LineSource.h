#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_LINESOURCE_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_LINESOURCE_H

#include <QString>

namespace zephyr::console::remote {

/// One of a LineEditor's ways to get lines. What LineEditor says of each function holds.
class LineSource
{
public:
    LineSource() = default;
    virtual ~LineSource() = default;

    LineSource(const LineSource&) = delete;
    LineSource& operator=(const LineSource&) = delete;

    virtual void setHistoryFile(const QString& path) = 0;
    virtual void print(const QString& text) = 0;
    virtual void setPromptShown(bool shown) = 0;
    virtual bool isInteractive() const = 0;
};

} // namespace zephyr::console::remote

#endif
