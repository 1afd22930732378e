#ifndef ZEPHYR_CONSOLE_COMMANDS_ANSWER_H
#define ZEPHYR_CONSOLE_COMMANDS_ANSWER_H

#include "zephyr/console/commands/detail/Export.h"
#include "zephyr/console/commands/detail/ValueType.h"

#include <string>
#include <string_view>
#include <type_traits>

namespace zephyr::console {
class IWriteableConsole;
}

namespace zephyr::console::commands {

/// What a command answers, as a stream of lines. A command gets one by taking an `Answer&`.
///
///     add(console, U"lamp", U"Shows the lamp.", [&](Answer& answer) {
///         answer << "The lamp is " << lamp.isOn() << ",\nat " << lamp.watts() << " W.";
///     });
///
/// Texts are written as they are (8-bit ones in UTF-8), and values as Value::write() says. A line feed ends a line, which
/// then stands in the log at once; the end of the command ends the last one. For the console's thread, during the call.
class Answer
{
public:
    /// Writes to `console`, which must outlive the answer.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT explicit Answer(IWriteableConsole& console);

    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;
    Answer(Answer&&) = delete;
    Answer& operator=(Answer&&) = delete;
    ~Answer() = default;

    /// Adds `value` to the line.
    template <typename T>
    Answer& operator<<(const T& value)
    {
        if constexpr (std::is_convertible_v<const T&, std::u32string_view>) {
            append(std::u32string_view(value));
        } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
            append(std::string_view(value));
        } else if constexpr (std::is_same_v<T, char>) {
            append(std::string_view(&value, 1));
        } else if constexpr (detail::HasValue<T>::value) {
            append(std::u32string_view(Value<T>::write(value)));
        } else {
            static_assert(detail::HasValue<T>::value,
                          "An answer takes texts, and values of a type that Value<T> writes.");
        }
        return *this;
    }

    /// Ends the line, if it has begun.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT void flush();

private:
    ZEPHYR_CONSOLE_COMMANDS_EXPORT void append(std::u32string_view text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT void append(std::string_view text);

    IWriteableConsole& mConsole;
    std::u32string mLine;
    bool mHasBegun = false;
};

} // namespace zephyr::console::commands

#endif
