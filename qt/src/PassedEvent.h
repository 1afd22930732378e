#ifndef ZEPHYR_CONSOLE_QT_PASSEDEVENT_H
#define ZEPHYR_CONSOLE_QT_PASSEDEVENT_H

#include <QEvent>
#include <QKeyEvent>

#include <optional>

namespace zephyr::console::qt {

/// The key event that was last left to the host. Qt passes the same event on from the window to the object that has the
/// focus, and from there to its parents, so that it comes by several times.
class PassedEvent
{
public:
    /// Whether `event` is the one that was recorded.
    bool is(const QKeyEvent& event) const { return mPassed == identityOf(event); }

    /// Records an event that is left to the host.
    void record(const QKeyEvent& event) { mPassed = identityOf(event); }

private:
    struct Identity
    {
        const QKeyEvent* address;
        QEvent::Type type;
        int key;
        quint64 time;

        bool operator==(const Identity&) const = default;
    };

    static Identity identityOf(const QKeyEvent& event)
    {
        return {&event, event.type(), event.key(), event.timestamp()};
    }

    std::optional<Identity> mPassed;
};

} // namespace zephyr::console::qt

#endif
