#include "support/AssertRecorder.h"
#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/KeyTable.h"
#include "support/LogLine.h"
#include "support/PrivateMember.h"
#include "support/ScriptedCommand.h"
#include "support/SeenLine.h"
#include "zephyr/common/Angle.h"
#include "zephyr/console/Console.h"

#include <QClipboard>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QMetaType>
#include <QMimeData>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <Qt>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <ostream>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using namespace test;
using Lines = std::vector<LogLine>;

constexpr std::array<std::pair<int, int>, 17> kQtCodes = {{{KeyBackspace, Qt::Key_Backspace},
                                                           {KeyDelete, Qt::Key_Delete},
                                                           {KeyLeft, Qt::Key_Left},
                                                           {KeyRight, Qt::Key_Right},
                                                           {KeyHome, Qt::Key_Home},
                                                           {KeyEnd, Qt::Key_End},
                                                           {KeyReturn, Qt::Key_Return},
                                                           {KeyEnter, Qt::Key_Enter},
                                                           {KeyUp, Qt::Key_Up},
                                                           {KeyDown, Qt::Key_Down},
                                                           {KeyV, Qt::Key_V},
                                                           {KeyTab, Qt::Key_Tab},
                                                           {KeyBacktab, Qt::Key_Backtab},
                                                           {KeyPageUp, Qt::Key_PageUp},
                                                           {KeyPageDown, Qt::Key_PageDown},
                                                           {KeyBackQuote, Qt::Key_QuoteLeft},
                                                           {kControl, Qt::ControlModifier}}};
static_assert(std::all_of(kQtCodes.begin(), kQtCodes.end(),
                          [](const auto& code) { return code.first == code.second; }));

constexpr std::size_t kBufferSize = 2048;

class ConsoleKeys : public testing::Test
{
protected:
    ConsoleKeys() { mConsole.open(); }

    SeenLine line() const { return inputLine(mConsole); }

    std::size_t bufferSize() const { return inputBuffer(mConsole).size(); }

    bool typeOne(const std::u32string& text) { return mConsole.keyPressed(KeyA, 0, text); }

    void type(std::size_t count, char32_t c = U'x')
    {
        for (std::size_t i = 0; i < count; ++i) {
            typeOne(std::u32string(1, c));
        }
    }

    /// An input line of `text` with the cursor at `cursor`.
    void showLine(const std::string& text, unsigned cursor)
    {
        mConsole.open();
        mDriver.type(text);
        mDriver.press(KeyHome);
        for (unsigned i = 0; i < cursor; ++i) {
            mDriver.press(KeyRight);
        }
    }

    SeenLine after(int key, int modifiers = 0)
    {
        EXPECT_TRUE(mDriver.press(key, modifiers));
        return line();
    }

    /// Whether a code point is refused as one too many.
    bool isFull() { return !pressOrRefuse(mConsole, KeyA, 0, U"y").has_value(); }

    std::uint32_t scrollOffset() const { return mConsole.snapshot().scrollOffset(); }

    /// Scrolls 5 entries back in a log of more than 20.
    void scrollBack()
    {
        for (int i = 0; i < 20; ++i) {
            mConsole.newline();
        }
        mConsole.mouseWheel(Angle(50), Angle(0));
        ASSERT_EQ(scrollOffset(), 5U);
    }

    static void copy(const std::u32string& text)
    {
        QGuiApplication::clipboard()->setText(QString::fromStdU32String(text));
    }

    Console mConsole;
    ConsoleDriver mDriver{mConsole};
};

// Opening and closing

TEST_F(ConsoleKeys, BackQuoteOpensAClosedConsole)
{
    mConsole.close();
    EXPECT_TRUE(mConsole.keyPressed(96, 0, U"`"));
    EXPECT_TRUE(mConsole.isOpen());
    EXPECT_EQ(line(), (SeenLine{"", 0}));
}

TEST_F(ConsoleKeys, BackQuoteClosesAnOpenConsoleAndTypesNothing)
{
    mDriver.type("ab");
    EXPECT_TRUE(mConsole.keyPressed(96, 0, U"`"));
    EXPECT_FALSE(mConsole.isOpen());
    EXPECT_EQ(line(), (SeenLine{"ab", 2}));
}

TEST_F(ConsoleKeys, BackQuoteTogglesWhateverModifiersAreHeld)
{
    for (const int modifiers : {kControl, kShift, kControl | kShift}) {
        EXPECT_TRUE(mConsole.keyPressed(KeyBackQuote, modifiers, U"`"));
        EXPECT_FALSE(mConsole.isOpen());
        EXPECT_TRUE(mConsole.keyPressed(KeyBackQuote, modifiers, U"`"));
        EXPECT_TRUE(mConsole.isOpen());
    }
}

TEST_F(ConsoleKeys, OpeningWithTheBackQuoteEmptiesAHalfTypedLine)
{
    mDriver.type("ab");
    mDriver.press(KeyBackQuote);
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(line(), (SeenLine{"", 0}));
}

