#ifndef ZEPHYR_CONSOLE_QT_ACTEDEVENT_H
#define ZEPHYR_CONSOLE_QT_ACTEDEVENT_H

#include <QEvent>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Tells the other hosts of a console that one of them changed its line or its scroll position, which the console's
/// observers don't hear. It is sent to the application, whose events all hosts filter.
class ActedEvent : public QEvent
{
public:
    /// Tells that `sender` changed `console`. Both only serve to be compared.
    ActedEvent(const Console* console, const void* sender)
        : QEvent(kind()), mConsole(console), mSender(sender)
    {}

    /// The number that Qt gave to this kind of event.
    static Type kind()
    {
        static const int number = registerEventType();
        return static_cast<Type>(number);
    }

    const Console* console() const { return mConsole; }
    const void* sender() const { return mSender; }

private:
    const Console* mConsole;
    const void* mSender;
};

} // namespace zephyr::console::qt

#endif
