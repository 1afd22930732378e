#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_SIGNATURE_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_SIGNATURE_H

#include <type_traits>

namespace zephyr::console::commands::detail {

template <typename... Ts>
struct Types
{};

template <typename... Ts>
struct OnlyOf
{
    using Type = void;
};

template <typename T>
struct OnlyOf<T>
{
    using Type = std::decay_t<T>;
};

template <typename R, typename... Ps>
struct KnownSignature
{
    static constexpr bool kIsKnown = true;
    using Result = R;
    using Takes = Types<Ps...>;
    using Only = typename OnlyOf<Ps...>::Type;
};

struct UnknownSignature
{
    static constexpr bool kIsKnown = false;
};

/// What a function takes and returns. Unknown for what can be called in several ways, or not at all.
template <typename Fn, typename = void>
struct Signature : UnknownSignature
{};

template <typename Fn>
struct Signature<Fn, std::void_t<decltype(&Fn::operator())>> : Signature<decltype(&Fn::operator())>
{};

template <typename R, typename... Ps>
struct Signature<R (*)(Ps...), void> : KnownSignature<R, Ps...>
{};
template <typename R, typename... Ps>
struct Signature<R (*)(Ps...) noexcept, void> : KnownSignature<R, Ps...>
{};
template <typename R, typename C, typename... Ps>
struct Signature<R (C::*)(Ps...), void> : KnownSignature<R, Ps...>
{};
template <typename R, typename C, typename... Ps>
struct Signature<R (C::*)(Ps...) const, void> : KnownSignature<R, Ps...>
{};
template <typename R, typename C, typename... Ps>
struct Signature<R (C::*)(Ps...) noexcept, void> : KnownSignature<R, Ps...>
{};
template <typename R, typename C, typename... Ps>
struct Signature<R (C::*)(Ps...) const noexcept, void> : KnownSignature<R, Ps...>
{};

} // namespace zephyr::console::commands::detail

#endif