TEST_F(ConsoleKeys, OpeningZeroesTheBufferAtTheSizeItHas)
{
    mDriver.type("abc");
    for (int i = 0; i < 3; ++i) {
        mDriver.press(KeyBackspace);
    }
    mDriver.type("def");
    mDriver.press(KeyBackQuote);
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(inputBuffer(mConsole), std::u32string(2045, U'\0'));
}

TEST_F(ConsoleKeys, OpeningAgainByCallZeroesTheBufferAtTheSizeItHas)
{
    mDriver.type("abc");
    mDriver.press(KeyBackspace);
    mConsole.open();
    EXPECT_EQ(inputBuffer(mConsole), std::u32string(2047, U'\0'));
    EXPECT_EQ(line(), (SeenLine{"", 0}));
}

TEST_F(ConsoleKeys, AClosedConsoleConsumesNoOtherKeyAndChangesNothing)
{
    mDriver.type("ab\nabc");
    mDriver.press(KeyLeft);
    scrollBack();
    mConsole.setWindowSize({800, 600});
    copy(U"pasted");
    mConsole.close();
    const Lines before = logLines(mConsole);
    for (const int key : kKeys) {
        for (const int modifiers : {0, kControl}) {
            EXPECT_FALSE(mConsole.keyPressed(key, modifiers, U"z")) << key;
            EXPECT_EQ(line(), (SeenLine{"abc", 2})) << key;
            EXPECT_EQ(scrollOffset(), 5U) << key;
        }
    }
    EXPECT_FALSE(mConsole.isOpen());
    EXPECT_EQ(logLines(mConsole), before);
}

TEST_F(ConsoleKeys, ReleasingAKeyOnlyTellsWhetherTheConsoleIsOpen)
{
    mDriver.type("ab");
    scrollBack();
    for (const int key : {int(KeyBackQuote), int(KeyBackspace), int(KeyA), int(KeyReturn)}) {
        EXPECT_TRUE(mConsole.keyReleased(key, 0, U"z"));
    }
    EXPECT_EQ(line(), (SeenLine{"ab", 2}));
    EXPECT_EQ(scrollOffset(), 5U);
    mConsole.close();
    EXPECT_FALSE(mConsole.keyReleased(KeyBackQuote, 0, U"`"));
    EXPECT_FALSE(mConsole.isOpen());
}

// What is consumed, and what the scroll position does

TEST_F(ConsoleKeys, EveryKeyButTabIsConsumedWhileOpen)
{
    copy(U"");
    for (const int key : kKeys) {
        for (const int modifiers : {0, kControl, kEveryModifierButControl}) {
            const bool completes = key == KeyTab || key == KeyBacktab;
            EXPECT_EQ(mConsole.keyPressed(key, modifiers, {}), !completes) << key;
        }
    }
}

TEST_F(ConsoleKeys, EveryEditingKeyReturnsToTheNewestLines)
{
    copy(U"");
    const std::vector<std::pair<int, int>> keys = {
        {KeyBackspace, 0}, {KeyDelete, 0}, {KeyLeft, 0}, {KeyRight, 0}, {KeyHome, 0},    {KeyEnd, 0},
        {KeyReturn, 0},    {KeyEnter, 0},  {KeyUp, 0},   {KeyDown, 0},  {KeyV, kControl}};
    for (const auto& [key, modifiers] : keys) {
        scrollBack();
        EXPECT_TRUE(mDriver.press(key, modifiers));
        EXPECT_EQ(scrollOffset(), 0U) << key;
    }
}

TEST_F(ConsoleKeys, TypingReturnsToTheNewestLines)
{
    scrollBack();
    EXPECT_TRUE(typeOne(U"a"));
    EXPECT_EQ(scrollOffset(), 0U);
}

TEST_F(ConsoleKeys, AKeyThatTypesNothingChangesNothing)
{
    mDriver.type("ab");
    scrollBack();
    for (const int key : {int(KeyA), int(KeyV), int(KeyEscape), int(Qt::Key_Shift), int(Qt::Key_F1), 0, -1}) {
        EXPECT_TRUE(mConsole.keyPressed(key, 0, {}));
        EXPECT_EQ(scrollOffset(), 5U);
        EXPECT_EQ(line(), (SeenLine{"ab", 2}));
    }
}

TEST_F(ConsoleKeys, CompletionKeepsTheScrollPosition)
{
    addCompletingCommand(mConsole, U"cmd", {U"alpha"});
    mDriver.type("cmd a");
    scrollBack();
    EXPECT_FALSE(mDriver.press(KeyTab));
    EXPECT_TRUE(mDriver.press(KeyTab));
    EXPECT_TRUE(mDriver.press(KeyBacktab));
    EXPECT_EQ(scrollOffset(), 5U);
}

