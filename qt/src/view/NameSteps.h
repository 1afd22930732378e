#ifndef ZEPHYR_CONSOLE_QT_VIEW_NAMESTEPS_H
#define ZEPHYR_CONSOLE_QT_VIEW_NAMESTEPS_H

#include "SharedTexts.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Presses a key of a console: its number and modifiers in Qt's numbering, and the text that it types.
using PressKey = std::function<void(int key, int modifiers, const std::u32string& text)>;

/// Stepping through names for the first word of an input line, each of which replaces the one before. The rest of the
/// line stays, and the cursor goes behind the name.
class NameSteps
{
public:
    /// Whether the line and its cursor are as the last step left them.
    bool isAt(const Console& console) const;

    /// The names that are stepped through.
    const SharedTexts& names() const { return mNames; }

    /// Which name the last step put on the line.
    std::optional<std::size_t> index() const { return mIndex; }

    /// Begins to step through `names`, which must not be empty. If the first word of the line is one of them, the
    /// first step goes on from there. `addsSpace`: whether a name that is the only one gets a space behind it, at the end
    /// of the line.
    void begin(const Console& console, const SharedTexts& names, bool addsSpace);

    /// Puts the next name on the line, or the previous one, and wraps around at both ends. Stepping ends where there is
    /// but one name. \return whether the name got a space.
    bool step(Console& console, bool backwards, const PressKey& press);

    /// Puts the name at `index` on the line, as a step to it would.
    bool goTo(Console& console, std::size_t index, const PressKey& press);

    /// Ends the stepping.
    void end() { *this = {}; }

private:
    SharedTexts mNames;
    bool mAddsSpace = false;
    std::optional<std::size_t> mIndex;
    std::u32string mLine;    // that the last step left
    std::size_t mCursor = 0; // that the last step left
};

} // namespace zephyr::console::qt

#endif
