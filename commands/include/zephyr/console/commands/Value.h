#ifndef ZEPHYR_CONSOLE_COMMANDS_VALUE_H
#define ZEPHYR_CONSOLE_COMMANDS_VALUE_H

#include "zephyr/console/commands/detail/Export.h"
#include "zephyr/console/commands/detail/Numbers.h"

#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console::commands {

/// How values of the type T are read and written. A host specialises it for a type of its own:
///
/// - `static constexpr std::u32string_view kName`: what a value is, for usage and errors: "colour".
/// - `static std::optional<T> read(const std::u32string& text)`: the value of one word without its quotes. Nothing, and
///   the user reads that the word is not a colour; or fail() with a sentence of its own, such as "300 is above 255.".
/// - `static std::u32string write(const T& value)`: the text that read() turns into the very same value.
/// - `static std::vector<std::u32string> candidates()`, which may be left out: what Tab offers. It may take what is
///   typed so far as a `const std::u32string&`.
/// - `static constexpr std::u32string_view kExample`, which may be left out: "#ff0000", for what has a form of its own.
/// - `static constexpr bool kOnlyCandidates = true`, which may be left out: there are no values but the candidates.
///
/// A type with an `operator<` can have a range. Ready are bool, all integers and floating-point types, char32_t,
/// std::u32string, std::string in UTF-8, std::filesystem::path, enumerations with names, std::chrono durations in
/// Durations.h, and the types of Qt and GLM in QtValues.h and GlmValues.h.
template <typename T, typename = void>
struct Value;

/// A value of an enumeration, and the word for it. The enumeration is ready for commands when a function
/// `std::vector<EnumName<E>> enumNames(E)` stands in its namespace, which names each value once.
template <typename E>
using EnumName = std::pair<E, std::u32string>;

/// `on`, `off`, `true`, `false`, `1` or `0`.
template <>
struct Value<bool>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"switch";
    static constexpr bool kOnlyCandidates = true;
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<bool> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(bool value);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::vector<std::u32string> candidates();
    /// \endcond
};

/// Whole numbers in decimal digits. What T can't hold is refused.
template <typename T>
struct Value<T, std::enable_if_t<detail::kIsInteger<T>>>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"whole number";

    static std::optional<T> read(const std::u32string& text)
    {
        using Limits = std::numeric_limits<T>;
        if constexpr (std::is_signed_v<T>) {
            const auto value = detail::readSigned(text, Limits::min(), Limits::max());
            return value ? std::optional<T>(static_cast<T>(*value)) : std::nullopt;
        } else {
            const auto value = detail::readUnsigned(text, Limits::max());
            return value ? std::optional<T>(static_cast<T>(*value)) : std::nullopt;
        }
    }

    static std::u32string write(T value)
    {
        if constexpr (std::is_signed_v<T>) {
            return detail::writeSigned(value);
        } else {
            return detail::writeUnsigned(value);
        }
    }
    /// \endcond
};

/// Numbers such as `12`, `-0.5`, `1e-3`, `inf` and `nan`, with a point in every locale. Written with the fewest digits
/// that read back as the same number.
template <typename T>
struct Value<T, std::enable_if_t<std::is_floating_point_v<T>>>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"number";
    static std::optional<T> read(const std::u32string& text) { return detail::readFloating(text, T()); }
    static std::u32string write(T value) { return detail::writeFloating(value); }
    /// \endcond
};

/// One code point.
template <>
struct Value<char32_t>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"character";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<char32_t> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(char32_t value);
    /// \endcond
};

/// Any text.
template <>
struct Value<std::u32string>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"text";
    static std::optional<std::u32string> read(const std::u32string& text) { return text; }
    static std::u32string write(const std::u32string& value) { return value; }
    /// \endcond
};

/// Any text, in UTF-8.
template <>
struct Value<std::string>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"text";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<std::string> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(const std::string& value);
    /// \endcond
};

/// A file's name, which Tab completes.
template <>
struct Value<std::filesystem::path>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"file";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<std::filesystem::path>
    read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(const std::filesystem::path& value);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::vector<std::u32string> candidates(const std::u32string& typed);
    /// \endcond
};

namespace detail {
template <typename E>
using EnumNamesOf = decltype(enumNames(std::declval<E>()));
}

/// Enumerations, by the names that `enumNames()` gives. A value without a name is written as an empty text.
template <typename E>
struct Value<E, std::enable_if_t<std::is_enum_v<E>, std::void_t<detail::EnumNamesOf<E>>>>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"name";
    static constexpr bool kOnlyCandidates = true;

    static std::optional<E> read(const std::u32string& text)
    {
        for (const EnumName<E>& named : enumNames(E())) {
            if (named.second == text) {
                return named.first;
            }
        }
        return std::nullopt;
    }

    static std::u32string write(E value)
    {
        for (const EnumName<E>& named : enumNames(E())) {
            if (named.first == value) {
                return named.second;
            }
        }
        return {};
    }

    static std::vector<std::u32string> candidates()
    {
        std::vector<std::u32string> names;
        for (const EnumName<E>& named : enumNames(E())) {
            names.push_back(named.second);
        }
        return names;
    }
    /// \endcond
};

} // namespace zephyr::console::commands

#endif