TEST_F(ConsoleKeys, ATabThatCompletesNothingKeepsTheScrollPosition)
{
    scrollBack();
    EXPECT_FALSE(mDriver.press(KeyTab));
    EXPECT_FALSE(mDriver.press(KeyBacktab));
    EXPECT_EQ(scrollOffset(), 5U);
}

TEST_F(ConsoleKeys, TheToggleKeepsTheScrollPosition)
{
    scrollBack();
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(scrollOffset(), 5U);
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(scrollOffset(), 5U);
}

// Paging

class ConsolePaging : public ConsoleKeys
{
protected:
    /// A log of 100 entries, of which a page shows 10.
    ConsolePaging()
    {
        const AssertRecorder recorder; // the page size is asked with a font, so that nothing is reported
        for (int i = 2; i < 100; ++i) {
            mConsole.newline();
        }
        mConsole.setWindowSize({800, 10 * unsigned(QFontMetrics(*sharedFont(mConsole)).height())});
        EXPECT_TRUE(recorder.failures().empty());
    }
};

TEST_F(ConsolePaging, PageUpGoesBackByAPage)
{
    EXPECT_TRUE(mDriver.press(KeyPageUp));
    EXPECT_EQ(scrollOffset(), 10U);
    EXPECT_TRUE(mDriver.press(KeyPageUp));
    EXPECT_EQ(scrollOffset(), 20U);
}

TEST_F(ConsolePaging, PageUpStopsWhereTheOldestPageIsInView)
{
    for (int i = 0; i < 12; ++i) {
        EXPECT_TRUE(mDriver.press(KeyPageUp));
    }
    EXPECT_EQ(scrollOffset(), 90U);
}

TEST_F(ConsolePaging, PageDownGoesForwardByAPageAndStopsAtTheNewest)
{
    mConsole.mouseWheel(Angle(150), Angle(0));
    EXPECT_TRUE(mDriver.press(KeyPageDown));
    EXPECT_EQ(scrollOffset(), 5U);
    EXPECT_TRUE(mDriver.press(KeyPageDown));
    EXPECT_EQ(scrollOffset(), 0U);
    EXPECT_TRUE(mDriver.press(KeyPageDown));
    EXPECT_EQ(scrollOffset(), 0U);
}

TEST_F(ConsolePaging, PagingIgnoresModifiersAndTypedText)
{
    EXPECT_TRUE(mConsole.keyPressed(KeyPageUp, kControl | kShift, U"z"));
    EXPECT_EQ(scrollOffset(), 10U);
    EXPECT_TRUE(mConsole.keyPressed(KeyPageDown, kControl | kShift, U"z"));
    EXPECT_EQ(scrollOffset(), 0U);
    EXPECT_EQ(line(), (SeenLine{"", 0}));
}

TEST_F(ConsolePaging, AWindowOfNoSizeHasPagesOfNoLines)
{
    mConsole.setWindowSize({0, 0});
    mConsole.mouseWheel(Angle(50), Angle(0));
    EXPECT_TRUE(mDriver.press(KeyPageUp));
    EXPECT_EQ(scrollOffset(), 5U);
    EXPECT_TRUE(mDriver.press(KeyPageDown));
    EXPECT_EQ(scrollOffset(), 5U);
}

TEST_F(ConsolePaging, AWindowLargerThanTheLogDoesNotScroll)
{
    mConsole.setWindowSize({1, std::numeric_limits<unsigned>::max()});
    EXPECT_TRUE(mDriver.press(KeyPageUp));
    EXPECT_EQ(scrollOffset(), 0U);
    EXPECT_TRUE(mDriver.press(KeyPageDown));
    EXPECT_EQ(scrollOffset(), 0U);
}

// Typing

TEST_F(ConsoleKeys, TypingAppendsAndMovesTheCursor)
{
    EXPECT_TRUE(typeOne(U"a"));
    EXPECT_EQ(line(), (SeenLine{"a", 1}));
    EXPECT_TRUE(typeOne(U"b"));
    EXPECT_EQ(line(), (SeenLine{"ab", 2}));
}

TEST_F(ConsoleKeys, TypingInTheMiddleInserts)
{
    showLine("abc", 1);
    typeOne(U"x");
    EXPECT_EQ(line(), (SeenLine{"axbc", 2}));
    typeOne(U"y");
    EXPECT_EQ(line(), (SeenLine{"axybc", 3}));
}

TEST_F(ConsoleKeys, TypingAtTheStartInserts)
{
    showLine("abc", 0);
    typeOne(U"x");
    EXPECT_EQ(line(), (SeenLine{"xabc", 1}));
}

TEST_F(ConsoleKeys, AKeyTypesItsFirstCodePointOnly)
{
    EXPECT_TRUE(typeOne(U"xy"));
    EXPECT_EQ(line(), (SeenLine{"x", 1}));
    mDriver.press(KeyHome);
    EXPECT_TRUE(typeOne(U"yz"));
    EXPECT_EQ(line(), (SeenLine{"yx", 1}));
}

