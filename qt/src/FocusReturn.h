#ifndef ZEPHYR_CONSOLE_QT_FOCUSRETURN_H
#define ZEPHYR_CONSOLE_QT_FOCUSRETURN_H

#include <QObject>
#include <QPointer>

namespace zephyr::console::qt {

class HostedObject;

/// Remembers who has the focus in a console's window while the console is open, and gives it back if somebody else got
/// it in between. The console itself never takes it.
class FocusReturn
{
public:
    /// Remembers who has the focus in the window of `object`.
    void remember(const HostedObject& object);

    /// Gives the focus back.
    void giveBack(const HostedObject& object);

private:
    QPointer<QObject> mFocused;
};

} // namespace zephyr::console::qt

#endif
