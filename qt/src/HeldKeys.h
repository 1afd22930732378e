#ifndef ZEPHYR_CONSOLE_QT_HELDKEYS_H
#define ZEPHYR_CONSOLE_QT_HELDKEYS_H

#include <QtGlobal>

#include <map>
#include <optional>

class QKeyEvent;

namespace zephyr::console::qt {

/// The keys that are held down, and whom each was pressed for. That decides who gets a key's repeats and its release,
/// even if the console opens or closes in between.
class HeldKeys
{
public:
    /// Whom a key was pressed for.
    enum class Taker
    {
        Console,
        Host
    };

    /// Whom a held key was pressed for, or nothing if the key isn't held.
    std::optional<Taker> takerOf(const QKeyEvent& event) const;

    /// Whether a press is a repeat. X11 repeats a key by a release and a press of the same time, and Qt doesn't mark
    /// them as a repeat where it reads the two one after the other; such a key counts as held all along. Throws
    /// `std::bad_alloc`.
    bool isRepeat(const QKeyEvent& press);

    /// Who gets a press: `newTaker`, unless it is the repeat of a held key.
    Taker takerOfPress(const QKeyEvent& event, Taker newTaker);

    /// Records that a key was pressed for `taker`. Throws `std::bad_alloc`.
    void press(const QKeyEvent& event, Taker taker);

    /// Records that a pressed key toggled the console.
    void markAsToggle(const QKeyEvent& event);

    /// Whether the key that last toggled the console is this one, and still held. With Shift it may have another code.
    bool isHeldToggle(const QKeyEvent& event) const;

    /// Whether the key that last toggled the console is still held.
    bool isToggleHeld() const { return mToggle.has_value(); }

    /// Forgets a key that was released.
    void release(const QKeyEvent& event);

    /// Forgets all keys.
    void clear();

private:
    /// A key that was released last.
    struct Released
    {
        quint64 identity;
        quint64 time; // milliseconds of the window system's clock
        Taker taker;
        bool isToggle;
    };

    std::map<quint64, Taker> mTakers; // a QHash ends the program where memory runs out
    std::optional<quint64> mToggle;
    std::optional<Released> mLastReleased;
};

} // namespace zephyr::console::qt

#endif
