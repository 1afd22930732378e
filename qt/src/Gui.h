#ifndef ZEPHYR_CONSOLE_QT_GUI_H
#define ZEPHYR_CONSOLE_QT_GUI_H

#include <QGuiApplication>

namespace zephyr::console::qt {

/// Whether the program has an application object with windows. Without one, Qt has no clipboard and no input method.
inline bool hasGui() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr; }

} // namespace zephyr::console::qt

#endif