TEST_F(ConsoleKeys, ACodePointIsOneStepWhateverItLooksLike)
{
    mDriver.type("e\u0301\U0001F680"); // e, a combining acute accent, a rocket
    EXPECT_EQ(line(), (SeenLine{"e\u0301\U0001F680", 3}));
    EXPECT_EQ(after(KeyLeft), (SeenLine{"e\u0301\U0001F680", 2}));
    EXPECT_EQ(after(KeyBackspace), (SeenLine{"e\U0001F680", 1}));
    EXPECT_EQ(after(KeyDelete), (SeenLine{"e", 1}));
}

TEST_F(ConsoleKeys, NoCodePointIsFiltered)
{
    const std::u32string odd = {
        U'\n', U'\t', U'\0', U'\x1b', U'\x7f', U'\uFFFF', char32_t(0xD800), char32_t(0x110000)};
    for (const char32_t c : odd) {
        EXPECT_TRUE(typeOne(std::u32string(1, c)));
    }
    EXPECT_EQ(mConsole.activeInput(), odd);
    EXPECT_EQ(mConsole.cursorPosition(), odd.size());
}

TEST_F(ConsoleKeys, TextTypesWhateverModifiersAreHeld)
{
    EXPECT_TRUE(mConsole.keyPressed(KeyA, kShift, U"A"));
    EXPECT_TRUE(mConsole.keyPressed(KeyA, kControl, U"b"));
    EXPECT_TRUE(mConsole.keyPressed(KeyA, kEveryModifierButControl, U"c"));
    EXPECT_EQ(line(), (SeenLine{"Abc", 3}));
}

TEST_F(ConsoleKeys, AKeyWithAMeaningDoesNotTypeItsText)
{
    copy(U"");
    for (const int key : kKeys) {
        const bool types = key == KeyA || key == KeyEscape;
        if (!types) {
            mConsole.keyPressed(key, kControl, U"z");
            EXPECT_EQ(line(), (SeenLine{"", 0})) << key;
        }
    }
    EXPECT_EQ(inputBuffer(mConsole), std::u32string(kBufferSize, U'\0'));
}

// Pasting

TEST_F(ConsoleKeys, CtrlVPastesTheClipboard)
{
    copy(U"pasted");
    showLine("ab", 1);
    EXPECT_TRUE(mConsole.keyPressed(KeyV, kControl, U"\x16"));
    EXPECT_EQ(line(), (SeenLine{"apastedb", 7}));
}

TEST_F(ConsoleKeys, PastingFiltersNothing)
{
    copy(U"a\n\tb\U0001F680");
    EXPECT_EQ(after(KeyV, kControl), (SeenLine{"a\n\tb\U0001F680", 5}));
    EXPECT_EQ(mDriver.log(), std::vector<std::string>());
}

TEST_F(ConsoleKeys, PastingAnEmptyClipboardTypesNothing)
{
    QGuiApplication::clipboard()->clear();
    mDriver.type("ab");
    EXPECT_EQ(after(KeyV, kControl), (SeenLine{"ab", 2}));
}

TEST_F(ConsoleKeys, CtrlWithOtherModifiersPastesToo)
{
    copy(U"p");
    EXPECT_EQ(after(KeyV, kControl | kEveryModifierButControl), (SeenLine{"p", 1}));
}

TEST_F(ConsoleKeys, VWithoutCtrlIsTyped)
{
    copy(U"pasted");
    EXPECT_TRUE(mConsole.keyPressed(KeyV, 0, U"v"));
    EXPECT_TRUE(mConsole.keyPressed(KeyV, kEveryModifierButControl, U"V"));
    EXPECT_EQ(line(), (SeenLine{"vV", 2}));
}

TEST_F(ConsoleKeys, PastingMoreThanFitsKeepsWhatFitted)
{
    type(kBufferSize - 2);
    copy(U"abc");
    EXPECT_FALSE(pressOrRefuse(mConsole, KeyV, kControl, {}).has_value());
    EXPECT_EQ(mConsole.activeInput(), std::u32string(kBufferSize - 2, U'x') + U"ab");
    EXPECT_EQ(mConsole.cursorPosition(), kBufferSize);
}

/// What another program offers on the clipboard: it is asked for its text when somebody pastes.
class AskedMimeData : public QMimeData
{
public:
    explicit AskedMimeData(std::function<void()> asked) : mAsked(std::move(asked)) {}

    QStringList formats() const override { return {QStringLiteral("text/plain")}; }

    bool hasFormat(const QString& type) const override { return formats().contains(type); }

protected:
    QVariant retrieveData(const QString&, QMetaType) const override
    {
        mAsked();
        return QStringLiteral("late");
    }

private:
    std::function<void()> mAsked;
};

TEST_F(ConsoleKeys, NoLockIsHeldWhileTheClipboardAnswers)
{
    int asked = 0;
    QGuiApplication::clipboard()->setMimeData(new AskedMimeData([this, &asked] {
        ++asked;
        EXPECT_NO_THROW(mConsole.snapshot());
    }));
    EXPECT_EQ(after(KeyV, kControl), (SeenLine{"late", 4}));
    QGuiApplication::clipboard()->clear();
    EXPECT_GT(asked, 0);
}

