#include "RecallBar.h"

#include "../KeyPress.h"
#include "EditKeys.h"
#include "ViewKeys.h"

#include <Qt>

#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr std::size_t kMostShown = 4096; // code points: more than anybody types, and quick to lay out

/// Whether a key goes on with the line that was found, as in a shell.
bool takesLine(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End: return true;
    default: return false;
    }
}

} // namespace

void RecallBar::open(std::vector<std::u32string> history)
{
    mLine.clear();
    mSearch.start(std::move(history));
    mIsOpen = true;
}

RecallBar::Result RecallBar::press(const KeyPress& press)
{
    const auto modifiers = static_cast<Qt::KeyboardModifiers>(press.modifiers);
    if (press.key == Qt::Key_Up || viewActionOf(press.key, modifiers) == ViewAction::Recall) {
        mSearch.older();
        return Result::Stays;
    }
    if (press.key == Qt::Key_Down) {
        mSearch.newer();
        return Result::Stays;
    }
    if (press.text.empty() && takesLine(press.key)) {
        return Result::Taken;
    }
    if (pressOn(mLine, press) == Edit::Changed) {
        mSearch.setQuery(mLine.text());
        return Result::Stays;
    }
    return Result::Unknown;
}

std::optional<std::u32string> RecallBar::line() const
{
    return mSearch.record() ? std::optional(std::u32string(mSearch.line().substr(0, kMostShown)))
                            : std::nullopt;
}

ViewState::Bar RecallBar::bar() const
{
    return {U"History: ", mLine.text(), mLine.cursor(), mSearch.isFailed() ? U"not found" : U"Ctrl+R: older"};
}

} // namespace zephyr::console::qt
