#ifndef ZEPHYR_CONSOLE_COMMANDS_COMMAND_H
#define ZEPHYR_CONSOLE_COMMANDS_COMMAND_H

#include "zephyr/console/commands/Answer.h"
#include "zephyr/console/commands/Durations.h"
#include "zephyr/console/commands/Failure.h"
#include "zephyr/console/commands/Parameter.h"
#include "zephyr/console/commands/Registration.h"
#include "zephyr/console/commands/detail/Function.h"

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console::commands {

/// A command as it is described before add() adds it: functions of its own, and how their parameters are typed. See
/// command().
class Command
{
public:
    /// See command().
    ZEPHYR_CONSOLE_COMMANDS_EXPORT Command(std::u32string name, std::u32string description);

    /// Copies the description, and the functions with it.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT Command(const Command& other);

    /// Takes over the description. The other may only be assigned to or destroyed then.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT Command(Command&& other) noexcept;

    /// As the copying constructor.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT Command& operator=(const Command& other);

    /// As the moving constructor.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT Command& operator=(Command&& other) noexcept;

    ZEPHYR_CONSOLE_COMMANDS_EXPORT ~Command();

    /// Makes `fn` run for the word `name` after the command's. Parameters and throws as run(). A name that was given before,
    /// one that can't be typed, and `Usage`, which heads the command's help, throw `std::invalid_argument`.
    template <typename Fn, typename... Parameters>
    Command& sub(std::u32string name, std::u32string description, Fn&& fn, const Parameters&... parameters)
    {
        return describe(std::move(name), std::move(description), std::forward<Fn>(fn), parameters...);
    }

    /// Makes `fn` run where no sub-command is named. Its parameters are words: `parameters` says how each is typed, in
    /// order. An `Answer&` or a `Console&` among them takes none. What it returns is written: a text, a value, a range of
    /// them, or an optional one.
    ///
    /// Throws `std::invalid_argument` for a description that doesn't suit the function; its text names the command.
    template <typename Fn, typename... Parameters>
    Command& run(Fn&& fn, const Parameters&... parameters)
    {
        return describe(std::u32string(), std::u32string(), std::forward<Fn>(fn), parameters...);
    }

private:
    friend ZEPHYR_CONSOLE_COMMANDS_EXPORT Added add(Console& console, Command command);

    struct Data;

    template <typename Fn, typename... Parameters>
    Command& describe(std::u32string&& name, std::u32string&& description, Fn&& fn,
                      const Parameters&... parameters)
    {
        using Kept = std::decay_t<Fn>;
        if constexpr (detail::canBeCommand<Kept, sizeof...(Parameters)>()) {
            addForm(std::move(name), std::move(description),
                    detail::makeFunction(std::forward<Fn>(fn), typename detail::Signature<Kept>::Takes()),
                    {parameters...});
        } else {
            static_assert(
                !std::is_same_v<Kept, Kept>,
                "This function can't be a command: it must be a function or function object that can be "
                "copied, with one signature, whose parameters are "
                "values that Value<T> reads, std::optional or std::vector of them, Answer& or "
                "Console&, a result that can be written, and no more parameters described than it "
                "has.");
        }
        return *this;
    }

    ZEPHYR_CONSOLE_COMMANDS_EXPORT void addForm(std::u32string name, std::u32string description,
                                                detail::Function function, std::vector<Parameter> parameters);

    std::unique_ptr<Data> mData;
};

/// A command with this name and a description, one sentence for help, that does nothing yet:
///
///     add(console, command(U"wind", U"The wind over the field.")
///         .sub(U"set", U"Sets speed and heading.",
///              [&](double speed, std::optional<double> heading) { field.setWind(speed, heading); },
///              argument(U"speed").between(0, 60).unit(U"m/s"), option(U"heading").between(0, 360))
///         .sub(U"show", U"Shows the wind.", [&](Answer& answer) { answer << "Wind: " << field.speed() << " m/s"; }));
///
/// A parameter decides by its type how its word is read. Words that are wrong are answered by a line that names the
/// parameter and by the usage, and nothing has run then. Throws `std::invalid_argument` for a name that can't be typed: an
/// empty one, or one with a blank or a quote.
inline Command command(std::u32string name, std::u32string description)
{
    return Command(std::move(name), std::move(description));
}

/// Registers a command, in place of one that has the name already. \return what a Registration can be made of; without one
/// the command stays.
///
/// The functions run on the console's thread. They are destroyed with the command; a plugin removes its commands before
/// it is unloaded.
ZEPHYR_CONSOLE_COMMANDS_EXPORT Added add(Console& console, Command command);

/// Registers a command without sub-commands: `fn` runs as Command::run() says.
template <typename Fn, typename... Parameters>
Added add(Console& console, std::u32string name, std::u32string description, Fn&& fn,
          const Parameters&... parameters)
{
    Command made(std::move(name), std::move(description));
    made.run(std::forward<Fn>(fn), parameters...);
    return add(console, std::move(made));
}

} // namespace zephyr::console::commands

#endif
