#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_VALUETYPE_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_VALUETYPE_H

#include "zephyr/console/commands/Value.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace zephyr::console::commands::detail {

/// How two values lie to each other.
enum class Comparison
{
    Less,
    Equal,
    Greater,
    Unordered ///< As "not a number" to any other. Not "None", which is a macro of X11.
};

/// What the library knows of a type of values without being compiled for it.
struct ValueType
{
    const std::type_info* id; ///< Of T. Modules agree on it, and not on the addresses of their descriptions.
    std::u32string_view name;
    std::u32string_view example; ///< Empty if there is none.
    bool onlyCandidates;         ///< Whether the candidates are all that there is.
    bool isBool;
    bool isPath;

    /// Reads into a `std::optional<T>`. \return the value in it, or null.
    const void* (*read)(const std::u32string& text, void* optional);

    /// A value of its own, or null if `text` is none.
    std::shared_ptr<const void> (*make)(const std::u32string& text);

    /// Null if T has no order.
    Comparison (*compare)(const void* left, const void* right);

    /// Null if T has neither an order nor an equality.
    bool (*equal)(const void* left, const void* right);

    /// Null if there are none.
    std::vector<std::u32string> (*candidates)(const std::u32string& typed);
};

template <typename T, typename = void>
struct HasValue : std::false_type
{};

template <typename T>
struct HasValue<T, std::void_t<decltype(Value<T>::kName)>> : std::true_type
{};

template <typename T>
const void* readInto(const std::u32string& text, void* optional)
{
    auto& value = *static_cast<std::optional<T>*>(optional);
    value = Value<T>::read(text);
    return value ? &*value : nullptr;
}

template <typename T>
std::shared_ptr<const void> makeValue(const std::u32string& text)
{
    auto value = Value<T>::read(text);
    return value ? std::shared_ptr<const void>(new T(std::move(*value)),
                                               [](const void* p) { delete static_cast<const T*>(p); })
                 : nullptr;
}

template <typename T, typename = void>
struct HasEquality : std::false_type
{};

template <typename T>
struct HasEquality<T, std::void_t<decltype(bool(std::declval<const T&>() == std::declval<const T&>()))>>
    : std::true_type
{};

template <typename T>
Comparison compare(const void* left, const void* right)
{
    const T& l = *static_cast<const T*>(left);
    const T& r = *static_cast<const T*>(right);
    if (l < r) {
        return Comparison::Less;
    }
    if (r < l) {
        return Comparison::Greater;
    }
    if constexpr (HasEquality<T>::value) {
        return l == r ? Comparison::Equal : Comparison::Unordered;
    } else {
        return Comparison::Equal;
    }
}

template <typename T, typename = void>
struct Order
{
    static constexpr Comparison (*kCompare)(const void*, const void*) = nullptr;
};

template <typename T>
struct Order<T, std::void_t<decltype(bool(std::declval<const T&>() < std::declval<const T&>()))>>
{
    static constexpr Comparison (*kCompare)(const void*, const void*) = &compare<T>;
};

template <typename T>
bool equal(const void* left, const void* right)
{
    return *static_cast<const T*>(left) == *static_cast<const T*>(right);
}

template <typename T>
bool equalByOrder(const void* left, const void* right)
{
    return compare<T>(left, right) == Comparison::Equal;
}

using EqualFn = bool (*)(const void* left, const void* right);

template <typename T>
constexpr EqualFn equalityOf()
{
    if constexpr (HasEquality<T>::value) {
        return &equal<T>;
    } else if constexpr (Order<T>::kCompare != nullptr) {
        return &equalByOrder<T>;
    } else {
        return nullptr;
    }
}

template <typename T, typename = void>
struct HasCandidates : std::false_type
{};

template <typename T>
struct HasCandidates<T, std::void_t<decltype(Value<T>::candidates())>> : std::true_type
{};

template <typename T, typename = void>
struct HasTypedCandidates : std::false_type
{};

template <typename T>
struct HasTypedCandidates<T, std::void_t<decltype(Value<T>::candidates(std::u32string()))>> : std::true_type
{};

using CandidatesFn = std::vector<std::u32string> (*)(const std::u32string& typed);

template <typename T>
std::vector<std::u32string> allCandidates(const std::u32string&)
{
    return Value<T>::candidates();
}

template <typename T>
constexpr CandidatesFn candidatesOf()
{
    if constexpr (HasTypedCandidates<T>::value) {
        return &Value<T>::candidates;
    } else if constexpr (HasCandidates<T>::value) {
        return &allCandidates<T>;
    } else {
        return nullptr;
    }
}

template <typename T, typename = void>
inline constexpr bool kOnlyCandidates = false;

template <typename T>
inline constexpr bool kOnlyCandidates<T, std::void_t<decltype(Value<T>::kOnlyCandidates)>> =
    Value<T>::kOnlyCandidates;

template <typename T>
constexpr bool onlyCandidatesOf()
{
    static_assert(!kOnlyCandidates<T> || HasCandidates<T>::value || HasTypedCandidates<T>::value,
                  "A Value<T> with kOnlyCandidates must have candidates().");
    return kOnlyCandidates<T>;
}

template <typename T, typename = void>
inline constexpr std::u32string_view kExample{};

template <typename T>
inline constexpr std::u32string_view kExample<T, std::void_t<decltype(Value<T>::kExample)>> =
    Value<T>::kExample;

/// The description of T, the same object for each use in a module.
template <typename T>
inline constexpr ValueType kValueType{&typeid(T),
                                      Value<T>::kName,
                                      kExample<T>,
                                      onlyCandidatesOf<T>(),
                                      std::is_same_v<T, bool>,
                                      std::is_same_v<T, std::filesystem::path>,
                                      &readInto<T>,
                                      &makeValue<T>,
                                      Order<T>::kCompare,
                                      equalityOf<T>(),
                                      candidatesOf<T>()};

/// The text of a value that a program gives, such as a default: a text as it is, and other values as they are written.
inline std::u32string textOf(std::u32string_view text) { return std::u32string(text); }

template <typename T, std::enable_if_t<!std::is_convertible_v<const T&, std::u32string_view>, int> = 0>
std::u32string textOf(const T& value)
{
    if constexpr (std::is_convertible_v<const T&, std::string_view>) {
        return Value<std::string>::write(std::string(std::string_view(value)));
    } else if constexpr (HasValue<T>::value) {
        return Value<T>::write(value);
    } else {
        static_assert(HasValue<T>::value,
                      "A default, a limit, a choice or an offer must be a text, or a value "
                      "of a type that Value<T> writes.");
        return {};
    }
}

} // namespace zephyr::console::commands::detail

#endif
