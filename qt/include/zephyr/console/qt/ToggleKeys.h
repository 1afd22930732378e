#ifndef ZEPHYR_CONSOLE_QT_TOGGLEKEYS_H
#define ZEPHYR_CONSOLE_QT_TOGGLEKEYS_H

#include "zephyr/console/qt/detail/Export.h"

#include <QSet>

#include <QtGlobal>

class QKeyEvent;

namespace zephyr::console::qt {

/// Which presses open and close the console.
///
/// - It is: the keys by what they send and by where they are, so that every keyboard layout has one. It is not: about
///   what else a key does.
/// - Threads: a value; const members may be called from any thread at once.
/// - Ownership: none. Failure: none.
///
/// By default: the back-quote wherever it is, and the key left of 1 whatever it sends (`^` or a dead circumflex on a
/// German layout, `²` on a French, `º` on a Spanish, `'` on a Brazilian, `§` on a Swedish one), pressed without a
/// modifier, so that what it types with Shift or AltGr stays typeable. Shift+Escape toggles always.
class ToggleKeys
{
public:
    /// The defaults.
    ZEPHYR_CONSOLE_QT_EXPORT ToggleKeys();

    /// Exactly these: `keys` in Qt's numbering (`Qt::Key`) with any modifier, and `scanCodes` in the platform's
    /// (QKeyEvent::nativeScanCode()) without one. Shift+Escape toggles besides.
    ZEPHYR_CONSOLE_QT_EXPORT ToggleKeys(const QSet<int>& keys, const QSet<quint32>& scanCodes);

    /// Whether the press or release of this key toggles.
    ZEPHYR_CONSOLE_QT_EXPORT bool matches(const QKeyEvent& event) const;

    /// The key left of 1, as the platform numbers it: on Windows 41, its place in the keyboard's own numbering, and with
    /// X11, Wayland and Linux' input devices 8 more.
#ifdef Q_OS_WIN
    static constexpr quint32 kKeyLeftOfOne = 41;
#else
    static constexpr quint32 kKeyLeftOfOne = 49;
#endif

private:
    QSet<int> mKeys;
    QSet<quint32> mScanCodes;
};

} // namespace zephyr::console::qt

#endif
