#include "InputPlaces.h"

#include "ConsoleKeys.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <algorithm>
#include <exception>
#include <new>

namespace zephyr::console::qt {

namespace {

bool inserts(int key, int modifiers, const std::u32string& text)
{
    return !text.empty() ||
           (key == Qt::Key_V && (static_cast<unsigned>(modifiers) & Qt::ControlModifier) != 0);
}

bool erases(int key) { return key == Qt::Key_Backspace || key == Qt::Key_Delete; }

bool recalls(int key) { return key == Qt::Key_Up || key == Qt::Key_Down; }

} // namespace

bool InputPlaces::prepare(Console& console, int key, int modifiers, const std::u32string& text)
{
    mSizeBefore = console.activeInput().size();
    mCursorBefore = console.cursorPosition();
    if (takesLastPlace(console, key, modifiers)) {
        console.open(); // empties the line without an erasure
        restore(console);
        return true;
    }
    // To restore ends a completion, as an insertion does anyway. A line that is recalled leaves it alone.
    const bool fillsLine = inserts(key, modifiers, text) || (recalls(key) && !mMayComplete);
    if (mPlaces < kPlaces && mSizeBefore == 0 && fillsLine) {
        restore(console);
    }
    return false;
}

void InputPlaces::follow(const Console& console, int key, int modifiers, const std::u32string& text)
{
    std::size_t size =
        0; // without memory to look, as if all of the line had been erased: a place too many harms nothing
    try {
        size = console.activeInput().size();
    } catch (const std::bad_alloc&) {
        count(size, key, modifiers, text);
        throw;
    }
    count(size, key, modifiers, text);
}

void InputPlaces::followRefusal(const Console& console)
{
    const std::size_t size = console.activeInput().size();
    if (console.cursorPosition() == size) {
        mPlaces = size;
    }
}

/// Counts what a key did that left a line of `size` code points.
void InputPlaces::count(std::size_t size, int key, int modifiers, const std::u32string& text)
{
    const bool isEdited = size != mSizeBefore && (erases(key) || inserts(key, modifiers, text));
    mMayComplete = completesLine(key) || (mMayComplete && !isEdited);
    if (erases(key)) {
        mPlaces -= std::min(mPlaces, mSizeBefore - std::min(mSizeBefore, size));
    } else if (inserts(key, modifiers, text) && mCursorBefore < mSizeBefore) {
        mPlaces += size - std::min(size, mSizeBefore);
    }
}

/// Whether a key would erase the whole of a line that fills every place. Without a place nothing could be typed again,
/// and no place won back.
bool InputPlaces::takesLastPlace(Console& console, int key, int modifiers) const
{
    if (!erases(key) || mSizeBefore == 0 || mSizeBefore < mPlaces) {
        return false;
    }
    // The cursor keys go as far as the erasing keys erase.
    if (key == Qt::Key_Backspace && mCursorBefore >= mSizeBefore) {
        console.keyPressed(Qt::Key_Left, modifiers, {});
        const std::size_t first = console.cursorPosition();
        for (std::size_t i = first; i < mCursorBefore; ++i) {
            console.keyPressed(Qt::Key_Right, Qt::NoModifier, {});
        }
        return first == 0;
    }
    if (key == Qt::Key_Delete && mCursorBefore == 0) {
        console.keyPressed(Qt::Key_Right, modifiers, {});
        const std::size_t last = console.cursorPosition();
        console.keyPressed(Qt::Key_Home, Qt::NoModifier, {});
        return last >= mSizeBefore;
    }
    return false;
}

/// Gives an empty line its places back: spaces that are inserted before others win one each, and opening the open
/// console takes them out of the line without erasing them. The cursor stays within the first two places meanwhile, so
/// that a frame painted at this moment shows nothing but the key's own cursor.
void InputPlaces::restore(Console& console)
{
    if (!console.isOpen()) {
        return; // an observer closed it
    }
    const std::u32string space = U" ";
    try {
        console.keyPressed(0, Qt::NoModifier, space);
        for (; mPlaces < kPlaces; ++mPlaces) {
            console.keyPressed(Qt::Key_Home, Qt::NoModifier, {});
            console.keyPressed(0, Qt::NoModifier, space);
        }
    } catch (const std::exception&) { // memory ran out; the next key that fills an empty line tries again
    }
    console.open();
    mMayComplete = false;
}

} // namespace zephyr::console::qt
