#include "ViewKeys.h"

#include <algorithm>

namespace zephyr::console::qt {

namespace {

constexpr Qt::KeyboardModifiers kNone = Qt::NoModifier;
constexpr Qt::KeyboardModifiers kShift = Qt::ShiftModifier;
constexpr Qt::KeyboardModifiers kCtrl = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers kAlt = Qt::AltModifier;

} // namespace

const std::vector<KeyUse>& keyUses()
{
    using Action = ViewAction;
    constexpr const char* kEnter = "runs the line";
    constexpr const char* kRecall = "recall earlier and later lines of the history";
    constexpr const char* kMove = "move the cursor";
    constexpr const char* kMoveWord = "move to the beginning of a word";
    constexpr const char* kErase = "erase a character";
    constexpr const char* kEraseWord = "erase to the beginning of the word, or of the next one";
    constexpr const char* kPaste = "paste the clipboard, as one line";
    constexpr const char* kOffer = "step through what fits the line, on and back";
    constexpr const char* kPage = "show the page above and the page below";
    constexpr const char* kCopy = "copies what is selected; without a selection it is the program's";
    constexpr const char* kFind = "finds text in the log";
    constexpr const char* kSearch = "searches the history";
    constexpr const char* kZoom = "make the text larger, smaller, and as large as at first";
    constexpr const char* kLeave =
        "closes what is on top: the offers, a bar, the selection; then, if the line is empty, the console";
    constexpr const char* kToggle = "open and close the console";
    constexpr const char* kOlderHit = "go to the next older hit";
    constexpr const char* kNewerHit = "go back to the newer hit";
    constexpr const char* kCase = "tells upper and lower case apart, or no longer";
    constexpr const char* kRecords = "show an older line, and a newer one";
    static const std::vector<KeyUse> uses{
        {"Back-quote, Shift+Escape", kToggle, Qt::Key_QuoteLeft, kNone, Action::None},
        {"Back-quote, Shift+Escape", kToggle, Qt::Key_Escape, kShift, Action::None},
        {"Enter", kEnter, Qt::Key_Return, kNone, Action::None},
        {"Enter", kEnter, Qt::Key_Enter, kNone, Action::None},
        {"Up, Down", kRecall, Qt::Key_Up, kNone, Action::None},
        {"Up, Down", kRecall, Qt::Key_Down, kNone, Action::None},
        {"Ctrl+R", kSearch, Qt::Key_R, kCtrl, Action::Recall},
        {"Tab, Shift+Tab", kOffer, Qt::Key_Tab, kNone, Action::None},
        {"Tab, Shift+Tab", kOffer, Qt::Key_Backtab, kNone, Action::None},
        {"Left, Right, Home, End", kMove, Qt::Key_Left, kNone, Action::None},
        {"Left, Right, Home, End", kMove, Qt::Key_Right, kNone, Action::None},
        {"Left, Right, Home, End", kMove, Qt::Key_Home, kNone, Action::None},
        {"Left, Right, Home, End", kMove, Qt::Key_End, kNone, Action::None},
        {"Ctrl+Left, Ctrl+Right", kMoveWord, Qt::Key_Left, kCtrl, Action::None},
        {"Ctrl+Left, Ctrl+Right", kMoveWord, Qt::Key_Right, kCtrl, Action::None},
        {"Backspace, Delete", kErase, Qt::Key_Backspace, kNone, Action::None},
        {"Backspace, Delete", kErase, Qt::Key_Delete, kNone, Action::None},
        {"Ctrl+Backspace, Ctrl+Delete", kEraseWord, Qt::Key_Backspace, kCtrl, Action::None},
        {"Ctrl+Backspace, Ctrl+Delete", kEraseWord, Qt::Key_Delete, kCtrl, Action::None},
        {"Ctrl+V, Shift+Insert", kPaste, Qt::Key_V, kCtrl, Action::None},
        {"Ctrl+V, Shift+Insert", kPaste, Qt::Key_Insert, kShift, Action::Paste},
        {"Page Up, Page Down", kPage, Qt::Key_PageUp, kNone, Action::PageUp},
        {"Page Up, Page Down", kPage, Qt::Key_PageDown, kNone, Action::PageDown},
        {"Ctrl+C", kCopy, Qt::Key_C, kCtrl, Action::Copy},
        {"Ctrl+F", kFind, Qt::Key_F, kCtrl, Action::Find},
        {"Ctrl++, Ctrl+-, Ctrl+0", kZoom, Qt::Key_Plus, kCtrl, Action::ZoomIn},
        {"Ctrl++, Ctrl+-, Ctrl+0", kZoom, Qt::Key_Equal, kCtrl, Action::ZoomIn}, // the same key without Shift
        {"Ctrl++, Ctrl+-, Ctrl+0", kZoom, Qt::Key_Minus, kCtrl, Action::ZoomOut},
        {"Ctrl++, Ctrl+-, Ctrl+0", kZoom, Qt::Key_0, kCtrl, Action::ZoomToNormal},
        {"Escape", kLeave, Qt::Key_Escape, kNone, Action::Leave},
        {"Enter, Up in the find bar", kOlderHit, Qt::Key_Return, kNone, Action::None},
        {"Enter, Up in the find bar", kOlderHit, Qt::Key_Up, kNone, Action::None},
        {"Shift+Enter, Down in the find bar", kNewerHit, Qt::Key_Return, kShift, Action::None},
        {"Shift+Enter, Down in the find bar", kNewerHit, Qt::Key_Down, kNone, Action::None},
        {"Alt+C in the find bar", kCase, Qt::Key_C, kAlt, Action::None},
        {"Ctrl+R or Up, Down in the history's bar", kRecords, Qt::Key_Up, kNone, Action::None},
        {"Ctrl+R or Up, Down in the history's bar", kRecords, Qt::Key_Down, kNone, Action::None},
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
