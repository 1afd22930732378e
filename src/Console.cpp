#include "zephyr/console/Console.h"

#include "AliasConsoleCommand.h"
#include "Answers.h"
#include "AssertReport.h"
#include "Paths.h"
#include "SplitString.h"
#include "zephyr/common/Clipboard.h"
#include "zephyr/common/ExternalProcess.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/common/SystemPaths.h"

#include <QFont>
#include <QFontMetrics>
#include <Qt>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace zephyr::console {

namespace {

const std::u32string kTitle = U"Zephyr Console:";
const std::u32string kUnknownCommandEnd =
    U"' is not a recognized command.  Type 'help' to list available commands.";
const std::u32string kCommandsHeading = U"Registered Commands:";
const std::u32string kAliasesHeading = U"Aliases:";
const std::u32string kEveryCommand = U"*";

constexpr char32_t kWordDelimiter = U' ';
constexpr std::u32string_view kWordChars = U"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kComment = "//";

constexpr std::size_t kInputBufferSize = 2048; // code points
constexpr std::size_t kLogReserve = 2048;      // entries
constexpr std::uint32_t kNoCompletion = 0xFFFFFFFF;
constexpr std::int32_t kNoRecord = -1;
constexpr unsigned kInnerIndent = 8; // spaces

constexpr int kToggleKey = Qt::Key_QuoteLeft;
constexpr double kLinesPerDegree = 0.1;
constexpr unsigned kLinesWithoutFont = 15;

const char* const kFontFamily = "Consolas";
constexpr int kFontPointSize = 10;

static_assert(kToggleKey == 0x60 && Qt::ControlModifier == 0x04000000,
              "Qt's key numbering is the interface's");

bool isCtrl(int modifiers)
{
    return (static_cast<unsigned>(modifiers) & Qt::ControlModifier) != 0;
}

/// A count as the 32 bits that hold it; what is more than they can hold becomes the most that they can.
std::uint32_t count32(std::size_t count)
{
    return static_cast<std::uint32_t>(
        std::min<std::size_t>(count, std::numeric_limits<std::uint32_t>::max()));
}

/// A count of lines as a step for scrolling.
int stepOf(unsigned lines)
{
    return static_cast<int>(std::min<unsigned>(lines, std::numeric_limits<int>::max()));
}

/// The lines that a turn of the wheel by `degrees` scrolls; a turn that is no number scrolls none.
int wheelLines(double degrees)
{
    const double lines = std::round(std::abs(degrees) * kLinesPerDegree);
    if (std::isnan(lines)) {
        return 0;
    }
    constexpr int kMost = std::numeric_limits<int>::max();
    return lines < kMost ? static_cast<int>(lines) : kMost;
}

/// Whether `c` is a byte of ASCII that is to be seen.
bool isVisibleAscii(char c)
{
    return c > ' ' && c < '\x7F';
}

/// A font of the same look that shares nothing with `font`: measuring loads data into a font, and the drawing
/// thread does so with the shared one.
QFont separateCopy(const QFont& font)
{
    QFont copy;
    copy.fromString(font.toString());
    return copy;
}

std::u32string join(const std::vector<std::u32string>& pieces, std::u32string_view separator)
{
    std::u32string joined;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        joined.append(i == 0 ? std::u32string_view() : separator).append(pieces[i]);
    }
    return joined;
}

/// The line `base` with `candidate` in place of its last word, or after it if it ends with a space.
std::u32string completedLine(const std::u32string& base, const std::u32string& candidate)
{
    std::vector<std::u32string> words = splitString(base, kWordDelimiter);
    if (!words.empty() && base.back() != kWordDelimiter) {
        words.pop_back();
    }
    return join(words, U" ") + kWordDelimiter + candidate;
}

/// The command `help`.
class HelpCommand : public ConsoleCommand
{
public:
    std::u32string name() const override { return U"help"; }
    void execute(const ConsoleArgs& args, Console& console) override;

private:
    static void listAll(Console& console);
    static void describeEveryCommand(Console& console);
    static void describeCommand(const ConsoleCommand& command, const ConsoleArgs& args, Console& console);
    static void describeArguments(const ConsoleCommand& command, Console& console);
    static void writeAlias(const std::u32string& name, const std::vector<std::u32string>& lines,
                           Console& console);
};

