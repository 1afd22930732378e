#ifndef ZEPHYR_CONSOLE_IWRITEABLECONSOLE_H
#define ZEPHYR_CONSOLE_IWRITEABLECONSOLE_H

#include "zephyr/console/ConsoleMessageType.h"
#include "zephyr/console/detail/Export.h"

#include <string>

namespace zephyr::console {

/// The part of a Console that writers need: it appends lines to the log, and can neither read the log nor run lines.
///
/// Any thread may call a Console's writers at any time; another implementation makes its own rule. Texts are copied.
/// Every function may throw `std::bad_alloc`.
///
/// 8-bit text is UTF-8, and each ill-formed part of it becomes one U+FFFD. Each text becomes one entry of the log, even
/// if it contains line feeds: it is divided into lines only when it is drawn.
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
