#ifndef ZEPHYR_CONSOLE_REMOTE_PROTOCOL_LINEREADER_H
#define ZEPHYR_CONSOLE_REMOTE_PROTOCOL_LINEREADER_H

#include <QByteArray>
#include <QtGlobal>

#include <optional>

namespace zephyr::console::remote {

/// Cuts what comes over a connection, in pieces of any size, into lines.
class LineReader
{
public:
    /// \param limit the number of bytes that a line may have, without its line feed.
    explicit LineReader(qsizetype limit) : mLimit(limit) {}

    /// Adds what came. O(number of bytes).
    void add(const QByteArray& bytes) { mBytes += bytes; }

    /// Takes the next line, without its line feed; nothing if none is whole.
    std::optional<QByteArray> next();

    /// Whether the line that comes next is longer than the limit. next() never returns it.
    bool isOverLimit() const;

    /// Whether a line has begun that isn't whole.
    bool hasRest() const { return mBegin < mBytes.size(); }

private:
    qsizetype lineEnd() const;

    qsizetype mLimit;
    QByteArray mBytes;
    qsizetype mBegin = 0;            // of the line that comes next
    mutable qsizetype mSearched = 0; // bytes of that line in which no line feed is
};

} // namespace zephyr::console::remote

#endif
