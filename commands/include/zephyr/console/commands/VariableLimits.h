#ifndef ZEPHYR_CONSOLE_COMMANDS_VARIABLELIMITS_H
#define ZEPHYR_CONSOLE_COMMANDS_VARIABLELIMITS_H

#include "zephyr/console/commands/Limits.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console::commands {

/// What the values of a variable must be like, and how it is treated. Made by the functions below.
class VariableLimits : public Limits<VariableLimits>
{
public:
    VariableLimits() = default;

    /// A typed line can't change the variable; the program can.
    VariableLimits& readOnly()
    {
        mIsReadOnly = true;
        return *this;
    }

    /// `vars` neither lists nor offers the variable, and reference() leaves it out. A line may name it all the same, so the
    /// command `help` lists its name.
    VariableLimits& hidden()
    {
        mIsHidden = true;
        return *this;
    }

    /// Whether `vars save` writes the variable. It does unless this is called with false.
    VariableLimits& archived(bool isArchived)
    {
        mIsArchived = isArchived;
        return *this;
    }

    /// Whether readOnly() was called.
    bool isReadOnly() const { return mIsReadOnly; }

    /// Whether hidden() was called.
    bool isHidden() const { return mIsHidden; }

    /// What archived() said, or true.
    bool isArchived() const { return mIsArchived; }

private:
    bool mIsReadOnly = false;
    bool mIsHidden = false;
    bool mIsArchived = true;
};

/// Limits::between() of a variable.
template <typename Low, typename High>
VariableLimits between(const Low& lowest, const High& highest)
{
    return VariableLimits().between(lowest, highest);
}

/// Limits::atLeast() of a variable.
template <typename Low>
VariableLimits atLeast(const Low& lowest)
{
    return VariableLimits().atLeast(lowest);
}

/// Limits::atMost() of a variable.
template <typename High>
VariableLimits atMost(const High& highest)
{
    return VariableLimits().atMost(highest);
}

/// Limits::offers() of a variable.
template <typename... Offers>
VariableLimits offers(const Offers&... values)
{
    return VariableLimits().offers(values...);
}

/// Limits::candidates() of a variable.
inline VariableLimits candidates(std::function<std::vector<std::u32string>()> fn)
{
    return VariableLimits().candidates(std::move(fn));
}

/// Limits::choices() of a variable.
template <typename... Choices>
VariableLimits choices(const Choices&... values)
{
    return VariableLimits().choices(values...);
}

/// Limits::unit() of a variable.
inline VariableLimits unit(const std::u32string& text) { return VariableLimits().unit(text); }

/// Limits::check() of a variable.
template <typename Check>
VariableLimits check(Check isGood, const std::u32string& complaint)
{
    return VariableLimits().check(std::move(isGood), complaint);
}

/// VariableLimits::readOnly().
inline VariableLimits readOnly() { return VariableLimits().readOnly(); }

/// VariableLimits::hidden().
inline VariableLimits hidden() { return VariableLimits().hidden(); }

/// VariableLimits::archived().
inline VariableLimits archived(bool isArchived) { return VariableLimits().archived(isArchived); }

} // namespace zephyr::console::commands

#endif
