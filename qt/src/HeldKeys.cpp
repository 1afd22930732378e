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
    const auto held = mTakers.find(identityOf(event));
    return held != mTakers.end() ? std::optional(held->second) : std::nullopt;
}

bool HeldKeys::isRepeat(const QKeyEvent& press)
{
    if (press.isAutoRepeat()) {
        return true;
    }
    const quint64 identity = identityOf(press);
    // A program that makes up events may press a key twice in a millisecond, but its keys have no place or no time.
    const bool isMadeUp = press.nativeScanCode() == 0 || press.timestamp() == 0;
    if (isMadeUp || !mLastReleased || mLastReleased->identity != identity ||
        mLastReleased->time != press.timestamp()) {
        return false;
    }
    mTakers.insert_or_assign(identity, mLastReleased->taker);
    if (mLastReleased->isToggle) {
        mToggle = identity;
    }
    return true;
}

HeldKeys::Taker HeldKeys::takerOfPress(const QKeyEvent& event, Taker newTaker)
{
    return isRepeat(event) ? takerOf(event).value_or(newTaker) : newTaker;
}

void HeldKeys::press(const QKeyEvent& event, Taker taker)
{
    mTakers.insert_or_assign(identityOf(event), taker);
}

bool HeldKeys::isHeldToggle(const QKeyEvent& event) const { return mToggle == identityOf(event); }

void HeldKeys::markAsToggle(const QKeyEvent& event) { mToggle = identityOf(event); }

void HeldKeys::release(const QKeyEvent& event)
{
    const quint64 identity = identityOf(event);
    if (const std::optional<Taker> taker = takerOf(event)) {
        mLastReleased = Released{identity, event.timestamp(), *taker, mToggle == identity};
    }
    mTakers.erase(identity);
    if (mToggle == identity) {
        mToggle.reset();
    }
}

void HeldKeys::clear()
{
    mTakers.clear();
    mToggle.reset();
    mLastReleased.reset();
}

} // namespace zephyr::console::qt
