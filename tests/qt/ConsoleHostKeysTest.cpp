#include "qt/HostedConsole.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QShortcut>

namespace zephyr::test {
namespace {

class ConsoleHostKeys : public HostedConsole
{
protected:
    /// Whether a key is kept from the shortcuts of the window.
    bool overridesShortcut(int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {},
                           quint32 nativeModifiers = 0)
    {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers, 0, 0, nativeModifiers, text);
        event.ignore(); // as Qt sends it
        QCoreApplication::sendEvent(&window, &event);
        return event.isAccepted();
    }
};

using Received = std::vector<std::string>;

TEST_F(ConsoleHostKeys, OpenAndCloseTheConsoleWithTheBackQuote)
{
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    EXPECT_TRUE(console->isOpen());
    EXPECT_TRUE(host.isOpen());
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    EXPECT_FALSE(console->isOpen());
    EXPECT_FALSE(host.isOpen());
    EXPECT_EQ(Received(), window.received);
    ASSERT_EQ(2, toggles.size());
    EXPECT_TRUE(toggles[0][0].toBool());
    EXPECT_FALSE(toggles[1][0].toBool());
}

TEST_F(ConsoleHostKeys, OpenTheConsoleWithAnEmptyLine)
{
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    type("abc");
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    EXPECT_EQ("", input());
}

TEST_F(ConsoleHostKeys, OpenAndCloseWithADeadKeyLeftOfOne)
{
    sendKey(window, QEvent::KeyPress, Qt::Key_Dead_Circumflex, {}, {}, ToggleKeys::kKeyLeftOfOne);
    EXPECT_TRUE(console->isOpen());
    sendKey(window, QEvent::KeyRelease, Qt::Key_Dead_Circumflex, {}, {}, ToggleKeys::kKeyLeftOfOne);
    EXPECT_TRUE(console->isOpen());
    sendKey(window, QEvent::KeyPress, Qt::Key_Dead_Circumflex, {}, {}, ToggleKeys::kKeyLeftOfOne);
    EXPECT_FALSE(console->isOpen());
}

TEST_F(ConsoleHostKeys, DoNothingWhenOnlyTheirReleaseComes)
{
    for (const Qt::Key key : {Qt::Key_F12, Qt::Key_Context1}) { // below and above the codes of the dead keys
        host.setToggleKeys(ToggleKeys({key}, {}));
        sendKey(window, QEvent::KeyRelease, key);
        EXPECT_FALSE(console->isOpen());
    }
}

TEST_F(ConsoleHostKeys, ToggleOnceWhileAToggleKeyIsHeld)
{
    sendKey(window, QEvent::KeyPress, Qt::Key_QuoteLeft, {}, "`", ToggleKeys::kKeyLeftOfOne);
    for (int i = 0; i < 3; ++i) {
        sendKey(window, QEvent::KeyRelease, Qt::Key_QuoteLeft, {}, "`", ToggleKeys::kKeyLeftOfOne, 0, true);
        sendKey(window, QEvent::KeyPress, Qt::Key_QuoteLeft, {}, "`", ToggleKeys::kKeyLeftOfOne, 0, true);
    }
    EXPECT_TRUE(console->isOpen());
    EXPECT_EQ("", input());
    EXPECT_EQ(1, toggles.size());
    EXPECT_EQ(Received(), window.received);
}

TEST_F(ConsoleHostKeys, OpenAndCloseWithShiftEscapeWhateverTheToggleKeysAre)
{
    host.setToggleKeys(ToggleKeys({Qt::Key_F12}, {}));
    click(Qt::Key_Escape, Qt::ShiftModifier, "\x1b");
    EXPECT_TRUE(console->isOpen());
    click(Qt::Key_Escape, Qt::ShiftModifier, "\x1b");
    EXPECT_FALSE(console->isOpen());
    EXPECT_EQ(Received(), window.received);
}

TEST_F(ConsoleHostKeys, OpenAndCloseWithTheKeysThatTheHostChose)
{
    host.setToggleKeys(ToggleKeys({Qt::Key_F12}, {}));
    EXPECT_TRUE(host.toggleKeys().matches(QKeyEvent(QEvent::KeyPress, Qt::Key_F12, Qt::NoModifier)));
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    EXPECT_FALSE(console->isOpen());
    EXPECT_EQ((Received{"press `", "release `"}), window.received);
    click(Qt::Key_F12);
    EXPECT_TRUE(console->isOpen());
}

TEST_F(ConsoleHostKeys, TypeTheBackQuoteWhereItIsNoToggleKey)
{
    host.setToggleKeys(ToggleKeys({Qt::Key_F12}, {}));
    click(Qt::Key_F12);
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    EXPECT_EQ("`", input());
}

TEST_F(ConsoleHostKeys, GoToTheHostWhileTheConsoleIsClosed)
{
    click(Qt::Key_A, Qt::NoModifier, "a");
    click(Qt::Key_Tab, Qt::NoModifier, "\t");
    EXPECT_EQ((Received{"press A", "release A", "press Tab", "release Tab"}), window.received);
    EXPECT_EQ("", input());
    EXPECT_EQ(0, repaints.size());
}

TEST_F(ConsoleHostKeys, GoToTheConsoleAloneWhileItIsOpen)
{
    open();
    type("help");
    click(Qt::Key_Left);
    click(Qt::Key_Escape, Qt::NoModifier, "\x1b");
    EXPECT_EQ("help", input());
    EXPECT_EQ(3u, console->cursorPosition());
    EXPECT_EQ(Received(), window.received);
}

TEST_F(ConsoleHostKeys, CarryQtsCodesAndModifierBits)
{
    open();
    type("set foo bar");
    click(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(8u, console->cursorPosition());
    click(Qt::Key_Backspace, Qt::ControlModifier, "\x7f");
    EXPECT_EQ("set bar", input());
    click(Qt::Key_Home);
    click(Qt::Key_Delete, Qt::NoModifier, "\x7f");
    EXPECT_EQ("et bar", input());
}

TEST_F(ConsoleHostKeys, TypeWhatQTestTypes)
{
    QTest::keyClick(&window, Qt::Key_QuoteLeft);
    QTest::keyClick(&window, Qt::Key_X);
    QTest::sendKeyEvent(QTest::Click, &window, Qt::Key_unknown, QStringLiteral("\u00e9"), Qt::NoModifier);
    EXPECT_EQ("x\u00e9", input());
    QTest::keyClick(&window, Qt::Key_Backspace);
    EXPECT_EQ("x", input());
}

TEST_F(ConsoleHostKeys, JoinSurrogatePairsToOneCodePoint)
{
    open();
    click(Qt::Key_unknown, Qt::NoModifier, QString::fromUtf8("\U0001F600"));
    EXPECT_EQ(U"\U0001F600", console->activeInput());
    EXPECT_EQ(1u, console->cursorPosition());
}

TEST_F(ConsoleHostKeys, InsertEveryCodePointOfOnePress)
{
    open();
    click(Qt::Key_unknown, Qt::NoModifier, QString::fromUtf8("a\u0301\U0001F600z"));
    EXPECT_EQ(U"a\u0301\U0001F600z", console->activeInput());
    EXPECT_EQ(4u, console->cursorPosition());
}

TEST_F(ConsoleHostKeys, DoNotTypeControlCharacters)
{
    open();
    click(Qt::Key_A, Qt::ControlModifier, "\x01");
    click(Qt::Key_Return, Qt::NoModifier, "\r");
    click(Qt::Key_unknown, Qt::NoModifier, QString("x\n\t\x7f") + QChar(0x9b) + "y");
    click(Qt::Key_Escape, Qt::NoModifier, "\x1b");
    EXPECT_EQ("xy", input());
    EXPECT_EQ((std::vector<std::string>{""}), log()) << "the echo of Return on an empty line";
}

TEST_F(ConsoleHostKeys, PasteTheClipboard)
{
    open();
    QGuiApplication::clipboard()->setText("from the clipboard");
    click(Qt::Key_V, Qt::ControlModifier, "\x16");
    EXPECT_EQ("from the clipboard", input());
}

TEST_F(ConsoleHostKeys, RunLinesAndRecallThem)
{
    std::vector<std::u32string> words;
    addCommand(*console, U"go").onExecute = [&](const console::ConsoleArgs& args, Console&) {
        words = wordsOf(args);
    };
    open();
    type("go far\n");
    EXPECT_EQ((std::vector<std::u32string>{U"go", U"far"}), words);
    EXPECT_EQ("", input());
    click(Qt::Key_Up);
    EXPECT_EQ("go far", input());
    click(Qt::Key_Down);
    click(Qt::Key_Enter, Qt::KeypadModifier, "\r");
    EXPECT_EQ((std::vector<std::string>{"go far", "", ""}), log());
}

TEST_F(ConsoleHostKeys, KeepTabAndBacktabFromTheHost)
{
    addCompletingCommand(*console, U"cmd", {U"alpha", U"beta"});
    open();
    type("cmd ");
    for (const char* const line : {"cmd alpha", "cmd beta", "cmd alpha"}) {
        EXPECT_TRUE(sendKey(window, QEvent::KeyPress, Qt::Key_Tab, {}, "\t"));
        EXPECT_TRUE(sendKey(window, QEvent::KeyRelease, Qt::Key_Tab, {}, "\t"));
        EXPECT_EQ(line, input());
    }
    EXPECT_TRUE(sendKey(window, QEvent::KeyPress, Qt::Key_Backtab, Qt::ShiftModifier));
    EXPECT_EQ("cmd beta", input());
    EXPECT_EQ(Received(), window.received);
}

TEST_F(ConsoleHostKeys, AreAcceptedWhereTheConsoleTakesThem)
{
    open();
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(&window, &event);
    EXPECT_TRUE(event.isAccepted());
}

TEST_F(ConsoleHostKeys, AreReleasedWhereTheyWerePressed)
{
    sendKey(window, QEvent::KeyPress, Qt::Key_W, {}, "w");
    open();
    sendKey(window, QEvent::KeyPress, Qt::Key_X, {}, "x");
    sendKey(window, QEvent::KeyRelease, Qt::Key_W, {}, "w");
    EXPECT_EQ((Received{"press W", "release W"}), window.received);
    host.setOpen(false);
    sendKey(window, QEvent::KeyRelease, Qt::Key_X, {}, "x");
    EXPECT_EQ((Received{"press W", "release W"}), window.received);
}

TEST_F(ConsoleHostKeys, RepeatWhereTheyWerePressed)
{
    open();
    sendKey(window, QEvent::KeyPress, Qt::Key_X, {}, "x");
    sendKey(window, QEvent::KeyRelease, Qt::Key_X, {}, "x", 0, 0, true);
    sendKey(window, QEvent::KeyPress, Qt::Key_X, {}, "x", 0, 0, true);
    EXPECT_EQ("xx", input());
    EXPECT_EQ(Received(), window.received);
}

TEST_F(ConsoleHostKeys, ThatRepeatWithoutAPressGoWhereOtherKeysGo)
{
    sendKey(window, QEvent::KeyPress, Qt::Key_X, {}, "x", 0, 0, true);
    EXPECT_EQ((Received{"press X"}), window.received);
    open();
    sendKey(window, QEvent::KeyPress, Qt::Key_Y, {}, "y", 0, 0, true);
    EXPECT_EQ("y", input());
}

TEST_F(ConsoleHostKeys, GoOnRepeatingForTheHostWhenItOpensTheConsole)
{
    sendKey(window, QEvent::KeyPress, Qt::Key_F, {}, "f");
    host.setOpen(true);
    sendKey(window, QEvent::KeyRelease, Qt::Key_F, {}, "f", 0, 0, true);
    sendKey(window, QEvent::KeyPress, Qt::Key_F, {}, "f", 0, 0, true);
    sendKey(window, QEvent::KeyRelease, Qt::Key_F, {}, "f");
    EXPECT_EQ("", input());
    EXPECT_EQ((Received{"press F", "release F", "press F", "release F"}), window.received);
    sendKey(window, QEvent::KeyPress, Qt::Key_F, {}, "f");
    EXPECT_EQ("f", input());
}

TEST_F(ConsoleHostKeys, ThatAreHeldWhenTheConsoleClosesAreKeptFromTheHost)
{
    open();
    sendKey(window, QEvent::KeyPress, Qt::Key_Escape, Qt::ShiftModifier, "\x1b", 9);
    EXPECT_FALSE(console->isOpen());
    sendKey(window, QEvent::KeyRelease, Qt::Key_Escape, {}, "\x1b", 9, 0, true); // Shift was let go first
    sendKey(window, QEvent::KeyPress, Qt::Key_Escape, {}, "\x1b", 9, 0, true);
    sendKey(window, QEvent::KeyRelease, Qt::Key_Escape, {}, "\x1b", 9);
    EXPECT_EQ(Received(), window.received);
    EXPECT_FALSE(console->isOpen());
    sendKey(window, QEvent::KeyPress, Qt::Key_Escape, {}, "\x1b", 9);
    EXPECT_EQ((Received{"press Esc"}), window.received);
}

TEST_F(ConsoleHostKeys, AreKnownByTheirPlaceWhenShiftChangesThem)
{
    open();
    sendKey(window, QEvent::KeyPress, Qt::Key_Slash, {}, "/", 61);
    host.setOpen(false);
    sendKey(window, QEvent::KeyRelease, Qt::Key_Question, Qt::ShiftModifier, "?", 61);
    EXPECT_EQ(Received(), window.received);
}

TEST_F(ConsoleHostKeys, TypeNothingWithControl)
{
    open();
    sendKey(window, QEvent::KeyPress, Qt::Key_1, Qt::ControlModifier, "1");
    sendKey(window, QEvent::KeyPress, Qt::Key_Minus, Qt::ControlModifier | Qt::ShiftModifier, "-");
    sendKey(window, QEvent::KeyPress, Qt::Key_E, Qt::MetaModifier, "e");
    EXPECT_EQ("", input());
    sendKey(window, QEvent::KeyPress, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier, "@"); // AltGr
    EXPECT_EQ("@", input());
}

#ifndef Q_OS_MACOS // where Alt is Option, which types accents
TEST_F(ConsoleHostKeys, OfTheHostsMenusReachThemWithAlt)
{
    open();
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(Qt::AltModifier), Qt::AltModifier | Qt::ShiftModifier}) {
        EXPECT_FALSE(overridesShortcut(Qt::Key_F, modifiers, "f"));
        click(Qt::Key_F, modifiers, "f");
    }
    EXPECT_EQ((Received{"press F", "release F", "press F", "release F"}), window.received);
    EXPECT_EQ("", input());
}
#endif

