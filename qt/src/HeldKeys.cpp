#include "HeldKeys.h"

#include <QKeyEvent>

namespace zephyr::console::qt {

namespace {

/// Identifies a key by its place on the keyboard, since Shift may change its code while it is held, or by its code if
/// the platform doesn't tell the place.
quint64 identityOf(const QKeyEvent& event)
{
    return event.nativeScanCode() != 0 ? event.nativeScanCode()
                                       : (quint64{1} << 32) | static_cast<quint32>(event.key());
}

} // namespace

std::optional<HeldKeys::Taker> HeldKeys::takerOf(const QKeyEvent& event) const
{
    const auto held = mTakers.constFind(identityOf(event));
    return held != mTakers.constEnd() ? std::optional(*held) : std::nullopt;
}

HeldKeys::Taker HeldKeys::takerOfPress(const QKeyEvent& event, Taker newTaker) const
{
    return event.isAutoRepeat() ? takerOf(event).value_or(newTaker) : newTaker;
}

void HeldKeys::press(const QKeyEvent& event, Taker taker) { mTakers[identityOf(event)] = taker; }

void HeldKeys::markAsToggle(const QKeyEvent& event) { mToggle = identityOf(event); }

void HeldKeys::release(const QKeyEvent& event)
{
    const quint64 identity = identityOf(event);
    mTakers.remove(identity);
    if (mToggle == identity) {
        mToggle.reset();
    }
}

void HeldKeys::clear()
{
    mTakers.clear();
    mToggle.reset();
}

} // namespace zephyr::console::qt