void HelpCommand::execute(const ConsoleArgs& args, Console& console)
{
    if (args.argCount() == 1) {
        listAll(console);
        return;
    }
    const std::u32string topic = args.arg(1);
    if (topic == kEveryCommand) {
        describeEveryCommand(console);
        return;
    }
    // Deliberately commands first, the reverse of what running a line does.
    if (const ConsoleCommand* command = console.lookupCommand(topic)) {
        describeCommand(*command, args, console);
        return;
    }
    if (const std::vector<std::u32string>* lines = console.lookupAlias(topic)) {
        writeAlias(topic, *lines, console);
        return;
    }
    console.write(U"'" + topic + U"' is not a recognized console command.", Output);
}

void HelpCommand::listAll(Console& console)
{
    console.write(kCommandsHeading, Output);
    console.forEachCommand([&console](const ConsoleCommand& command) {
        console.writeIndented(command.name(), Output, kIndent);
    });
    console.newline();
    console.write(kAliasesHeading, Output);
    console.forEachAlias([&console](const std::u32string& name, const std::vector<std::u32string>& lines) {
        writeAlias(name, lines, console);
    });
}

void HelpCommand::describeEveryCommand(Console& console)
{
    console.forEachCommand([&console](const ConsoleCommand& command) {
        console.writeIndented(command.name(), Output, kIndent);
        describeArguments(command, console);
    });
}

void HelpCommand::describeArguments(const ConsoleCommand& command, Console& console)
{
    if (command.argHandlerCount() == 0) {
        console.writeIndented(std::u32string(), Output, kIndent);
        return;
    }
    command.forEachArg([&](const std::u32string& argument) {
        console.writeIndented(argument, Output, kInnerIndent);
        command.printHelp(argument, console, kInnerIndent);
        console.newline();
    });
}

void HelpCommand::describeCommand(const ConsoleCommand& command, const ConsoleArgs& args, Console& console)
{
    if (args.argCount() < 3) {
        command.printArguments(console);
        return;
    }
    command.printHelp(args.arg(2), console, kIndent);
}

void HelpCommand::writeAlias(const std::u32string& name, const std::vector<std::u32string>& lines,
                             Console& console)
{
    console.writeIndented(name + U" -> \"" + join(lines, U"; ") + U"\"", Output, kIndent);
}

} // namespace

/// Marks that host code runs: a command that is replaced meanwhile, which may be the running one, is kept
/// until the outermost mark is gone.
class Console::HostCodeScope
{
public:
    explicit HostCodeScope(Console& console) : mConsole(console) { ++mConsole.mHostCodeDepth; }

    ~HostCodeScope()
    {
        if (--mConsole.mHostCodeDepth == 0) {
            mConsole.mRetired.clear();
        }
    }

    HostCodeScope(const HostCodeScope&) = delete;
    HostCodeScope& operator=(const HostCodeScope&) = delete;

private:
    Console& mConsole;
};

// Lifecycle and settings

Console::Console()
    : mInput(kInputBufferSize, U'\0'),
      mCompletionIndex(kNoCompletion),
      mRunPaths{pathOfText(executableDir()), pathOfText(currentDir())},
      mFont(std::make_shared<QFont>(QString::fromLatin1(kFontFamily), kFontPointSize, -1, false))
{
    mLog.reserve(kLogReserve);
    appendLine(kTitle, Output, 0);
    appendLine(std::u32string(), Output, 0);
    registerCommand(std::make_unique<HelpCommand>());
    registerCommand(std::make_unique<AliasConsoleCommand>(mAliases));
}

void Console::open()
{
    mOpen = true;
    const std::lock_guard lock(mMutex);
    std::fill(mInput.begin(), mInput.end(), U'\0'); // at the size that editing has left it
    mCursorPos = 0;
    mInputLength = 0;
}

void Console::close()
{
    mOpen = false;
}

bool Console::isOpen() const
{
    return mOpen;
}

void Console::shutdown()
{
    for (auto& [name, command] : mCommands) {
        retire(command);
    }
    mCommands.clear();
}