TEST_F(ConsoleHostKeys, TypeWithAltGrHoweverItIsReported)
{
    constexpr quint32 kAltGr = 0x80; // Mod5, in X11's state
    open();
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::AltModifier)}) {
        EXPECT_TRUE(overridesShortcut(Qt::Key_Q, modifiers, "@", kAltGr));
        sendKey(window, QEvent::KeyPress, Qt::Key_Q, modifiers, "@", 24, kAltGr);
    }
    EXPECT_TRUE(overridesShortcut(Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier, "@"));
    click(Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier, "@");
    EXPECT_EQ("@@@", input());
    EXPECT_EQ(Received(), window.received);
}

TEST_F(ConsoleHostKeys, AreForgottenWhenTheFocusGoes)
{
    open();
    sendKey(window, QEvent::KeyPress, Qt::Key_X, {}, "x");
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(&window, &out);
    host.setOpen(false);
    sendKey(window, QEvent::KeyRelease, Qt::Key_X, {}, "x");
    EXPECT_EQ((Received{"release X"}), window.received);
}

TEST_F(ConsoleHostKeys, FollowAConsoleThatTheHostOpensAndClosesItself)
{
    console->open();
    click(Qt::Key_A, Qt::NoModifier, "a");
    EXPECT_EQ("a", input());
    console->close();
    click(Qt::Key_B, Qt::NoModifier, "b");
    EXPECT_EQ((Received{"press B", "release B"}), window.received);
    EXPECT_EQ(2, toggles.size());
}

