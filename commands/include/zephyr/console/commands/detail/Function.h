#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_FUNCTION_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_FUNCTION_H

#include "zephyr/console/commands/detail/Call.h"
#include "zephyr/console/commands/detail/Signature.h"
#include "zephyr/console/commands/detail/ValueType.h"

#include <cstddef>
#include <functional>
#include <iterator>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console::commands::detail {

/// Whether a parameter must be given.
enum class Need
{
    Required,
    Optional,
    Rest ///< Takes the words that are left.
};

/// A parameter of a function, as its type says.
struct Shape
{
    const ValueType* type;
    Need need;
};

/// A host's function without its type.
struct Function
{
    std::vector<Shape> shapes;
    std::function<void(Call&)> call;
};

/// Whether a parameter that is declared as P can be read.
template <typename P>
struct CanRead : HasValue<std::decay_t<P>>
{};
template <typename T>
struct CanRead<T&> : std::false_type
{};
template <typename T>
struct CanRead<const T&> : CanRead<T>
{};
template <typename T>
struct CanRead<std::optional<T>> : HasValue<T>
{};
template <typename T>
struct CanRead<std::vector<T>> : HasValue<T>
{};
template <>
struct CanRead<Answer&> : std::true_type
{};
template <>
struct CanRead<Console&> : std::true_type
{};

/// Whether a word is typed for a parameter that is declared as P.
template <typename P>
inline constexpr bool kTakesWord = !std::is_same_v<P, Answer&> && !std::is_same_v<P, Console&>;

/// How T is read, and what is passed.
template <typename T>
struct Slot
{
    static constexpr Shape shape() { return {&kValueType<T>, Need::Required}; }

    explicit Slot(Call& call) { call.read(&mValue); }
    T&& get() { return std::move(*mValue); }

    std::optional<T> mValue;
};

template <typename T>
struct Slot<std::optional<T>>
{
    static constexpr Shape shape() { return {&kValueType<T>, Need::Optional}; }

    explicit Slot(Call& call) { call.read(&mValue); }
    std::optional<T>&& get() { return std::move(mValue); }

    std::optional<T> mValue;
};

template <typename T>
struct Slot<std::vector<T>>
{
    static constexpr Shape shape() { return {&kValueType<T>, Need::Rest}; }

    explicit Slot(Call& call)
    {
        for (std::optional<T> value; call.readOneMore(&value); value.reset()) {
            mValues.push_back(std::move(*value));
        }
    }
    std::vector<T>&& get() { return std::move(mValues); }

    std::vector<T> mValues;
};

template <>
struct Slot<Answer&>
{

    explicit Slot(Call& call) : mAnswer(call.answer()) {}
    Answer& get() { return mAnswer; }

    Answer& mAnswer;
};

template <>
struct Slot<Console&>
{

    explicit Slot(Call& call) : mConsole(call.console()) {}
    Console& get() { return mConsole; }

    Console& mConsole;
};

/// The slot of a parameter as it is declared. One that may not be written to can be passed a value of its own.
template <typename P>
using SlotOf =
    Slot<std::conditional_t<std::is_lvalue_reference_v<P> && !std::is_const_v<std::remove_reference_t<P>>, P,
                            std::decay_t<P>>>;

template <typename T, typename = void>
struct IsRange : std::false_type
{};

template <typename T>
struct IsRange<T, std::void_t<decltype(std::begin(std::declval<const T&>())),
                              decltype(std::end(std::declval<const T&>()))>> : std::true_type
{};

template <typename T>
inline constexpr bool kIsText =
    std::is_convertible_v<const T&, std::u32string_view> || std::is_convertible_v<const T&, std::string_view>;

/// Whether an answer can be made of a T.
template <typename T>
struct IsAnswer : std::bool_constant<kIsText<T> || HasValue<T>::value>
{};

template <typename T>
struct IsAnswer<std::optional<T>> : IsAnswer<T>
{};

template <typename T, bool = IsRange<T>::value && !kIsText<T> && !HasValue<T>::value>
struct IsResult : IsAnswer<T>
{};

template <typename T>
struct IsResult<T, true> : IsAnswer<std::decay_t<decltype(*std::begin(std::declval<const T&>()))>>
{};

template <typename T>
inline constexpr bool kIsOptional = false;
template <typename T>
inline constexpr bool kIsOptional<std::optional<T>> = true;

/// Writes what a function returned: a text or value as a line, and each of several as a line.
template <typename T>
void writeResult(const T& result, Answer& answer)
{
    if constexpr (kIsText<T> || HasValue<T>::value) {
        answer << result << "\n";
    } else if constexpr (kIsOptional<T>) {
        if (result) {
            writeResult(*result, answer);
        }
    } else {
        for (const auto& element : result) {
            writeResult<std::decay_t<decltype(element)>>(element, answer);
        }
    }
}

template <typename... Ps>
constexpr bool canReadAll(Types<Ps...>)
{
    return (true && ... && CanRead<Ps>::value);
}

template <typename... Ps>
constexpr std::size_t wordParameters(Types<Ps...>)
{
    return (std::size_t{0} + ... + (kTakesWord<Ps> ? 1U : 0U));
}

template <typename R>
constexpr bool canWrite()
{
    if constexpr (std::is_void_v<R>) {
        return true;
    } else {
        return IsResult<R>::value;
    }
}

/// Whether a function can be a command with `Given` parameters described.
template <typename Fn, std::size_t Given>
constexpr bool canBeCommand()
{
    if constexpr (Signature<Fn>::kIsKnown && std::is_copy_constructible_v<Fn> &&
                  !std::is_member_pointer_v<Fn>) {
        using Parameters = typename Signature<Fn>::Takes;
        return canReadAll(Parameters()) && canWrite<std::decay_t<typename Signature<Fn>::Result>>() &&
               Given <= wordParameters(Parameters());
    } else {
        return false;
    }
}

template <typename P>
void addShape(std::vector<Shape>& shapes)
{
    if constexpr (kTakesWord<P>) {
        shapes.push_back(SlotOf<P>::shape());
    }
}

/// Reads every parameter, and only then calls.
template <typename Fn, typename Result, typename... Ps>
void readAndCall(Fn& fn, Call& call, Types<Ps...>)
{
    std::tuple<SlotOf<Ps>...> taken{SlotOf<Ps>(call)...}; // in order, as braces are
    if constexpr (std::is_void_v<Result>) {
        std::apply([&fn](auto&... slot) { fn(slot.get()...); }, taken);
    } else {
        writeResult<std::decay_t<Result>>(
            std::apply([&fn](auto&... slot) -> Result { return fn(slot.get()...); }, taken), call.answer());
    }
}

template <typename Fn, typename... Ps>
Function makeFunction(Fn&& fn, Types<Ps...> parameters)
{
    using Kept = std::decay_t<Fn>;
    using Result = typename Signature<Kept>::Result;
    Function made;
    (addShape<Ps>(made.shapes), ...);
    made.call = [fn = std::forward<Fn>(fn), parameters](Call& call) mutable {
        readAndCall<Kept, Result>(fn, call, parameters);
    };
    return made;
}

} // namespace zephyr::console::commands::detail

#endif