void Console::setWindowSize(const glm::vec<2, unsigned int>& size)
{
    mWindowSize = size;
}

const Color& Console::textColor() const
{
    return mTextColor;
}

const Color& Console::backgroundColor() const
{
    return mBackgroundColor;
}

float Console::cursorBlinkRate() const
{
    return mCursorBlinkRate;
}

char32_t Console::cursorChar() const
{
    return mCursorChar;
}

unsigned Console::cursorPosition() const
{
    return mCursorPos;
}

// Keys

bool Console::keyPressed(int key, int modifiers, const std::u32string& text)
{
    if (mOpen) {
        return openKeyPressed(key, modifiers, text);
    }
    if (key != kToggleKey) {
        return false;
    }
    open();
    return true;
}

bool Console::openKeyPressed(int key, int modifiers, const std::u32string& text)
{
    switch (key) {
    case kToggleKey: close(); return true;
    case Qt::Key_Tab: return autoComplete(false);
    case Qt::Key_Backtab: return autoComplete(true);
    case Qt::Key_PageUp: scrollLines(stepOf(visibleLineCount())); return true;
    case Qt::Key_PageDown: scrollLines(-stepOf(visibleLineCount())); return true;
    default: return editKeyPressed(key, modifiers, text);
    }
}

bool Console::editKeyPressed(int key, int modifiers, const std::u32string& text)
{
    switch (key) {
    case Qt::Key_Backspace: erasePrevious(modifiers); break;
    case Qt::Key_Delete: eraseNext(modifiers); break;
    case Qt::Key_Left: moveLeft(modifiers); break;
    case Qt::Key_Right: moveRight(modifiers); break;
    case Qt::Key_Home: moveCursorTo(0); break;
    case Qt::Key_End: moveCursorTo(mInputLength); break;
    case Qt::Key_Return:
    case Qt::Key_Enter: submitInput(); break;
    case Qt::Key_Up: navigateHistory(1); break;
    case Qt::Key_Down: navigateHistory(-1); break;
    default:
        if (!textKeyPressed(key, modifiers, text)) {
            return true;
        }
    }
    resetScroll();
    return true;
}

/// \return whether anything was typed or pasted.
bool Console::textKeyPressed(int key, int modifiers, const std::u32string& text)
{
    if (key == Qt::Key_V && isCtrl(modifiers)) {
        paste();
        return true;
    }
    if (text.empty()) {
        return false;
    }
    insertText(text);
    return true;
}

bool Console::keyReleased(int, int, const std::u32string&)
{
    return mOpen;
}

// Editing

void Console::paste()
{
    for (const char32_t c : Clipboard::text()) {
        insertText(std::u32string(1, c));
    }
}

void Console::insertText(const std::u32string& text)
{
    const std::lock_guard lock(mMutex);
    if (!mOpen) {
        return;
    }
    if (mCursorPos >= mInput.size()) {
        // Deliberately under the lock, which is not recursive: the refusal reaches the host as an exception,
        // and the message does not reach the log.
        return appendLine(kInputFull, Output, 0);
    }
    if (text.empty()) {
        return;
    }
    if (mCursorPos == mInputLength) {
        mInput[mCursorPos] = text.front();
    } else {
        mInput.insert(mCursorPos, 1, text.front()); // deliberately grows the buffer
    }
    ++mCursorPos;
    ++mInputLength;
    resetCompletion();
}

void Console::erasePrevious(int modifiers)
{
    if (mCursorPos == 0) {
        return;
    }
    const std::uint32_t first = isCtrl(modifiers) ? prevWordStart(activeInput(), mCursorPos) : mCursorPos - 1;
    const std::uint32_t count = mCursorPos - first;
    const std::lock_guard lock(mMutex);
    eraseInput(first, count);
    mCursorPos = first;
}

void Console::eraseNext(int modifiers)
{
    if (mCursorPos == mInputLength) {
        return;
    }
    // In a line that is longer than the buffer the next word may lie before the cursor: nothing is erased
    // then.
    const std::uint32_t next = isCtrl(modifiers) ? nextWordStart(activeInput(), mCursorPos) : mCursorPos + 1;
    const std::uint32_t count = next - std::min(next, mCursorPos);
    const std::lock_guard lock(mMutex);
    eraseInput(mCursorPos, count);
}

