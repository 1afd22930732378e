#ifndef ZEPHYR_CONSOLE_COMMANDS_PARAMETER_H
#define ZEPHYR_CONSOLE_COMMANDS_PARAMETER_H

#include "zephyr/console/commands/Limits.h"

#include <optional>
#include <string>

namespace zephyr::console::commands {

/// One parameter of a command's function, as the user sees it: made by argument(), option() or flag(). The parameters are
/// given in the function's order. A parameter that none is given for is an argument with the name of its type.
class Parameter : public Limits<Parameter>
{
public:
    /// How a parameter is typed.
    enum class Form
    {
        Argument, ///< As a word, by its place.
        Option,   ///< As `/name=value`, anywhere.
        Flag      ///< As `/name`, anywhere.
    };

    /// See argument(), option() and flag().
    Parameter(Form form, std::u32string name, std::u32string description)
        : mForm(form), mName(std::move(name)), mDescription(std::move(description))
    {}

    /// The value that the function gets when the user gives none.
    template <typename T>
    Parameter& byDefault(const T& value)
    {
        mDefault = detail::textOf(value);
        return *this;
    }

    /// An argument may be typed as `/name=value` too, in place of the word.
    Parameter& orByName()
    {
        mIsNamed = true;
        return *this;
    }

    /// Whether it may be typed as `/name=value`.
    bool isNamed() const { return mIsNamed || mForm == Form::Option; }

    /// How it is typed.
    Form form() const { return mForm; }

    /// Its name, without a slash.
    const std::u32string& name() const { return mName; }

    /// What help says of it, which may be empty.
    const std::u32string& description() const { return mDescription; }

    /// The text of its default, if there is one.
    const std::optional<std::u32string>& defaultText() const { return mDefault; }

private:
    Form mForm;
    bool mIsNamed = false;
    std::u32string mName;
    std::u32string mDescription;
    std::optional<std::u32string> mDefault;
};

/// A word, by its place among the words that are no switches. A `std::optional<T>` may be left out, and a
/// `std::vector<T>` takes all words that are left.
inline Parameter argument(std::u32string name, std::u32string description = {})
{
    return {Parameter::Form::Argument, std::move(name), std::move(description)};
}

/// `/name=value`, anywhere in the line. It must be there, unless it is a `std::optional<T>` or has a default.
inline Parameter option(std::u32string name, std::u32string description = {})
{
    return {Parameter::Form::Option, std::move(name), std::move(description)};
}

/// `/name`, anywhere in the line, for a bool: whether it is there.
inline Parameter flag(std::u32string name, std::u32string description = {})
{
    return {Parameter::Form::Flag, std::move(name), std::move(description)};
}

} // namespace zephyr::console::commands

#endif
