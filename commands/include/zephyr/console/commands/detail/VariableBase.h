#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_VARIABLEBASE_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_VARIABLEBASE_H

#include <functional>
#include <string>

namespace zephyr::console::commands::detail {

/// The value of a variable as texts.
class VariableBase
{
public:
    virtual ~VariableBase() = default;

    VariableBase(const VariableBase&) = delete;
    VariableBase& operator=(const VariableBase&) = delete;
    VariableBase(VariableBase&&) = delete;
    VariableBase& operator=(VariableBase&&) = delete;

    /// The value, as it is read.
    virtual std::u32string text() const = 0;

    /// The default, as it is read.
    virtual std::u32string defaultText() const = 0;

    /// Makes what `read` puts into a `std::optional<T>` the value. `read` throws what is wrong with it.
    virtual void setFrom(const std::function<void(void* optional)>& read) = 0;

    /// Makes the default the value.
    virtual void reset() = 0;

protected:
    VariableBase() = default;
};

} // namespace zephyr::console::commands::detail

#endif