TEST_F(ConsoleHostKeys, FollowAConsoleThatACommandCloses)
{
    addCommand(*console, U"bye").onExecute = [](const console::ConsoleArgs&, Console& running) {
        running.close();
    };
    open();
    type("bye\n");
    EXPECT_FALSE(host.isOpen());
    EXPECT_EQ(2, toggles.size());
    EXPECT_EQ(Received(), window.received);
}

TEST_F(ConsoleHostKeys, GoToAnOpenConsoleBeforeAnyShortcut)
{
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_Left), &window);
    QSignalSpy activations(&shortcut, &QShortcut::activated);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    QTest::keyClick(&window, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(1, activations.size());

    open();
    type("two words");
    QTest::keyClick(&window, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(1, activations.size());
    EXPECT_EQ(4u, console->cursorPosition());

    host.setOpen(false);
    QTest::keyClick(&window, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(2, activations.size());
}

TEST_F(ConsoleHostKeys, OpenTheConsoleBeforeAnyShortcut)
{
    QShortcut shortcut(QKeySequence(Qt::Key_QuoteLeft), &window);
    QSignalSpy activations(&shortcut, &QShortcut::activated);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_QuoteLeft);
    EXPECT_TRUE(console->isOpen());
    EXPECT_EQ(0, activations.size());
}

TEST_F(ConsoleHostKeys, ThatTheConsoleUsesOverrideShortcutsWhileItIsOpen)
{
    const std::vector<Qt::Key> used = {
        Qt::Key_Backspace, Qt::Key_Delete,   Qt::Key_Left,   Qt::Key_Right,     Qt::Key_Up,  Qt::Key_Down,
        Qt::Key_Home,      Qt::Key_End,      Qt::Key_Return, Qt::Key_Enter,     Qt::Key_Tab, Qt::Key_Backtab,
        Qt::Key_PageUp,    Qt::Key_PageDown, Qt::Key_Escape, Qt::Key_Dead_Acute};
    for (const Qt::Key key : used) {
        EXPECT_FALSE(overridesShortcut(key)) << key;
    }
    EXPECT_FALSE(overridesShortcut(Qt::Key_S, {}, "s"));
    open();
    EXPECT_TRUE(overridesShortcut(Qt::Key_S, {}, "s"));
    EXPECT_TRUE(overridesShortcut(Qt::Key_S, Qt::ShiftModifier, "S"));
    for (const Qt::Key key : used) {
        EXPECT_TRUE(overridesShortcut(key)) << key;
        EXPECT_TRUE(overridesShortcut(key, Qt::ShiftModifier)) << key;
        EXPECT_TRUE(overridesShortcut(key, Qt::KeypadModifier)) << key;
    }
    for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Left, Qt::Key_Right, Qt::Key_V}) {
        EXPECT_TRUE(overridesShortcut(key, Qt::ControlModifier, "\x16")) << key;
        EXPECT_TRUE(overridesShortcut(key, Qt::ControlModifier | Qt::ShiftModifier)) << key;
    }
    EXPECT_EQ("", input());
}