// Moving

TEST_F(ConsoleKeys, LeftAndRightMoveByOneCodePointAndStopAtTheEnds)
{
    showLine("ab", 0);
    EXPECT_EQ(after(KeyLeft), (SeenLine{"ab", 0}));
    EXPECT_EQ(after(KeyRight), (SeenLine{"ab", 1}));
    EXPECT_EQ(after(KeyRight), (SeenLine{"ab", 2}));
    EXPECT_EQ(after(KeyRight), (SeenLine{"ab", 2}));
    EXPECT_EQ(after(KeyLeft), (SeenLine{"ab", 1}));
    EXPECT_EQ(after(KeyLeft), (SeenLine{"ab", 0}));
}

TEST_F(ConsoleKeys, HomeAndEndGoToTheEnds)
{
    showLine("abc", 1);
    EXPECT_EQ(after(KeyHome), (SeenLine{"abc", 0}));
    EXPECT_EQ(after(KeyEnd), (SeenLine{"abc", 3}));
    EXPECT_EQ(after(KeyHome, kControl), (SeenLine{"abc", 0}));
    EXPECT_EQ(after(KeyEnd, kControl), (SeenLine{"abc", 3}));
}

TEST_F(ConsoleKeys, OnlyCtrlMovesByWords)
{
    showLine("foo bar", 7);
    EXPECT_EQ(after(KeyLeft, kEveryModifierButControl).cursor, 6U);
    EXPECT_EQ(after(KeyRight, kEveryModifierButControl).cursor, 7U);
    EXPECT_EQ(after(KeyLeft, kControl | kEveryModifierButControl).cursor, 4U);
    EXPECT_EQ(after(KeyRight, kControl | kEveryModifierButControl).cursor, 7U);
}

struct WordStarts
{
    std::string line;
    std::vector<unsigned> next; // for each position from 0 to the length
    std::vector<unsigned> previous;
};

void PrintTo(const WordStarts& words, std::ostream* out) { *out << words.line; }

class ConsoleWords : public ConsoleKeys, public testing::WithParamInterface<WordStarts>
{};

TEST_P(ConsoleWords, CtrlRightGoesToTheNextWord)
{
    for (unsigned pos = 0; pos < GetParam().next.size(); ++pos) {
        showLine(GetParam().line, pos);
        EXPECT_EQ(after(KeyRight, kControl), (SeenLine{GetParam().line, GetParam().next[pos]})) << pos;
    }
}

TEST_P(ConsoleWords, CtrlLeftGoesToTheStartOfAWord)
{
    for (unsigned pos = 0; pos < GetParam().previous.size(); ++pos) {
        showLine(GetParam().line, pos);
        EXPECT_EQ(after(KeyLeft, kControl), (SeenLine{GetParam().line, GetParam().previous[pos]})) << pos;
    }
}

TEST_P(ConsoleWords, CtrlDeleteErasesUpToTheNextWord)
{
    const std::u32string text = StringUtil::toU32String(GetParam().line);
    for (unsigned pos = 0; pos < GetParam().next.size(); ++pos) {
        showLine(GetParam().line, pos);
        const std::size_t size = bufferSize();
        const unsigned count = GetParam().next[pos] - pos;
        const std::u32string rest = text.substr(0, pos) + text.substr(pos + count);
        EXPECT_EQ(after(KeyDelete, kControl), (SeenLine{StringUtil::toString(rest), pos})) << pos;
        EXPECT_EQ(bufferSize(), size - count);
    }
}

