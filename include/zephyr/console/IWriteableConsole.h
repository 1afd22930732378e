#ifndef ZEPHYR_CONSOLE_IWRITEABLECONSOLE_H
#define ZEPHYR_CONSOLE_IWRITEABLECONSOLE_H

#include "zephyr/console/ConsoleMessageType.h"
#include "zephyr/console/detail/Export.h"

#include <string>

namespace zephyr::console {

/// What can be written to, line by line: the face of a Console that writers need and nothing more.
///
/// - It is: an abstract interface without data. It is not: a way to read the log, to run lines or to draw.
/// - Threads: as the implementation says; Console takes these calls from any thread.
/// - Ownership: texts are copied; the caller keeps what it passes.
/// - Failure: nothing is reported; memory exhaustion leaves as `std::bad_alloc`.
///
/// 8-bit text is UTF-8; each ill-formed part of it becomes one U+FFFD. A text is one line of the log,
/// whatever it holds: line feeds stay in it and are split only when it is drawn.
class ZEPHYR_CONSOLE_EXPORT IWriteableConsole
{
public:
    ZEPHYR_CONSOLE_NO_EXPORT virtual ~IWriteableConsole() = 0;

    /// Appends `text` (UTF-8) as one line of the given type with indent 0.
    virtual void write(const std::string& text, ConsoleMessageType type) = 0;

    /// Appends `text` (code points) as one line of the given type with indent 0.
    virtual void write(const std::u32string& text, ConsoleMessageType type) = 0;

    /// Appends `indent` spaces followed by `text` (UTF-8) as one line of the given type.
    virtual void writeIndented(const std::string& text, ConsoleMessageType type, unsigned indent) = 0;

    /// Appends `indent` spaces followed by `text` (UTF-8) as one line of type Output.
    virtual void writeIndented(const std::string& text, unsigned indent) = 0;

    /// Appends `indent` spaces followed by `text` (code points) as one line of the given type.
    virtual void writeIndented(const std::u32string& text, ConsoleMessageType type, unsigned indent) = 0;

    /// Appends `indent` spaces followed by `text` (code points) as one line of type Output.
    virtual void writeIndented(const std::u32string& text, unsigned indent) = 0;

    /// Appends an empty line of type Output.
    virtual void newline() = 0;
};

inline IWriteableConsole::~IWriteableConsole() = default;

} // namespace zephyr::console

#endif