using Combination = std::pair<Qt::Key, Qt::KeyboardModifiers>;

const std::vector<Combination> kOfTheHost = {
    {Qt::Key_F11, {}},
    {Qt::Key_F11, Qt::ShiftModifier},
    {Qt::Key_Q, Qt::ControlModifier},
    {Qt::Key_C, Qt::ControlModifier},
    {Qt::Key_F4, Qt::AltModifier},
    {Qt::Key_Tab, Qt::ControlModifier},
    {Qt::Key_Tab, Qt::AltModifier},
    {Qt::Key_Tab, Qt::MetaModifier},
    {Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier},
    {Qt::Key_Return, Qt::ControlModifier},
    {Qt::Key_Return, Qt::AltModifier},
    {Qt::Key_Home, Qt::ControlModifier},
    {Qt::Key_PageUp, Qt::ControlModifier},
    {Qt::Key_Escape, Qt::ControlModifier},
    {Qt::Key_Left, Qt::AltModifier},
    {Qt::Key_Left, Qt::ControlModifier | Qt::AltModifier},
    {Qt::Key_Left, Qt::MetaModifier},
    {Qt::Key_V, Qt::MetaModifier},
    {Qt::Key_QuoteLeft, Qt::ControlModifier},
    {Qt::Key_Shift, Qt::ShiftModifier},
    {Qt::Key_Control, Qt::ControlModifier},
    {Qt::Key_Alt, Qt::AltModifier},
    {Qt::Key_CapsLock, {}},
    {Qt::Key_MediaPlay, {}},
};

