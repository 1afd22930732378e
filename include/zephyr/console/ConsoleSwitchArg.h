#ifndef ZEPHYR_CONSOLE_CONSOLESWITCHARG_H
#define ZEPHYR_CONSOLE_CONSOLESWITCHARG_H

#include "zephyr/console/detail/Export.h"

#include <string>

namespace zephyr::console {

class ConsoleArgs;

/// One word of a line read as a switch: a slash, a name, and optionally an equals sign and a value.
///
/// It holds copies of the two parts without their double quotes; both are empty for a word that is no switch.
/// Whether the switch is known and its value makes sense is for the command to check. It is a plain value:
/// several threads may read one object at once.
///
/// | word | switchArg() | value() |
/// |---|---|---|
/// | `/path=C:\files` | `/path` | `C:\files` |
/// | `/path` or `/path=` | `/path` | empty |
/// | `/a=b=c` | `/a` | `b` |
/// | `/name="a=b"` | `/name` | `a=b` |
/// | `/"a=b"` | `/a=b` | empty |
/// | `path=x` or an empty word | empty | empty |
class ConsoleSwitchArg
{
public:
    /// Reads the word at `whichArg` (0-based, 0 is the command word). An index beyond the last word reports
    /// the assertion `whichArg < args.argCount()` and leaves both parts empty. `args` need not outlive the
    /// object.
    ZEPHYR_CONSOLE_EXPORT ConsoleSwitchArg(const ConsoleArgs& args, unsigned whichArg);

    /// The switch with its leading slash, empty when the word is no switch.
    ZEPHYR_CONSOLE_EXPORT const std::u32string& switchArg() const;

    /// The text between the first and the second equals sign outside quotes, empty when there is none.
    ZEPHYR_CONSOLE_EXPORT const std::u32string& value() const;

private:
    std::u32string mSwitchArg;
    std::u32string mValue;
};

} // namespace zephyr::console

#endif
