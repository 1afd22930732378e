#ifndef ZEPHYR_CONSOLE_QT_TOGGLEKEYS_H
#define ZEPHYR_CONSOLE_QT_TOGGLEKEYS_H

#include "zephyr/console/qt/detail/Export.h"

#include <QSet>

#include <QtGlobal>

class QKeyEvent;

namespace zephyr::console::qt {

/// The keys that open and close the console. A plain value; const members may be called from any thread at once.
///
/// A key is given by what it sends or by its place on the keyboard, so that every keyboard layout has a toggle key. By
/// default the toggle keys are
/// - the back-quote, wherever it is, also where it is typed with Shift or AltGr;
/// - the key left of 1, whatever it sends (`^` or a dead circumflex on a German layout, `²` on a French, `º` on a
///   Spanish, `'` on a Brazilian, `§` on a Swedish one), without a modifier: what it types with Shift or AltGr can
///   still be typed.
///
/// Where the key left of 1 types a letter, a digit or a semicolon (`0` on a Hungarian layout, `;` on a Czech one, `ё` on a
/// Russian one), it opens the console, and types while the console is open; Shift+Escape closes it there.
///
/// Shift+Escape always toggles. With Ctrl, Alt or Meta no key does: that is a shortcut of the host's, or AltGr on a
/// platform that reports it as Ctrl+Alt.
class ToggleKeys
{
public:
    /// The keys above.
    ZEPHYR_CONSOLE_QT_EXPORT ToggleKeys();

    /// Exactly these keys, and Shift+Escape. `keys` are codes of Qt's (`Qt::Key`) and toggle also with Shift
    /// or AltGr; `scanCodes` are the platform's (QKeyEvent::nativeScanCode()) and toggle without a modifier.
    ZEPHYR_CONSOLE_QT_EXPORT ToggleKeys(const QSet<int>& keys, const QSet<quint32>& scanCodes);

    /// Whether `event` is the press or the release of one of these keys.
    ZEPHYR_CONSOLE_QT_EXPORT bool matches(const QKeyEvent& event) const;

    /// Whether `event`, which matches() by its place on the keyboard alone, types what an open console needs: a letter, a
    /// digit or a semicolon. Raised letters and digits and fractions (`²`, `º`, `½`) don't count.
    ZEPHYR_CONSOLE_QT_EXPORT bool typesWhileOpen(const QKeyEvent& event) const;

    /// The platform's scan code of the key left of 1. Windows uses the keyboard's own code, 41; X11, Wayland and Linux
    /// input devices add 8 to it.
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
