#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_VARIABLESTATE_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_VARIABLESTATE_H

#include "zephyr/console/commands/Value.h"
#include "zephyr/console/commands/detail/VariableBase.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console::commands::detail {

/// Whether a T has the size of a word of the processor.
template <typename T>
inline constexpr bool kIsWord = sizeof(T) == 1 || sizeof(T) == 2 || sizeof(T) == 4 || sizeof(T) == 8;

/// A T of a word's size where the processor can read it in one step. Some have a lesser alignment by nature, such as a pair
/// of integers, and compilers call a library for those.
template <typename T>
struct alignas(sizeof(T)) Aligned
{
    T value;
};

/// Whether a T is read and written in one step by the processor.
template <typename T, bool = kIsWord<T> && std::is_trivially_copyable_v<T>>
struct IsLockFree : std::false_type
{};

template <typename T>
struct IsLockFree<T, true> : std::bool_constant<std::atomic<Aligned<T>>::is_always_lock_free>
{};

/// A value that one thread sets and any may read, without a lock where the type allows.
template <typename T, bool = IsLockFree<T>::value>
class SharedValue
{
public:
    explicit SharedValue(T value) : mValue(Aligned<T>{value}) {}
    T get() const { return mValue.load(std::memory_order_acquire).value; }
    void set(T value) { mValue.store(Aligned<T>{value}, std::memory_order_release); }

private:
    std::atomic<Aligned<T>> mValue;
};

template <typename T>
class SharedValue<T, false>
{
public:
    explicit SharedValue(T value) : mValue(std::move(value)) {}

    T get() const
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        return mValue;
    }

    void set(T value)
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mValue = std::move(value);
    }

private:
    mutable std::mutex mMutex;
    T mValue;
};

/// A variable's value and default, and who is told of changes.
template <typename T>
class VariableState final : public VariableBase
{
public:
    using Getter = std::function<T()>;
    using Setter = std::function<void(const T&)>;

    explicit VariableState(T byDefault) : mDefault(byDefault), mOwn(std::move(byDefault)) {}

    VariableState(Getter getter, Setter setter, T byDefault)
        : mDefault(byDefault),
          mOwn(std::move(byDefault)),
          mGetter(std::move(getter)),
          mSetter(std::move(setter))
    {}

    /// Whether a value can be set: not where the program has a getter alone.
    bool canSet() const { return mSetter || !mGetter; }

    T value() const { return mGetter ? mGetter() : mOwn.get(); }
    const T& byDefault() const { return mDefault; }

    void set(const T& value)
    {
        const std::u32string before = text();
        if (mSetter) {
            mSetter(value);
        } else {
            mOwn.set(value);
        }
        if (text() != before) {
            callObservers();
        }
    }

    void addObserver(Setter observer) { mObservers.push_back(std::move(observer)); }

    std::u32string text() const override { return Value<T>::write(value()); }
    std::u32string defaultText() const override { return Value<T>::write(mDefault); }
    void reset() override { set(mDefault); }

    void setFrom(const std::function<void(void* optional)>& read) override
    {
        std::optional<T> value;
        read(&value);
        set(*value);
    }

private:
    void callObservers()
    {
        const std::vector<Setter> observers = mObservers; // one may add others
        for (const Setter& observer : observers) {
            observer(value());
        }
    }

    const T mDefault;
    SharedValue<T> mOwn;
    Getter mGetter;
    Setter mSetter;
    std::vector<Setter> mObservers;
};

} // namespace zephyr::console::commands::detail

#endif
