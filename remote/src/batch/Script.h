#ifndef ZEPHYR_CONSOLE_REMOTE_BATCH_SCRIPT_H
#define ZEPHYR_CONSOLE_REMOTE_BATCH_SCRIPT_H

#include "protocol/LineReader.h"
#include "protocol/Request.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>

class QFile;

namespace zephyr::console::remote {

/// The number of bytes that a line of a script may have. A byte becomes six in JSON at most, so a server takes it.
inline constexpr qsizetype kMaxScriptLineBytes = kMaxRequestBytes / 8;

/// A line of a script that is to be run.
struct ScriptLine
{
    qint64 number = 0; ///< Its place in the script, counted from 1.
    QString text;      ///< Without white space at both ends. Not empty.

    bool operator==(const ScriptLine&) const = default;
};

/// Cuts a script, which may come in pieces, into the lines that are to be run: those that aren't empty and don't begin
/// with `//` once white space (Unicode's, and U+FEFF) is taken off both ends. It is UTF-8; what is ill-formed becomes
/// U+FFFD. The last line needs no line feed.
class Script
{
public:
    /// \param limit the number of bytes that a line may have.
    explicit Script(qsizetype limit = kMaxScriptLineBytes) : mReader(limit) {}

    /// Adds what was read.
    void add(const QByteArray& bytes) { mReader.add(bytes); }

    /// Ends the script: what is there is all of it.
    void end();

    /// Takes the next line that is to be run; nothing if none is whole, or one beyond the limit comes first.
    std::optional<ScriptLine> next();

    /// Whether the line that comes next is too long. No more lines can be taken.
    bool isOverLimit() const { return mReader.isOverLimit(); }

    /// The number of lines that were taken or skipped; the next line's number is one more.
    qint64 lineCount() const { return mLineCount; }

private:
    LineReader mReader;
    qint64 mLineCount = 0;
};

/// Opens a script's file to be read. \return why it can't be, a sentence that names the file; nothing on success.
std::optional<QString> openScript(QFile& file);

} // namespace zephyr::console::remote

#endif
