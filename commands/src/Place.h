#ifndef ZEPHYR_CONSOLE_COMMANDS_PLACE_H
#define ZEPHYR_CONSOLE_COMMANDS_PLACE_H

#include <memory>
#include <string>

namespace zephyr::console {
class Console;
class ConsoleCommand;
} // namespace zephyr::console

namespace zephyr::console::commands::detail {

/// Where a command was registered. The command owns it, and so the console lives while it does.
struct Place
{
    Console* console;
    const ConsoleCommand* command;
    std::u32string name;
};

/// A command that knows its place.
class Placed
{
public:
    /// Called once, when the command is registered. \return its place.
    std::weak_ptr<const Place> setPlace(Console& console, const ConsoleCommand& command,
                                        const std::u32string& name)
    {
        mPlace = std::make_shared<const Place>(Place{&console, &command, name});
        return mPlace;
    }

private:
    std::shared_ptr<const Place> mPlace;
};

} // namespace zephyr::console::commands::detail

#endif
