#ifndef ZEPHYR_TESTS_QT_STEADYCURSORS_H
#define ZEPHYR_TESTS_QT_STEADYCURSORS_H

#include <QGuiApplication>
#include <QStyleHints>

namespace zephyr::test {

/// Cursors that don't blink, as some desktops and people want them, until the end of this object.
class SteadyCursors
{
public:
    SteadyCursors() { QGuiApplication::styleHints()->setCursorFlashTime(0); }
    ~SteadyCursors() { QGuiApplication::styleHints()->setCursorFlashTime(mFlashTime); }
    SteadyCursors(const SteadyCursors&) = delete;
    SteadyCursors& operator=(const SteadyCursors&) = delete;

private:
    int mFlashTime = QGuiApplication::styleHints()->cursorFlashTime();
};

} // namespace zephyr::test

#endif
