#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_CALL_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_CALL_H

#include "zephyr/console/commands/Answer.h"
#include "zephyr/console/commands/detail/Export.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::commands::detail {

struct Form;
struct SortedWords;

/// One call of a command: its words, given one parameter after the other, and its answer. The functions that read throw
/// what is wrong with a word.
class Call
{
public:
    /// The objects must outlive the call.
    Call(const Form& form, SortedWords& words, Answer& answer, Console& console)
        : mForm(form), mWords(words), mAnswer(answer), mConsole(console)
    {}

    /// Reads the next parameter into a `std::optional<T>`, which stays empty if there is no word for it and need be none.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT void read(void* optional);

    /// Reads a word of the last parameter, which takes all that are left, into a `std::optional<T>`. \return false if none
    /// is left.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT bool readOneMore(void* optional);

    Answer& answer() { return mAnswer; }
    Console& console() { return mConsole; }

private:
    const Form& mForm;
    SortedWords& mWords;
    Answer& mAnswer;
    Console& mConsole;
    std::size_t mParameter = 0;
};

} // namespace zephyr::console::commands::detail

#endif
