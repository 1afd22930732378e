#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_ENTRYPRINTER_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_ENTRYPRINTER_H

#include "protocol/Entry.h"

#include <QString>

#include <cstdio>

namespace zephyr::console::remote {

/// The text on a terminal that can't make the terminal do anything: `^[` for escape, U+FFFD for the control
/// characters from U+0080 to U+009F. Tabs and line feeds stay.
QString harmless(const QString& text);

/// Writes entries of a log as a user reads them, with the prompt in front of input. What it does depends on the
/// stream:
///
/// | | a terminal | a file or a pipe |
/// |---|---|---|
/// | control characters | harmless() | as they are: who reads a file wants what the log has |
/// | colours | input bold, questions yellow; none with a `NO_COLOR` that isn't empty or with `TERM=dumb` | none |
class EntryPrinter
{
public:
    /// Prints to `out`, which must outlive it.
    explicit EntryPrinter(std::FILE* out);

    /// The entry as it is printed, without the line feed at its end. For LineEditor::print().
    QString text(const Entry& entry) const;

    /// Prints the entry in UTF-8, with a line feed. \return false if the stream takes no more, as a closed pipe.
    bool print(const Entry& entry);

private:
    std::FILE* mOut;
    bool mIsTerminal;
    bool mHasColours;
};

} // namespace zephyr::console::remote

#endif