/// Takes `count` code points from `first` on out of the line; those that lie past the buffer's end are only
/// counted.
void Console::eraseInput(std::uint32_t first, std::uint32_t count)
{
    if (first < mInput.size()) {
        mInput.erase(first, count); // deliberately shrinks the buffer
    }
    mInputLength -= count;
    resetCompletion();
}

void Console::moveLeft(int modifiers)
{
    if (mCursorPos > 0) {
        moveCursorTo(isCtrl(modifiers) ? prevWordStart(activeInput(), mCursorPos) : mCursorPos - 1);
    }
}

void Console::moveRight(int modifiers)
{
    moveCursorTo(isCtrl(modifiers) ? nextWordStart(activeInput(), mCursorPos)
                                   : std::min(mCursorPos + 1, mInputLength));
}

void Console::moveCursorTo(std::uint32_t position)
{
    const std::lock_guard lock(mMutex);
    mCursorPos = position;
}

/// Copies `line` over the front of the buffer, whose size it leaves, and puts the cursor at the line's end.
void Console::showLine(const std::u32string& line)
{
    const std::lock_guard lock(mMutex);
    std::copy_n(line.begin(), std::min(line.size(), mInput.size()), mInput.begin());
    mCursorPos = count32(line.size());
    mInputLength = mCursorPos;
}

void Console::clearInputLine()
{
    if (mCursorPos == 0 && mInputLength == 0) {
        return; // as for every line that isn't typed; no other thread writes them
    }
    const std::lock_guard lock(mMutex);
    mCursorPos = 0;
    mInputLength = 0;
}

std::u32string Console::activeInput() const
{
    return mInput.substr(0, mInputLength);
}

std::uint32_t Console::nextWordStart(const std::u32string& line, std::uint32_t pos)
{
    const std::size_t wordEnd = line.find_first_not_of(kWordChars, pos);
    return count32(std::min(line.find_first_of(kWordChars, wordEnd), line.size()));
}

std::uint32_t Console::prevWordStart(const std::u32string& line, std::uint32_t pos)
{
    const std::size_t wordLast = line.find_last_of(kWordChars, pos - 1);
    if (wordLast == std::u32string::npos) {
        return 0;
    }
    const std::size_t gapLast = line.find_last_not_of(kWordChars, wordLast);
    return gapLast == std::u32string::npos ? 0 : count32(gapLast + 1);
}

// History

void Console::navigateHistory(int direction)
{
    if (direction != 1 && direction != -1) {
        reportVerification("Console", 570, "direction == 1 || direction == -1");
        return;
    }
    if (mCmdBuffer.empty() || !selectRecord(direction)) {
        return;
    }
    const std::size_t cmdBuffSize = mCmdBuffer.size();
    const std::size_t prevCmdIdx = cmdBuffSize - 1 - static_cast<std::size_t>(mHistoryIndex);
    if (prevCmdIdx >= cmdBuffSize) {
        reportVerification("Console", 599, "prevCmdIdx < cmdBuffSize");
        return;
    }
    showLine(mCmdBuffer[prevCmdIdx].line);
}

/// Moves the history cursor. \return whether a record is selected and to be shown.
bool Console::selectRecord(int direction)
{
    if (direction == 1) {
        const auto oldest = static_cast<std::int32_t>(mCmdBuffer.size() - 1);
        mHistoryIndex = mHistoryIndex == kNoRecord ? 0 : std::min(oldest, mHistoryIndex + 1);
        return true;
    }
    if (mHistoryIndex == kNoRecord) {
        return false;
    }
    if (mHistoryIndex == 0) {
        mHistoryIndex = kNoRecord;
        clearInputLine();
        return false;
    }
    --mHistoryIndex;
    return true;
}

void Console::submitInput()
{
    execute(activeInput(), true);
}

// Completion

