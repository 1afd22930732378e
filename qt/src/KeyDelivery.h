#ifndef ZEPHYR_CONSOLE_QT_KEYDELIVERY_H
#define ZEPHYR_CONSOLE_QT_KEYDELIVERY_H

#include <QString>

#include <functional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Gives keys to a console and lets no exception of theirs out: each ends in one line in the log.
class KeyDelivery
{
public:
    /// `caught` is called with the line after it was written.
    explicit KeyDelivery(std::function<void(const QString& line)> caught);

    /// Presses a key that types `text`, all of it: the console takes one code point a key, so that the rest follows
    /// as keys of its own. The first exception ends it. Refused insertions are told once, and again only after one
    /// that was not refused or in another line.
    void press(Console& console, int key, int modifiers, const std::u32string& text);

private:
    bool tryPressOne(Console& console, int key, int modifiers, const std::u32string& text);
    void tellRefusal(Console& console);
    void tell(Console& console, const std::u32string& line);

    std::function<void(const QString& line)> mCaught;
    bool mRefusalTold = false;
};

} // namespace zephyr::console::qt

#endif