TEST_F(ConsoleHostKeys, ThatTheConsoleHasNoUseForReachTheHost)
{
    open();
    type("ab");
    for (const auto& [key, modifiers] : kOfTheHost) {
        EXPECT_FALSE(overridesShortcut(key, modifiers)) << key << ' ' << modifiers;
        window.received.clear();
        click(key, modifiers);
        EXPECT_EQ(2u, window.received.size()) << key << ' ' << modifiers;
    }
    EXPECT_TRUE(console->isOpen());
    EXPECT_EQ("ab", input());
    EXPECT_EQ(2u, console->cursorPosition());
    EXPECT_EQ(Received(), log());
}

TEST_F(ConsoleHostKeys, OfTheHostsShortcutsActivateThemWhileTheConsoleIsOpen)
{
    QShortcut fullScreen(QKeySequence(Qt::Key_F11), &window);
    QShortcut quit(QKeySequence(Qt::CTRL | Qt::Key_Q), &window);
    QSignalSpy fullScreens(&fullScreen, &QShortcut::activated);
    QSignalSpy quits(&quit, &QShortcut::activated);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    open();
    QTest::keyClick(&window, Qt::Key_F11);
    QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(1, fullScreens.size());
    EXPECT_EQ(1, quits.size());
    EXPECT_EQ("", input());
}

