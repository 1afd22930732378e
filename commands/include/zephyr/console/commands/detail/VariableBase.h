#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_VARIABLEBASE_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_VARIABLEBASE_H

#include <string>

namespace zephyr::console::commands::detail {

/// Reads a word into a variable of a type that only the header knows.
class WordReader
{
public:
    /// Reads the word into a `std::optional<T>`. Throws what is wrong with it.
    virtual void read(void* optional) const = 0;

protected:
    ~WordReader() = default;
};

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

    /// Makes what `word` reads the value.
    virtual void setFrom(const WordReader& word) = 0;

    /// Makes the default the value.
    virtual void reset() = 0;

protected:
    VariableBase() = default;
};

} // namespace zephyr::console::commands::detail

#endif