bool Console::autoComplete(bool backwards)
{
    if (applyCompletion(backwards)) {
        return true;
    }
    std::u32string line = activeInput();
    std::vector<std::u32string> words = splitString(line, kWordDelimiter);
    if (words.empty()) {
        return false;
    }
    ConsoleCommand* command = lookupCommand(words.front());
    if (command == nullptr) {
        return false;
    }
    const HostCodeScope scope(*this);
    mCompletions = command->getAutoCompleteResults(ConsoleArgs(std::move(words)));
    mCompletionIndex = kNoCompletion;
    mCompletionBase = std::move(line); // not copied, which could fail and leave the list to another line
    applyCompletion(backwards);
    return false; // deliberately: the key that builds the list does not count as consumed
}

bool Console::applyCompletion(bool backwards)
{
    if (mCompletions.empty()) {
        return false;
    }
    const std::uint32_t last = count32(mCompletions.size()) - 1;
    if (backwards) {
        const bool wraps = mCompletionIndex == kNoCompletion || mCompletionIndex == 0;
        mCompletionIndex = wraps ? last : mCompletionIndex - 1;
    } else {
        const bool wraps = mCompletionIndex == kNoCompletion || mCompletionIndex == last;
        mCompletionIndex = wraps ? 0 : mCompletionIndex + 1;
    }
    showLine(completedLine(mCompletionBase, mCompletions[mCompletionIndex]));
    return true;
}

void Console::resetCompletion()
{
    mCompletions.clear();
    mCompletionIndex = kNoCompletion;
    mCompletionBase.clear();
}

// Dispatch

void Console::execute(const std::u32string& line)
{
    execute(line, false);
}

void Console::execute(std::u32string line, bool recordInHistory)
{
    std::vector<std::u32string> words = splitUnquoted(line, kWordDelimiter);
    std::u32string recorded;
    if (recordInHistory) {
        recorded = line;
        maskQuoted(recorded, kWordDelimiter); // deliberately recorded so
    }
    appendLine(std::move(line), Input, 0); // the echo, before anything that the line does
    if (words.empty()) {
        return;
    }
    if (const std::vector<std::u32string>* stored = lookupAlias(words.front())) {
        const std::vector<std::u32string> lines = *stored; // a line may redefine or clear the alias
        for (const std::u32string& aliasLine : lines) {
            execute(aliasLine, false);
        }
        return;
    }
    dispatch(std::move(words), std::move(recorded), recordInHistory);
}

/// Runs the command that the first word names. `maskedLine` is what the history records.
void Console::dispatch(std::vector<std::u32string>&& words, std::u32string&& maskedLine, bool recordInHistory)
{
    ConsoleCommand* command = lookupCommand(words.front());
    if (recordInHistory) {
        mHistoryIndex = kNoRecord;
        mCmdBuffer.push_back({command, std::move(maskedLine)});
    }
    if (command == nullptr) {
        appendLine(U"'" + words.front() + kUnknownCommandEnd, Output, 0);
    } else {
        runCommand(*command, std::move(words));
    }
    appendLine(std::u32string(), Output, 0);
    clearInputLine();
}

void Console::runCommand(ConsoleCommand& command, std::vector<std::u32string>&& words)
{
    const ConsoleArgs args(std::move(words));
    if (args.hasRedirect()) {
        openRedirect(args.redirectTarget());
    }
    {
        const HostCodeScope scope(*this);
        command.execute(args, *this);
    }
    closeRedirect();
    if (args.hasRedirectOpen()) {
        const std::u32string path = currentDir() + U"/" + args.redirectTarget();
        ExternalProcess::openFileInDefaultApplication(StringUtil::toString(path));
    }
}

/// Where the stream is open already, by an outer line, this fails and ends what the outer line writes to its
/// file.
void Console::openRedirect(const std::u32string& target)
{
    const std::string fileName = StringUtil::toString(target);
    const std::lock_guard lock(mMutex);
    mRedirectStream.open(fileName, std::ios::out | std::ios::trunc);
}

void Console::closeRedirect()
{
    if (!mRedirectStream.is_open()) {
        return; // as for nearly every line; no other thread opens or closes it
    }
    const std::lock_guard lock(mMutex);
    mRedirectStream.close();
}

// Tables

void Console::registerCommand(std::unique_ptr<ConsoleCommand>&& command)
{
    if (!command) {
        reportVerification("Console", __LINE__, "command");
        return;
    }
    std::unique_ptr<ConsoleCommand>& entry = mCommands[command->name()];
    retire(entry);
    entry = std::move(command);
}

