#ifndef ZEPHYR_CONSOLE_COMMANDS_LIMITS_H
#define ZEPHYR_CONSOLE_COMMANDS_LIMITS_H

#include "zephyr/console/commands/detail/LimitData.h"

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console::commands {

/// What a value must be like, for a parameter of a command or a variable. Each function returns the object, so that calls
/// stand in a row. Values may be of any type that the parameter's type can read: `between(0, 60)` suits a double.
///
/// A limit that doesn't suit the type, such as a range of a type without an order, is a mistake in the program:
/// add() and Variable's constructor throw `std::invalid_argument` for it.
template <typename Self>
class Limits
{
public:
    /// Allows values from `lowest` to `highest`, both included.
    template <typename Low, typename High>
    Self& between(const Low& lowest, const High& highest)
    {
        mData.lowest = detail::textOf(lowest);
        mData.highest = detail::textOf(highest);
        return self();
    }

    /// Allows values of `lowest` and above.
    template <typename Low>
    Self& atLeast(const Low& lowest)
    {
        mData.lowest = detail::textOf(lowest);
        return self();
    }

    /// Allows values of `highest` and below.
    template <typename High>
    Self& atMost(const High& highest)
    {
        mData.highest = detail::textOf(highest);
        return self();
    }

    /// Allows these values only. Tab offers them.
    template <typename... Choices>
    Self& choices(const Choices&... values)
    {
        mData.choices = {detail::textOf(values)...};
        return self();
    }

    /// The unit that texts show behind the value; it isn't typed.
    Self& unit(const std::u32string& text)
    {
        mData.unit = text;
        return self();
    }

    /// Allows the values for which `isGood` returns true. `complaint` ends the sentence for others: "is unlucky" makes
    /// "speed: 13 is unlucky.". The function's parameter must have the type of the value.
    template <typename Check>
    Self& check(Check isGood, const std::u32string& complaint)
    {
        if constexpr (detail::IsCheck<Check>::value && std::is_copy_constructible_v<Check>) {
            using Checked = typename detail::Signature<Check>::Only;
            mData.checks.push_back({&detail::kValueType<Checked>,
                                    [isGood = std::move(isGood)](const void* value) {
                                        return static_cast<bool>(isGood(*static_cast<const Checked*>(value)));
                                    },
                                    complaint});
        } else {
            static_assert(!std::is_same_v<Check, Check>,
                          "A check must have one signature, with one value that Value<T> reads, and must be "
                          "copyable.");
        }
        return self();
    }

    /// Values that Tab offers, beside what the type offers; others are allowed too.
    template <typename... Offers>
    Self& offers(const Offers&... values)
    {
        mData.offers = {detail::textOf(values)...};
        return self();
    }

    /// As offers(), but asks each time: texts, each a whole value.
    Self& candidates(std::function<std::vector<std::u32string>()> fn)
    {
        mData.candidates = std::move(fn);
        return self();
    }

    /// What was said so far. For the library.
    const detail::LimitData& data() const { return mData; }

protected:
    Limits() = default;

    /// For the classes that add to what can be said.
    detail::LimitData mData;

private:
    Self& self() { return static_cast<Self&>(*this); }
};

} // namespace zephyr::console::commands

#endif
