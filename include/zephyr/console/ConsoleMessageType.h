#ifndef ZEPHYR_CONSOLE_CONSOLEMESSAGETYPE_H
#define ZEPHYR_CONSOLE_CONSOLEMESSAGETYPE_H

#include <cstdint>

namespace zephyr::console {

/// The kind of a log entry. It selects no colour: every entry is drawn in the console's one text colour.
enum ConsoleMessageType : std::uint32_t
{
    Input = 0,  ///< The echo of an executed line; the renderer draws the prompt in front of it.
    Output = 1, ///< Ordinary output, and the type of a line that is written without one.
    Prompt = 2, ///< A question to the user, such as the one that ConsoleCommand::execute() asks.
};

} // namespace zephyr::console

#endif
