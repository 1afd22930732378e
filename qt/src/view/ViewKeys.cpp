#include "ViewKeys.h"

#include <algorithm>

namespace zephyr::console::qt {

namespace {

constexpr Qt::KeyboardModifiers kNone = Qt::NoModifier;
constexpr Qt::KeyboardModifiers kShift = Qt::ShiftModifier;
constexpr Qt::KeyboardModifiers kCtrl = Qt::ControlModifier;

} // namespace

const std::vector<KeyUse>& keyUses()
{
    using Action = ViewAction;
    static const std::vector<KeyUse> uses{
        {"Return, Enter", "runs the line", Qt::Key_Return, kNone, Action::None},
        {"Enter on the keypad", "runs the line", Qt::Key_Enter, kNone, Action::None},
        {"Up", "recalls the line before", Qt::Key_Up, kNone, Action::None},
        {"Down", "recalls the line after", Qt::Key_Down, kNone, Action::None},
        {"Left", "moves the cursor back", Qt::Key_Left, kNone, Action::None},
        {"Right", "moves the cursor on", Qt::Key_Right, kNone, Action::None},
        {"Ctrl+Left", "moves the cursor back by a word", Qt::Key_Left, kCtrl, Action::None},
        {"Ctrl+Right", "moves the cursor on by a word", Qt::Key_Right, kCtrl, Action::None},
        {"Home", "moves the cursor to the start of the line", Qt::Key_Home, kNone, Action::None},
        {"End", "moves the cursor to the end of the line", Qt::Key_End, kNone, Action::None},
        {"Backspace", "erases before the cursor", Qt::Key_Backspace, kNone, Action::None},
        {"Delete", "erases behind the cursor", Qt::Key_Delete, kNone, Action::None},
        {"Ctrl+Backspace", "erases back to the start of a word", Qt::Key_Backspace, kCtrl, Action::None},
        {"Ctrl+Delete", "erases up to the next word", Qt::Key_Delete, kCtrl, Action::None},
        {"Ctrl+V", "pastes the clipboard as one line", Qt::Key_V, kCtrl, Action::None},
        {"Shift+Insert", "pastes the clipboard as one line", Qt::Key_Insert, kShift, Action::Paste},
        {"Tab", "steps through what fits the line", Qt::Key_Tab, kNone, Action::Offer},
        {"Shift+Tab", "steps back through what fits the line", Qt::Key_Backtab, kNone, Action::OfferBack},
        {"Page Up", "shows the page above", Qt::Key_PageUp, kNone, Action::PageUp},
        {"Page Down", "shows the page below", Qt::Key_PageDown, kNone, Action::PageDown},
        {"Ctrl+C", "copies what is selected; without a selection it is the host's", Qt::Key_C, kCtrl,
         Action::Copy},
        {"Ctrl+F", "finds text in the log", Qt::Key_F, kCtrl, Action::Find},
        {"Ctrl+R", "searches the lines that were typed", Qt::Key_R, kCtrl, Action::Recall},
        {"Ctrl++", "makes the text larger", Qt::Key_Plus, kCtrl, Action::ZoomIn},
        {"Ctrl+=", "makes the text larger", Qt::Key_Equal, kCtrl, Action::ZoomIn},
        {"Ctrl+-", "makes the text smaller", Qt::Key_Minus, kCtrl, Action::ZoomOut},
        {"Ctrl+0", "makes the text as large as it was at first", Qt::Key_0, kCtrl, Action::ZoomToNormal},
        {"Escape", "closes what is on top: the offers, a bar, the selection; then, if the line is empty, the console",
         Qt::Key_Escape, kNone, Action::Leave},
    };
    return uses;
}

ViewAction viewActionOf(int key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers pressed = modifiers & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const Qt::KeyboardModifiers withoutShift = pressed & ~Qt::KeyboardModifiers(kShift);
    const auto found = std::find_if(keyUses().begin(), keyUses().end(), [&](const KeyUse& use) {
        return use.key == key && (use.modifiers == pressed || use.modifiers == withoutShift);
    });
    return found != keyUses().end() ? found->action : ViewAction::None;
}

} // namespace zephyr::console::qt
