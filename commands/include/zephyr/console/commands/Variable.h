#ifndef ZEPHYR_CONSOLE_COMMANDS_VARIABLE_H
#define ZEPHYR_CONSOLE_COMMANDS_VARIABLE_H

#include "zephyr/console/commands/Durations.h"
#include "zephyr/console/commands/Failure.h"
#include "zephyr/console/commands/Registration.h"
#include "zephyr/console/commands/VariableLimits.h"
#include "zephyr/console/commands/detail/VariableState.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace zephyr::console::commands {

class ValueRules;

namespace detail {

/// A variable's command, and its limits.
struct AddedVariable
{
    Added added;                             ///< What its registration is made of.
    std::shared_ptr<const ValueRules> rules; ///< The limits, as checkLimits() takes them.
};

/// Registers the command of a variable. Throws `std::invalid_argument` as Variable's constructor does.
ZEPHYR_CONSOLE_COMMANDS_EXPORT AddedVariable addVariable(Console& console, std::u32string name,
                                                         std::u32string description, const ValueType& type,
                                                         const VariableLimits& limits,
                                                         std::shared_ptr<VariableBase> state);

/// Throws CommandError if `value`, which is written as `text`, breaks a limit.
ZEPHYR_CONSOLE_COMMANDS_EXPORT void checkLimits(const ValueRules& rules, const std::u32string& text,
                                                const void* value);

} // namespace detail

/// A value that the program reads and a user changes by its name.
///
///     Variable<double> speed(console, U"wind.speed", 12.0, U"Wind speed.", between(0, 60).unit(U"m/s"));
///
/// | line | does |
/// |---|---|
/// | `wind.speed` | shows value, default and range |
/// | `wind.speed 20` | sets it |
/// | `wind.speed default` | restores the default; a text of that word is typed in quotes |
///
/// - Threads: any thread may call value(), without a lock if kIsLockFree: for bool, numbers, characters, enumerations and
///   durations of at most 8 bytes, and for any other type that the processor reads at once. Other types take a short lock.
///   A getter of the program's own is called on the thread that asks. All else is for the console's thread.
/// - Ownership: the object registers a command under its name and removes it at its end. It may outlive the console.
/// - Failure: the user reads what is wrong with a word. set() throws CommandError.
template <typename T>
class Variable
{
public:
    /// Whether value() takes no lock.
    static constexpr bool kIsLockFree = detail::IsLockFree<T>::value;

    /// A variable with a value of its own, which is `byDefault` at first. Throws `std::invalid_argument` for a name that
    /// can't be typed, for limits that T can't have, and for a default that breaks them.
    Variable(Console& console, std::u32string name, T byDefault, std::u32string description,
             const VariableLimits& limits = {})
        : Variable(console, std::move(name), std::make_shared<State>(std::move(byDefault)),
                   std::move(description), limits)
    {}

    /// A variable whose value is the program's: `getter` returns it, and `setter` sets it, or ends with fail(). `byDefault`
    /// is what the default restores; the value is left as it is now. Without a setter, which may be null, the variable is
    /// read-only. Throws `std::invalid_argument` as above, and without a getter.
    Variable(Console& console, const std::u32string& name, std::function<T()> getter,
             std::function<void(const T&)> setter, T byDefault, std::u32string description,
             const VariableLimits& limits = {})
        : Variable(console, name,
                   boundState(name, std::move(getter), std::move(setter), std::move(byDefault)),
                   std::move(description), limits)
    {}

    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    Variable(Variable&&) = delete;
    Variable& operator=(Variable&&) = delete;
    ~Variable() = default;

    /// The value.
    T value() const { return mState->value(); }

    /// The default.
    const T& byDefault() const { return mState->byDefault(); }

    /// Sets the value, a read-only one too. Throws CommandError if it breaks a limit or there is no setter, and what a
    /// setter throws.
    void set(const T& value)
    {
        if (!mState->canSet()) {
            fail(mName + U": the variable is read-only.");
        }
        detail::checkLimits(*mAdded.rules, Value<T>::write(value), &value);
        const std::shared_ptr<State> state = mState; // who is told of the change may destroy the variable
        state->set(value);
    }

    /// Restores the default.
    void reset() { set(byDefault()); }

    /// Has `fn` called with the new value after each change, by a line or by the program. A value that is set to what it
    /// was is no change. What it throws leaves through whoever made the change.
    void onChange(std::function<void(const T&)> fn) { mState->addObserver(std::move(fn)); }

    /// What a line types for it.
    const std::u32string& name() const { return mName; }

private:
    using State = detail::VariableState<T>;

    static_assert(detail::HasValue<T>::value,
                  "A variable's type must be one that Value<T> reads and writes.");

    static std::shared_ptr<State> boundState(const std::u32string& name, std::function<T()>&& getter,
                                             std::function<void(const T&)>&& setter, T&& byDefault)
    {
        if (!getter) {
            throw std::invalid_argument(*Value<std::string>::read(name) + ": a variable needs a getter");
        }
        return std::make_shared<State>(std::move(getter), std::move(setter), std::move(byDefault));
    }

    Variable(Console& console, std::u32string name, std::shared_ptr<State> state, std::u32string description,
             const VariableLimits& limits)
        : mName(std::move(name)),
          mState(std::move(state)),
          mAdded(detail::addVariable(console, mName, std::move(description), detail::kValueType<T>,
                                     mState->canSet() ? limits : VariableLimits(limits).readOnly(), mState)),
          mRegistration(mAdded.added)
    {}

    std::u32string mName;
    std::shared_ptr<State> mState;
    detail::AddedVariable mAdded;
    Registration mRegistration;
};

} // namespace zephyr::console::commands

#endif