TEST_F(ConsoleHostKeys, TypeWithAltGrWhereAShortcutHasTheSameKey)
{
    QGuiApplication::clipboard()->setText("pasted");
    open();
    click(Qt::Key_V, Qt::ControlModifier | Qt::AltModifier, "\u201c"); // AltGr on Windows
    EXPECT_EQ("\u201c", input());
}

TEST_F(ConsoleHostKeys, ThatRepeatOverrideShortcutsAsTheirPressDid)
{
    const auto overridesRepeating = [this](Qt::Key key) {
        QKeyEvent event(QEvent::ShortcutOverride, key, Qt::NoModifier, 0, 0, 0, {}, true);
        event.ignore();
        QCoreApplication::sendEvent(&window, &event);
        return event.isAccepted();
    };
    sendKey(window, QEvent::KeyPress, Qt::Key_Left);
    open();
    EXPECT_FALSE(overridesRepeating(Qt::Key_Left));
    sendKey(window, QEvent::KeyPress, Qt::Key_Right);
    host.setOpen(false);
    EXPECT_TRUE(overridesRepeating(Qt::Key_Right));
    EXPECT_FALSE(overridesRepeating(Qt::Key_Up));
}

TEST_F(ConsoleHostKeys, OfOtherObjectsAreLeftAlone)
{
    RecordingWindow other;
    other.installEventFilter(&host); // as a host may have done by mistake
    open();
    sendKey(other, QEvent::KeyPress, Qt::Key_A, {}, "a");
    EXPECT_EQ((Received{"press A"}), other.received);
    EXPECT_EQ("", input());
}

TEST_F(ConsoleHostKeys, TypesNothingWithAHeldToggleKeyThatShiftJoins)
{
    sendKey(window, QEvent::KeyPress, Qt::Key_QuoteLeft, Qt::NoModifier, "`", 49);
    ASSERT_TRUE(console->isOpen());
    sendKey(window, QEvent::KeyPress, Qt::Key_Shift, Qt::ShiftModifier, {}, 50);
    sendKey(window, QEvent::KeyPress, Qt::Key_AsciiTilde, Qt::ShiftModifier, "~", 49, 0, true);
    EXPECT_EQ("", input());
    EXPECT_TRUE(console->isOpen());
}

} // namespace
} // namespace zephyr::test