TEST_P(ConsoleWords, CtrlBackspaceErasesBackToTheStartOfAWord)
{
    const std::u32string text = StringUtil::toU32String(GetParam().line);
    for (unsigned pos = 0; pos < GetParam().previous.size(); ++pos) {
        showLine(GetParam().line, pos);
        const std::size_t size = bufferSize();
        const unsigned start = GetParam().previous[pos];
        const std::u32string rest = text.substr(0, start) + text.substr(pos);
        EXPECT_EQ(after(KeyBackspace, kControl), (SeenLine{StringUtil::toString(rest), start})) << pos;
        EXPECT_EQ(bufferSize(), size - (pos - start));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ConsoleWords,
    testing::Values(
        WordStarts{"", {0}, {0}}, WordStarts{"ab", {2, 2, 2}, {0, 0, 0}},
        WordStarts{"  ", {2, 2, 2}, {0, 0, 0}}, WordStarts{"ab cd", {3, 3, 3, 5, 5, 5}, {0, 0, 0, 0, 3, 3}},
        WordStarts{"ab ", {3, 3, 3, 3}, {0, 0, 0, 0}}, WordStarts{" ab", {1, 3, 3, 3}, {0, 0, 1, 1}},
        WordStarts{"a  b", {3, 3, 3, 4, 4}, {0, 0, 0, 0, 3}}, WordStarts{"a_b", {2, 2, 3, 3}, {0, 0, 0, 2}},
        WordStarts{"a1b", {2, 2, 3, 3}, {0, 0, 0, 2}}, WordStarts{"123", {3, 3, 3, 3}, {0, 0, 0, 0}},
        WordStarts{"12a", {2, 2, 3, 3}, {0, 0, 0, 2}}, WordStarts{"a\u00E9b", {2, 2, 3, 3}, {0, 0, 0, 2}},
        WordStarts{"azAZ@[`{m", {8, 8, 8, 8, 8, 8, 8, 8, 9, 9}, {0, 0, 0, 0, 0, 0, 0, 0, 0, 8}}));

TEST_F(ConsoleKeys, WordsAreRunsOfTheFiftyTwoLetters)
{
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    showLine(letters, 0);
    EXPECT_EQ(after(KeyRight, kControl).cursor, 52U);
    EXPECT_EQ(after(KeyLeft, kControl).cursor, 0U);
}

TEST_F(ConsoleKeys, EveryOtherCodePointSeparatesWords)
{
    for (char32_t c = 1; c < 0x180; ++c) {
        const bool letter = (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
        mConsole.open();
        for (const char32_t typed : {U'a', c, U'b'}) {
            typeOne(std::u32string(1, typed));
        }
        EXPECT_EQ(after(KeyLeft, kControl).cursor, letter ? 0U : 2U) << unsigned(c);
    }
}

TEST_F(ConsoleKeys, TheUnderscoreSeparatesWords)
{
    showLine("abc_def", 0);
    EXPECT_EQ(after(KeyRight, kControl), (SeenLine{"abc_def", 4}));
}

TEST_F(ConsoleKeys, WordKeysWorkAlongALineOfThreeWords)
{
    showLine("set foo bar", 11);
    EXPECT_EQ(after(KeyBackspace, kControl), (SeenLine{"set foo ", 8}));
    EXPECT_EQ(after(KeyLeft, kControl), (SeenLine{"set foo ", 4}));
    mDriver.press(KeyHome);
    EXPECT_EQ(after(KeyRight, kControl), (SeenLine{"set foo ", 4}));
}

// Erasing

TEST_F(ConsoleKeys, BackspaceErasesBeforeTheCursor)
{
    showLine("abc", 2);
    EXPECT_EQ(after(KeyBackspace), (SeenLine{"ac", 1}));
    EXPECT_EQ(after(KeyBackspace), (SeenLine{"c", 0}));
    EXPECT_EQ(after(KeyBackspace), (SeenLine{"c", 0}));
    EXPECT_EQ(after(KeyBackspace, kControl), (SeenLine{"c", 0}));
}

TEST_F(ConsoleKeys, DeleteErasesAfterTheCursor)
{
    showLine("abc", 1);
    EXPECT_EQ(after(KeyDelete), (SeenLine{"ac", 1}));
    EXPECT_EQ(after(KeyDelete), (SeenLine{"a", 1}));
    EXPECT_EQ(after(KeyDelete), (SeenLine{"a", 1}));
    EXPECT_EQ(after(KeyDelete, kControl), (SeenLine{"a", 1}));
}

TEST_F(ConsoleKeys, OnlyCtrlErasesWords)
{
    showLine("foo bar", 4);
    EXPECT_EQ(after(KeyDelete, kEveryModifierButControl), (SeenLine{"foo ar", 4}));
    EXPECT_EQ(after(KeyBackspace, kEveryModifierButControl), (SeenLine{"fooar", 3}));
    EXPECT_EQ(after(KeyBackspace, kControl | kEveryModifierButControl), (SeenLine{"ar", 0}));
    EXPECT_EQ(after(KeyDelete, kControl | kEveryModifierButControl), (SeenLine{"", 0}));
}

// The buffer and its limit

TEST_F(ConsoleKeys, TheBufferStartsAt2048CodePointsOfZero)
{
    EXPECT_EQ(inputBuffer(Console()), std::u32string(2048, U'\0'));
}

TEST_F(ConsoleKeys, TypingAtTheEndLeavesTheBufferSize)
{
    type(100);
    EXPECT_EQ(bufferSize(), kBufferSize);
}

TEST_F(ConsoleKeys, InsertingGrowsTheBufferByOne)
{
    showLine("ab", 1);
    typeOne(U"x");
    EXPECT_EQ(bufferSize(), kBufferSize + 1);
    typeOne(U"y");
    EXPECT_EQ(bufferSize(), kBufferSize + 2);
}

TEST_F(ConsoleKeys, EachErasureShrinksTheBuffer)
{
    showLine("foo bar baz", 5);
    mDriver.press(KeyBackspace);
    EXPECT_EQ(bufferSize(), kBufferSize - 1);
    mDriver.press(KeyDelete);
    EXPECT_EQ(bufferSize(), kBufferSize - 2);
    mDriver.press(KeyBackspace, kControl);
    EXPECT_EQ(bufferSize(), kBufferSize - 6);
    mDriver.press(KeyDelete, kControl);
    EXPECT_EQ(bufferSize(), kBufferSize - 8);
    EXPECT_EQ(line(), (SeenLine{"baz", 0}));
}

TEST_F(ConsoleKeys, KeysThatDoNotEditLeaveTheBufferSize)
{
    copy(U"");
    mDriver.type("foo bar\nfoo");
    for (const int key : kKeys) {
        const bool erases = key == KeyBackspace || key == KeyDelete;
        if (!erases) {
            mDriver.press(key);
            mDriver.press(key, kControl);
        }
    }
    mDriver.press(KeyEnd);
    mDriver.press(KeyDelete);
    mDriver.press(KeyHome);
    mDriver.press(KeyBackspace);
    EXPECT_EQ(bufferSize(), kBufferSize);
}

TEST_F(ConsoleKeys, AFreshLineHolds2048CodePoints)
{
    type(kBufferSize);
    EXPECT_TRUE(isFull());
    EXPECT_EQ(mConsole.activeInput(), std::u32string(kBufferSize, U'x'));
}

TEST_F(ConsoleKeys, ThreeErasuresLowerTheLimitByThree)
{
    mDriver.type("abc");
    for (int i = 0; i < 3; ++i) {
        mDriver.press(KeyBackspace);
    }
    EXPECT_EQ(line(), (SeenLine{"", 0}));
    EXPECT_EQ(bufferSize(), 2045U);
    type(2045);
    EXPECT_TRUE(isFull());
    EXPECT_EQ(line(), (SeenLine{std::string(2045, 'x'), 2045}));
}

TEST_F(ConsoleKeys, AnInsertionRaisesTheLimitByOne)
{
    showLine("ab", 1);
    typeOne(U"x");
    mDriver.press(KeyEnd);
    type(kBufferSize + 1 - 3);
    EXPECT_TRUE(isFull());
    EXPECT_EQ(mConsole.cursorPosition(), kBufferSize + 1);
}

TEST_F(ConsoleKeys, AFullLineStillTakesInsertionsInItsMiddle)
{
    type(kBufferSize);
    mDriver.press(KeyLeft);
    typeOne(U"y");
    EXPECT_EQ(mConsole.activeInput(), std::u32string(kBufferSize - 1, U'x') + U"yx");
    EXPECT_EQ(mConsole.cursorPosition(), kBufferSize);
    mDriver.press(KeyEnd);
    EXPECT_TRUE(isFull());
}

TEST_F(ConsoleKeys, NeitherOpeningNorEnterRestoresTheLimit)
{
    mDriver.type("abc");
    mDriver.press(KeyBackspace, kControl);
    mDriver.press(KeyBackQuote);
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(bufferSize(), 2045U);
    mDriver.type("abc\n");
    EXPECT_EQ(bufferSize(), 2045U);
    type(2045);
    EXPECT_TRUE(isFull());
}

TEST_F(ConsoleKeys, ABufferErasedAwayRefusesEverything)
{
    type(kBufferSize);
    mDriver.press(KeyBackspace, kControl);
    EXPECT_EQ(bufferSize(), 0U);
    EXPECT_EQ(line(), (SeenLine{"", 0}));
    EXPECT_TRUE(isFull());
    mConsole.open();
    EXPECT_TRUE(isFull());
}

// The refused insertion

TEST_F(ConsoleKeys, ARefusedCodePointLeavesAsDeadlockError)
{
    type(kBufferSize);
    try {
        typeOne(U"y");
        FAIL() << "the code point was not refused";
    } catch (const std::system_error& error) {
        EXPECT_TRUE(error.code() == std::errc::resource_deadlock_would_occur) << error.what();
    }
}

TEST_F(ConsoleKeys, InsertingNothingOrWhileClosedChangesNothing)
{
    type(2);
    const std::u32string before = inputBuffer(mConsole);
    partsOf(mConsole).insertText(U"");
    EXPECT_EQ(line(), (SeenLine{"xx", 2}));
    mConsole.close();
    partsOf(mConsole).insertText(U"y");
    EXPECT_EQ(line(), (SeenLine{"xx", 2}));
    EXPECT_EQ(inputBuffer(mConsole), before);
}

TEST_F(ConsoleKeys, ARefusedCodePointChangesNeitherLineNorBufferNorLog)
{
    type(kBufferSize);
    const std::u32string before = inputBuffer(mConsole);
    EXPECT_TRUE(isFull());
    EXPECT_TRUE(isFull());
    EXPECT_EQ(inputBuffer(mConsole), before);
    EXPECT_EQ(line(), (SeenLine{std::string(kBufferSize, 'x'), kBufferSize}));
    EXPECT_EQ(mDriver.log(), std::vector<std::string>());
}

TEST_F(ConsoleKeys, TheMutexIsFreeAfterARefusedCodePoint)
{
    type(kBufferSize);
    EXPECT_TRUE(isFull());
    EXPECT_NO_THROW(mConsole.snapshot());
    std::thread([this] {
        EXPECT_NO_THROW(mConsole.snapshot());
        EXPECT_NO_THROW(mConsole.newline());
    }).join();
    EXPECT_EQ(mDriver.log(), std::vector<std::string>{""});
}

TEST_F(ConsoleKeys, TheConsoleGoesOnWorkingAfterARefusedCodePoint)
{
    std::vector<std::u32string> words;
    addCommand(mConsole, U"note").onExecute = [&words](const ConsoleArgs& args, Console&) {
        words = wordsOf(args);
    };
    mDriver.type("note ");
    type(kBufferSize - 5);
    EXPECT_TRUE(isFull());
    EXPECT_EQ(after(KeyLeft).cursor, kBufferSize - 1);
    typeOne(U"z");
    EXPECT_EQ(after(KeyBackspace).cursor, kBufferSize - 1);
    EXPECT_TRUE(mDriver.press(KeyReturn));
    EXPECT_EQ(words, (std::vector<std::u32string>{U"note", std::u32string(kBufferSize - 5, U'x')}));
    mDriver.type("note again\n");
    EXPECT_EQ(words, (std::vector<std::u32string>{U"note", U"again"}));
}

TEST_F(ConsoleKeys, AKeyThatTypesNothingIsNotRefusedByAFullLine)
{
    type(kBufferSize);
    EXPECT_TRUE(mConsole.keyPressed(KeyA, 0, {}));
    copy(U"");
    EXPECT_TRUE(mDriver.press(KeyV, kControl));
}

// Submitting

TEST_F(ConsoleKeys, ReturnAndEnterSubmitTheLine)
{
    for (const int key : {KeyReturn, KeyEnter}) {
        std::vector<std::vector<std::u32string>> ran;
        addCommand(mConsole, U"note").onExecute = [&ran](const ConsoleArgs& args, Console&) {
            ran.push_back(wordsOf(args));
        };
        mDriver.type("note a b");
        EXPECT_TRUE(mConsole.keyPressed(key, kControl | kShift, U"\r"));
        EXPECT_EQ(ran, (std::vector<std::vector<std::u32string>>{{U"note", U"a", U"b"}}));
        EXPECT_EQ(line(), (SeenLine{"", 0}));
    }
    EXPECT_EQ(logLines(mConsole), Lines({echo("note a b"), output(""), echo("note a b"), output("")}));
}

TEST_F(ConsoleKeys, TheWholeLineIsSubmittedWhereverTheCursorIs)
{
    showLine("no such", 3);
    EXPECT_TRUE(mDriver.press(KeyReturn));
    EXPECT_EQ(logLines(mConsole), Lines({echo("no such"), output(notRecognized("no")), output("")}));
    EXPECT_EQ(line(), (SeenLine{"", 0}));
}

TEST_F(ConsoleKeys, AnEmptyLineIsEchoedAndNothingElse)
{
    EXPECT_TRUE(mDriver.press(KeyReturn));
    EXPECT_EQ(logLines(mConsole), Lines({echo("")}));
    EXPECT_EQ(line(), (SeenLine{"", 0}));
}

TEST_F(ConsoleKeys, TheLineIsStillShownWhileItsCommandRuns)
{
    SeenLine during{};
    addCommand(mConsole, U"note").onExecute = [&during](const ConsoleArgs&, Console& console) {
        during = inputLine(console);
    };
    mDriver.type("note a\n");
    EXPECT_EQ(during, (SeenLine{"note a", 6}));
}

TEST_F(ConsoleKeys, NoLockIsHeldWhileACommandRuns)
{
    addCommand(mConsole, U"note").onExecute = [](const ConsoleArgs&, Console& console) {
        EXPECT_NO_THROW(console.snapshot());
        EXPECT_NO_THROW(console.newline());
        EXPECT_NO_THROW(console.keyPressed(KeyLeft, 0, {}));
    };
    mDriver.type("note\n");
    EXPECT_EQ(mDriver.log(), (std::vector<std::string>{"note", "", ""}));
}

TEST_F(ConsoleKeys, WhatACommandThrowsLeavesThroughTheKey)
{
    addCommand(mConsole, U"note").onExecute = [](const ConsoleArgs&, Console&) { throw 7; };
    mDriver.type("note");
    EXPECT_THROW(mDriver.press(KeyReturn), int);
    EXPECT_EQ(line(), (SeenLine{"note", 4}));
    EXPECT_NO_THROW(mConsole.snapshot());
}

TEST_F(ConsoleKeys, TheActiveInputIsACopy)
{
    mDriver.type("ab");
    const std::u32string copied = mConsole.activeInput();
    mDriver.type("c");
    EXPECT_EQ(copied, U"ab");
    mConsole.close();
    EXPECT_EQ(mConsole.activeInput(), U"abc");
}

} // namespace
} // namespace zephyr::console
