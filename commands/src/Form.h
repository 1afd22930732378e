#ifndef ZEPHYR_CONSOLE_COMMANDS_FORM_H
#define ZEPHYR_CONSOLE_COMMANDS_FORM_H

#include "ValueRules.h"
#include "zephyr/console/commands/Parameter.h"
#include "zephyr/console/commands/detail/Function.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::commands::detail {

/// A parameter of a form: how it is typed, what it must be like, and whether it must be there.
struct FormParameter
{
    Parameter described;
    Need need;
    ValueRules rules;

    bool isArgument() const { return described.form() == Parameter::Form::Argument; }
    bool isFlag() const { return described.form() == Parameter::Form::Flag; }

    /// Whether a word that begins with a slash may be for it.
    bool isSwitch() const { return isFlag() || described.isNamed(); }

    /// How it begins as a switch: `/name`, with `=` unless it is a flag.
    std::u32string switchHead() const { return U"/" + described.name() + (isFlag() ? U"" : U"="); }

    /// How it is typed by its name: `/speed=NUMBER`, `/mode=fast|slow`, `/loop`; empty if it can't be.
    std::u32string byName() const
    {
        return isSwitch() ? switchHead() + (isFlag() ? U"" : rules.placeholder()) : std::u32string();
    }

    /// Whether the function runs without it.
    bool canBeMissing() const;

    /// How usage shows it: `SPEED`, `[COUNT]`, `[WORD...]`, `/mode=fast|slow`, `[/loop]`.
    std::u32string usage() const;

    /// What is to be given: "a number from 0 to 60 m/s", "a flag".
    std::u32string expected() const { return isFlag() ? U"a flag" : rules.expected(); }

    /// What help says of it, in one line.
    std::u32string help() const;
};

/// A function under a command, or under the name of a sub-command, and how the words for it are typed.
struct Form
{
    /// Throws `std::invalid_argument` for parameters that don't suit the function.
    Form(std::u32string formName, std::u32string formDescription, Function function,
         std::vector<Parameter> described);

    std::u32string name; ///< Empty for the command's own function.
    std::u32string description;
    std::vector<FormParameter> parameters;
    std::function<void(Call&)> call;

    bool hasSwitches() const;

    /// The index of the option or flag with this name.
    std::optional<std::size_t> switchNamed(const std::u32string& switchName) const;

    /// The index of the parameter that takes the next word that is no switch, if one does: the first that isn't given yet,
    /// or the one that takes all words that are left. `isGiven` is called with an index.
    template <typename IsGiven>
    std::optional<std::size_t> nextArgument(const IsGiven& isGiven) const
    {
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            if (parameters[i].isArgument() && (parameters[i].need == Need::Rest || !isGiven(i))) {
                return i;
            }
        }
        return std::nullopt;
    }

    /// `command`, the form's name and its parameters.
    std::u32string usage(const std::u32string& command) const;

    /// One line for each parameter.
    std::vector<std::u32string> parameterHelp() const;
};

} // namespace zephyr::console::commands::detail

#endif
