#include "FindBar.h"

#include "../KeyPress.h"
#include "EditKeys.h"

#include <QString>

#include <Qt>

namespace zephyr::console::qt {

namespace {

bool has(int modifiers, Qt::KeyboardModifier modifier)
{
    return (static_cast<unsigned>(modifiers) & modifier) != 0;
}

bool isCaseKey(int key, int modifiers) { return key == Qt::Key_C && has(modifiers, Qt::AltModifier); }

} // namespace

void FindBar::open(TextPlace from, std::size_t firstEntry)
{
    mIsOpen = true;
    mFrom = from;
    mFirstEntry = firstEntry;
    mLine.clear();
    restart();
}

void FindBar::close()
{
    mIsOpen = false;
    mFinder = {};
}

bool FindBar::wants(int key, int modifiers) { return isCaseKey(key, modifiers); }

bool FindBar::press(const KeyPress& press)
{
    const bool isShift = has(press.modifiers, Qt::ShiftModifier);
    if (isCaseKey(press.key, press.modifiers)) {
        mMatchesCase = !mMatchesCase;
        restart();
        return true;
    }
    switch (press.key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: isShift ? mFinder.previous() : mFinder.next(); return true;
    case Qt::Key_Up: mFinder.next(); return true;
    case Qt::Key_Down: mFinder.previous(); return true;
    default: break;
    }
    const Edit edit = pressOn(mLine, press);
    if (edit == Edit::Changed) {
        restart();
    }
    return edit != Edit::None;
}

/// Searches anew, from the hit that is shown.
void FindBar::restart()
{
    const TextPlace from = mFinder.current() ? mFinder.current()->place : mFrom;
    mFinder.start(mLine.text(), mMatchesCase, mFirstEntry);
    mFinder.selectNearest(from);
}

ViewState::Bar FindBar::bar() const { return {U"Find: ", mLine.text(), mLine.cursor(), status(), {}}; }

ViewState::Find FindBar::find() const
{
    ViewState::Find find{mLine.text(), mMatchesCase, std::nullopt};
    if (const auto current = mFinder.current()) {
        find.current = current->place;
    }
    return find;
}

std::u32string FindBar::status() const
{
    constexpr int kPercent = 100;
    QString text = mMatchesCase ? QStringLiteral("upper and lower case differ, ") : QString();
    if (mLine.isEmpty()) {
        text += QStringLiteral("Alt+C: case");
    } else if (const auto current = mFinder.current()) {
        text += QStringLiteral("%1 of %2%3")
                    .arg(current->index + 1)
                    .arg(mFinder.count())
                    .arg(mFinder.hasMore() ? QStringLiteral("+") : QString());
    } else if (mFinder.isDone()) {
        text += QStringLiteral("not found");
    }
    if (!mLine.isEmpty() && !mFinder.isDone()) {
        text += QStringLiteral(" searched %1 %").arg(static_cast<int>(mFinder.progress() * kPercent));
    }
    return text.toStdU32String();
}

} // namespace zephyr::console::qt
