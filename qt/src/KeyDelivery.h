#ifndef ZEPHYR_CONSOLE_QT_KEYDELIVERY_H
#define ZEPHYR_CONSOLE_QT_KEYDELIVERY_H

#include "InputPlaces.h"

#include <QString>

#include <functional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Delivers keys to a console, and turns each exception that they cause into one line in the log.
class KeyDelivery
{
public:
    /// `caught` is called with each such line, after it was written.
    explicit KeyDelivery(std::function<void(const QString& line)> caught);

    /// Presses a key that types `text`. The console takes one code point a key, so that each further code point follows
    /// as a key press of its own, until the first exception. That the line is full is reported once, and again only
    /// after an insertion that succeeded or in another line. Where memory runs out, the rest of the key is dropped.
    /// A command that ends its thread with pthread_exit() gets past this.
    void press(Console& console, int key, int modifiers, const std::u32string& text);

private:
    void pressAndCount(Console& console, int key, int modifiers, const std::u32string& text);
    void pressAll(Console& console, int key, int modifiers, const std::u32string& text);
    bool tryPressOne(Console& console, int key, int modifiers, const std::u32string& text);
    bool tryToDo(const std::function<void()>& action, Console& console, int key);
    void reportFullLine(Console& console);
    void report(Console& console, const std::u32string& line);

    std::function<void(const QString& line)> mCaught;
    InputPlaces mPlaces;
    bool mIsFullLineReported = false;
};

} // namespace zephyr::console::qt

#endif
