#ifndef ZEPHYR_CONSOLE_COMMANDS_VALUERULES_H
#define ZEPHYR_CONSOLE_COMMANDS_VALUERULES_H

#include "zephyr/console/commands/detail/LimitData.h"
#include "zephyr/console/commands/detail/ValueType.h"

#include <memory>
#include <string>
#include <vector>

namespace zephyr::console::commands {

/// What a value must be like, with its type: reads words, says what is wrong with them, and what is expected.
class ValueRules
{
public:
    /// \param type the type of the values, which must outlive the rules.
    /// \param limits the limits, with values that are read here.
    /// \param label what errors call the value: "speed" or "/heading".
    /// Throws `std::invalid_argument` for limits that the type can't have.
    ValueRules(const detail::ValueType& type, const detail::LimitData& limits, std::u32string label);

    const std::u32string& label() const { return mLabel; }
    const detail::ValueType& type() const { return *mType; }

    /// Reads `text` into a `std::optional<T>`. Throws ArgumentError.
    void read(const std::u32string& text, void* optional) const;

    /// Throws ArgumentError if read() would refuse `text`.
    void checkText(const std::u32string& text) const;

    /// What to add to the complaint that `next` is too many behind `word`: that they need quotes, if they would be one value
    /// then and nothing is quoted yet; otherwise an empty text.
    std::u32string hintToQuote(const std::u32string& word, const std::u32string& next) const;

    /// Throws ArgumentError if `value` breaks a limit. `text` is how it was written.
    void check(const std::u32string& text, const void* value) const;

    /// Throws `std::invalid_argument` if `text` is no value, or one that breaks a limit.
    void checkDefault(const std::u32string& text) const;

    /// What a user is to give: "a number from 0 to 60 m/s", "on or off".
    const std::u32string& expected() const { return mExpected; }

    /// What stands for a value in usage: "NUMBER", or "on|off" where those are all that there is.
    std::u32string placeholder() const;

    /// `text`, a value, with its unit.
    std::u32string withUnit(const std::u32string& text) const;

    /// What Tab may offer where `typed` stands: whole values, not only those that begin so.
    std::vector<std::u32string> candidates(const std::u32string& typed) const;

private:
    using Owned = std::shared_ptr<const void>;

    template <typename Read>
    void readAndCheck(const std::u32string& text, const Read& read) const;
    Owned make(const std::u32string& text, const char* what) const;
    void refuseOutOfRange(const std::u32string& text, bool isBelow) const;
    void checkRange(const std::u32string& text, const void* value) const;
    bool isChoice(const std::u32string& text, const void* value) const;
    std::vector<std::u32string> onlyValues() const;
    std::u32string describe() const;
    [[noreturn]] void refuse(const std::u32string& text, const std::u32string& what) const;

    const detail::ValueType* mType;
    detail::LimitData mLimits;
    std::u32string mLabel;
    Owned mLowest;
    Owned mHighest;
    std::vector<Owned> mChoices;
    std::u32string mExpected;
};

} // namespace zephyr::console::commands

#endif
