#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_LIMITDATA_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_LIMITDATA_H

#include "zephyr/console/commands/detail/Signature.h"
#include "zephyr/console/commands/detail/ValueType.h"

#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace zephyr::console::commands::detail {

/// A condition that a host sets.
struct CheckData
{
    const ValueType* type;
    std::function<bool(const void* value)> isGood;
    std::u32string complaint;
};

/// What Limits says, with its values as texts, since the type isn't known yet.
struct LimitData
{
    std::optional<std::u32string> lowest;
    std::optional<std::u32string> highest;
    std::vector<std::u32string> choices;
    std::u32string unit;
    std::vector<CheckData> checks;
    std::vector<std::u32string> offers;
    std::function<std::vector<std::u32string>()> candidates;
};

/// Whether a function can be a check.
template <typename Fn, bool = Signature<Fn>::kIsKnown>
struct IsCheck : std::false_type
{};

template <typename Fn>
struct IsCheck<Fn, true> : HasValue<typename Signature<Fn>::Only>
{};

} // namespace zephyr::console::commands::detail

#endif