/// Destroys a command, at once or when the host code that runs has returned.
void Console::retire(std::unique_ptr<ConsoleCommand>& command)
{
    if (command && mHostCodeDepth > 0) {
        mRetired.push_back(std::move(command));
    }
    command.reset();
}

ConsoleCommand* Console::lookupCommand(const std::u32string& name)
{
    const auto found = mCommands.find(name);
    return found == mCommands.end() ? nullptr : found->second.get();
}

const std::vector<std::u32string>* Console::lookupAlias(const std::u32string& name) const
{
    const auto found = mAliases.find(name);
    return found == mAliases.end() ? nullptr : &found->second;
}

// Both walks look for the next name anew at each step, so that `fn` may change the table.

void Console::forEachCommand(const std::function<void(const ConsoleCommand&)>& fn)
{
    const HostCodeScope scope(*this);
    for (auto next = mCommands.begin(); next != mCommands.end();) {
        const std::u32string name = next->first;
        if (next->second) {
            fn(*next->second);
        }
        next = mCommands.upper_bound(name);
    }
}

void Console::forEachAlias(
    const std::function<void(const std::u32string& name, const std::vector<std::u32string>& lines)>& fn)
{
    for (auto next = mAliases.begin(); next != mAliases.end();) {
        const auto [name, lines] = *next;
        fn(name, lines);
        next = mAliases.upper_bound(name);
    }
}

// Log

void Console::write(const std::string& text, ConsoleMessageType type)
{
    appendLine(StringUtil::toU32String(text), type, 0);
}

void Console::write(const std::u32string& text, ConsoleMessageType type)
{
    appendLine(text, type, 0);
}

void Console::writeIndented(const std::string& text, ConsoleMessageType type, unsigned indent)
{
    writeIndented(StringUtil::toU32String(text), type, indent);
}

void Console::writeIndented(const std::string& text, unsigned indent)
{
    writeIndented(StringUtil::toU32String(text), Output, indent);
}

void Console::writeIndented(const std::u32string& text, ConsoleMessageType type, unsigned indent)
{
    appendLine(std::u32string(indent, U' ') + text, type, indent);
}

void Console::writeIndented(const std::u32string& text, unsigned indent)
{
    writeIndented(text, Output, indent);
}

void Console::newline()
{
    appendLine(std::u32string(), Output, 0);
}

void Console::appendLine(std::u32string text, ConsoleMessageType type, unsigned indent)
{
    const std::lock_guard lock(mMutex);
    mLog.push_back({std::move(text), type, indent});
    // A stream that was never opened says that it is good.
    if (mRedirectStream.is_open() && mRedirectStream.good()) {
        const std::string line = StringUtil::toString(mLog.back().text);
        mRedirectStream.write(line.data(), static_cast<std::streamsize>(line.size())).put('\n');
    }
}

// Scrolling

bool Console::mouseWheel(Angle vertical, Angle)
{
    if (!mOpen) {
        return false;
    }
    const double degrees = vertical.value();
    const int lines = wheelLines(degrees);
    scrollLines(degrees > 0 ? lines : -lines);
    return true;
}

void Console::scrollLines(int lines)
{
    const std::int64_t page = lines > 0 ? visibleLineCount() : 0;
    const std::lock_guard lock(mMutex);
    if (lines > 0) {
        const std::int64_t largest = std::clamp<std::int64_t>(static_cast<std::int64_t>(mLog.size()) - page,
                                                              0, std::numeric_limits<std::int32_t>::max());
        mScrollOffset =
            std::min(static_cast<std::uint32_t>(largest), mScrollOffset + static_cast<std::uint32_t>(lines));
        return;
    }
    mScrollOffset -= std::min(mScrollOffset, 0U - static_cast<std::uint32_t>(lines));
}

void Console::resetScroll()
{
    const std::lock_guard lock(mMutex);
    mScrollOffset = 0;
}

