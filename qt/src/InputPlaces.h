#ifndef ZEPHYR_CONSOLE_QT_INPUTPLACES_H
#define ZEPHYR_CONSOLE_QT_INPUTPLACES_H

#include <cstddef>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// The places of a console's input line. Each code point that is erased costs the line one, for good, and each that is
/// inserted before others wins one. So this counts what keys do, and gives an empty line the places back that it lost.
///
/// Only what is pressed between prepare() and follow() is counted; where other keys erased as well, a full line tells
/// how many places there are. The console must be open.
class InputPlaces
{
public:
    /// Is called before a key is pressed that types `text`: gives an empty line its places back if the key is about to
    /// fill it. \return whether the key has been dealt with, and must not be pressed.
    bool prepare(Console& console, int key, int modifiers, const std::u32string& text);

    /// Is called after the same key was pressed: counts the places that it cost or won.
    void follow(const Console& console, int key, int modifiers, const std::u32string& text);

    /// Is called after the console refused to insert: a line that is full at its end has all the places that there are.
    void followRefusal(const Console& console);

private:
    void count(std::size_t size, int key, int modifiers, const std::u32string& text);
    bool takesLastPlace(Console& console, int key, int modifiers) const;
    void restore(Console& console);

    static constexpr std::size_t kPlaces = 2048; // of a console's first line

    std::size_t mPlaces = kPlaces;
    std::size_t mSizeBefore = 0;   // of the line, before the key
    std::size_t mCursorBefore = 0; // may lie past the line's end
    bool mMayComplete = false;     // a completion may be in progress
};

} // namespace zephyr::console::qt

#endif
