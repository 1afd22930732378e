#ifndef ZEPHYR_CONSOLE_QT_KEYTRAITS_H
#define ZEPHYR_CONSOLE_QT_KEYTRAITS_H

#include <QKeyEvent>
#include <Qt>

namespace zephyr::console::qt {

/// Whether `key` is a dead key, which types nothing by itself and an accent with the next key.
inline bool isDeadKey(int key) { return key >= Qt::Key_Dead_Grave && key <= Qt::Key_Dead_Longsolidusoverlay; }

/// Whether AltGr is held, on X11 and Wayland: Qt does not translate that modifier (Mod5 of X11 and xkb).
inline bool hasAltGr(const QKeyEvent& event)
{
    constexpr quint32 kMod5 = 0x80;
    return (event.nativeModifiers() & kMod5) != 0;
}

} // namespace zephyr::console::qt

#endif