unsigned Console::visibleLineCount() const
{
    if (!mFont) {
        reportVerification("Console", 365, "mFont");
        return kLinesWithoutFont;
    }
    if (mWindowSize.y == 0) {
        return 0; // without a look at the font, which needs a QGuiApplication
    }
    const int lineHeight = QFontMetrics(separateCopy(*mFont)).height();
    return mWindowSize.y / static_cast<unsigned>(std::max(1, lineHeight));
}

// Files

bool Console::runFile(const std::filesystem::path& path)
{
    std::ifstream ifs;
    std::error_code error;
    if (!std::filesystem::is_directory(path, error)) { // which an input stream would open on some platforms
        ifs.open(path);
    }
    if (!ifs.is_open()) {
        reportVerification("Console", 449, "ifs.is_open()");
        return false;
    }
    for (std::string line; std::getline(ifs, line);) {
        runFileLine(line);
    }
    return true;
}

void Console::runFileLine(std::string& line)
{
    if (line.empty()) {
        return;
    }
    if (!isVisibleAscii(line.front()) || !isVisibleAscii(line.back())) { // otherwise nothing is to be trimmed
        line = StringUtil::trim(line);
    }
    if (line.starts_with(kComment)) {
        return;
    }
    execute(StringUtil::toU32String(line), false);
}

bool Console::runFileWithName(const std::u32string& name)
{
    std::vector<std::filesystem::path> candidates;
    for (const std::filesystem::path& directory : mRunPaths) {
        std::filesystem::path candidate = directory / pathOfText(name);
        if (pathExists(candidate)) {
            candidates.push_back(std::move(candidate));
        }
    }
    if (candidates.empty()) {
        return false;
    }
    if (candidates.size() >= 2) {
        warnOfSeveral(candidates, name);
    }
    return runFile(candidates.front());
}

void Console::warnOfSeveral(const std::vector<std::filesystem::path>& candidates, const std::u32string& name)
{
    writeIndented(U"WARNING: '" + name + U"' resolved to multiple paths...", Output, kIndent);
    for (const std::filesystem::path& candidate : candidates) {
        writeIndented(textOfPath(candidate), Output, kInnerIndent);
    }
    writeIndented(U"The console file at '" + textOfPath(candidates.front()) + U"' will be run.", Output,
                  kIndent);
}

bool Console::appendRunpath(const std::filesystem::path& path)
{
    if (std::find(mRunPaths.begin(), mRunPaths.end(), path) != mRunPaths.end()) {
        return false;
    }
    mRunPaths.push_back(path);
    return true;
}

bool Console::removeRunpath(const std::filesystem::path& path)
{
    const auto found = std::find(mRunPaths.begin(), mRunPaths.end(), path);
    if (found == mRunPaths.end()) {
        return false;
    }
    mRunPaths.erase(found);
    return true;
}

const std::vector<std::filesystem::path>& Console::runPaths() const
{
    return mRunPaths;
}

// Snapshot

ConsoleSnapshot Console::snapshot() const
{
    const std::lock_guard lock(mMutex);
    return takeSnapshot();
}

void Console::refresh(ConsoleSnapshot& snapshot) const
{
    const std::lock_guard lock(mMutex);
    // The font is this console's own, and a snapshot that shares it keeps its address from being used again.
    const std::size_t known = snapshot.mLines.size();
    if (!mFont || snapshot.mFont != mFont || known > mLog.size()) {
        snapshot = takeSnapshot();
        return;
    }
    std::u32string input = activeInput();
    if (snapshot.mLines.capacity() < mLog.size()) {
        // Room comes first: an insertion that moves the entries and then fails would lose them.
        snapshot.mLines.reserve(std::max(mLog.size(), 2 * known));
    }
    snapshot.mLines.insert(snapshot.mLines.end(), mLog.begin() + static_cast<std::ptrdiff_t>(known),
                           mLog.end());
    snapshot.mInput = std::move(input);
    snapshot.mCursorPosition = mCursorPos;
    snapshot.mScrollOffset = mScrollOffset; // the rest never changes
}

/// Under mMutex.
ConsoleSnapshot Console::takeSnapshot() const
{
    return {mLog,       activeInput(), mTextColor,       mBackgroundColor,
            mCursorPos, mCursorChar,   mCursorBlinkRate, mScrollOffset,
            mFont};
}

} // namespace zephyr::console
