#include "zephyr/console/Console.h"

#include "AliasConsoleCommand.h"
#include "Answers.h"
#include "AssertReport.h"
#include "ConsoleFile.h"
#include "ConsolePrivate.h"
#include "Join.h"
#include "Paths.h"
#include "SplitString.h"
#include "zephyr/common/Clipboard.h"
#include "zephyr/common/ExternalProcess.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/common/SystemPaths.h"
#include "zephyr/console/DepthLimitError.h"
#include "zephyr/console/Texts.h"

#include <QFont>
#include <QFontMetrics>
#include <QScopeGuard>
#include <Qt>

#include <algorithm>
#include <utility>

namespace zephyr::console {

namespace {

const std::u32string kTitle = U"Zephyr Console:";
const std::u32string kUnknownCommandEnd =
    U"' is not a recognized command.  Type 'help' to list available commands.";
const std::u32string kTooDeepMiddle = U"' was not run: lines are nested deeper than the limit of ";
const std::u32string kCommandsHeading = U"Registered Commands:";
const std::u32string kAliasesHeading = U"Aliases:";
const std::u32string kEveryCommand = U"*";

constexpr char32_t kWordDelimiter = U' ';
constexpr unsigned kInnerIndent = 8; // spaces
constexpr int kToggleKey = Qt::Key_QuoteLeft;
constexpr unsigned kLinesWithoutFont = 15;

static_assert(kToggleKey == 0x60 && Qt::ControlModifier == 0x04000000,
              "Qt's key numbering is the interface's");

bool isCtrl(int modifiers) { return (static_cast<unsigned>(modifiers) & Qt::ControlModifier) != 0; }

QFont consoleFont()
{
    constexpr int kPointSize = 10;
    constexpr int kDefaultWeight = -1;
    return {QStringLiteral("Consolas"), kPointSize, kDefaultWeight, false};
}

} // namespace

/// The command `help`.
class Console::Private::HelpCommand : public ConsoleCommand
{
public:
    std::u32string name() const override { return U"help"; }

    void execute(const ConsoleArgs& args, Console& console) override
    {
        if (args.argCount() == 1) {
            listAll(console);
            return;
        }
        const std::u32string topic = args.arg(1);
        if (topic == kEveryCommand) {
            describeEveryCommand(console); // also where a command has that name: oddity 11
            return;
        }
        // Commands first, the reverse of what running a line does: oddity 10.
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

private:
    static void listAll(Console& console)
    {
        console.write(kCommandsHeading, Output);
        console.forEachCommand([&console](const ConsoleCommand& command) {
            console.writeIndented(command.name(), Output, kIndent);
        });
        console.newline();
        console.write(kAliasesHeading, Output);
        console.forEachAlias(
            [&console](const std::u32string& name, const auto& lines) { writeAlias(name, lines, console); });
    }

    static void describeEveryCommand(Console& console)
    {
        console.forEachCommand([&console](const ConsoleCommand& command) {
            console.writeIndented(command.name(), Output, kIndent);
            describeArguments(command, console);
        });
    }

    static void describeArguments(const ConsoleCommand& command, Console& console)
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

    static void describeCommand(const ConsoleCommand& command, const ConsoleArgs& args, Console& console)
    {
        const CommandTable::Call call(console.mPrivate->mCommands, command); // the observer may replace it
        if (args.argCount() < 3) {
            command.printArguments(console);
            return;
        }
        command.printHelp(args.arg(2), console, kIndent);
    }

    static void writeAlias(const std::u32string& name, const std::vector<std::u32string>& lines,
                           Console& console)
    {
        console.writeIndented(name + U" -> \"" + join(lines, U"; ") + U"\"", Output, kIndent);
    }
};

template <typename Step>
void Console::Private::change(const Step& step)
{
    Access parts = lock();
    step(*parts);
    if (!parts->observers.isEmpty()) {
        callObservers(parts);
    }
}

Console::Private::Private(Console& console)
    : mConsole(console),
      mRunPaths({pathOfText(executableDir()), pathOfText(currentDir())}),
      mFont(std::make_shared<QFont>(consoleFont())),
      mMeasuringFont(consoleFont())
{}

Console::Console() : mPrivate(new Private(*this), &Private::destroy)
{
    mPrivate->append({kTitle, Output, 0});
    mPrivate->append({{}, Output, 0});
    registerCommand(std::make_unique<Private::HelpCommand>());
    registerCommand(std::make_unique<AliasConsoleCommand>(mPrivate->mAliases));
}

void Console::Private::destroy(Private* parts)
{
    parts->removeObservers(); // while what they captured may still use the console
    delete parts;
}

void Console::open()
{
    mPrivate->mOpen = true;
    mPrivate->change([](Private::Guarded& parts) { parts.line.zero(); });
}

void Console::close()
{
    if (std::exchange(mPrivate->mOpen, false)) {
        mPrivate->change([](Private::Guarded&) {});
    }
}

bool Console::isOpen() const { return mPrivate->mOpen; }
void Console::shutdown() { mPrivate->mCommands.clear(); }
void Console::setWindowSize(const glm::vec<2, unsigned int>& size) { mPrivate->mWindowSize = size; }
const Color& Console::textColor() const { return mPrivate->mTextColor; }
const Color& Console::backgroundColor() const { return mPrivate->mBackgroundColor; }
float Console::cursorBlinkRate() const { return mPrivate->mCursorBlinkRate; }
char32_t Console::cursorChar() const { return mPrivate->mCursorChar; }
unsigned Console::cursorPosition() const { return mPrivate->lock()->line.cursorPosition(); }
std::u32string Console::activeInput() const { return mPrivate->lock()->line.text(); }

ConsoleInput Console::readInput() const
{
    const auto parts = mPrivate->lock();
    return {parts->line.text(), parts->line.cursorPosition()};
}

bool Console::keyPressed(int key, int modifiers, const std::u32string& text)
{
    Private& parts = *mPrivate;
    if (!parts.mOpen && key != kToggleKey) {
        return false;
    }
    switch (key) {
    case kToggleKey: parts.mOpen ? close() : open(); return true;
    case Qt::Key_Tab: return parts.autoComplete(false);
    case Qt::Key_Backtab: return parts.autoComplete(true);
    case Qt::Key_PageUp: parts.scrollLines(parts.visibleLineCount()); return true;
    case Qt::Key_PageDown: parts.scrollLines(-std::int64_t{parts.visibleLineCount()}); return true;
    case Qt::Key_Backspace: parts.erase(&InputLine::erasePrevious, modifiers); break;
    case Qt::Key_Delete: parts.erase(&InputLine::eraseNext, modifiers); break;
    case Qt::Key_Left: parts.lock()->line.moveLeft(isCtrl(modifiers)); break;
    case Qt::Key_Right: parts.lock()->line.moveRight(isCtrl(modifiers)); break;
    case Qt::Key_Home: parts.lock()->line.moveToStart(); break;
    case Qt::Key_End: parts.lock()->line.moveToEnd(); break;
    case Qt::Key_Return:
    case Qt::Key_Enter: parts.submitInput(); break;
    case Qt::Key_Up: parts.navigateHistory(1); break;
    case Qt::Key_Down: parts.navigateHistory(-1); break;
    default:
        if (key == Qt::Key_V && isCtrl(modifiers)) {
            parts.paste();
        } else if (text.empty()) {
            return true;
        } else {
            parts.insertText(text);
        }
    }
    parts.lock()->scroll.reset();
    return true;
}

bool Console::keyReleased(int, int, const std::u32string&) { return mPrivate->mOpen; }

void Console::Private::paste()
{
    for (const char32_t c : Clipboard::text()) {
        insertText(std::u32string(1, c));
    }
}

void Console::Private::insertText(const std::u32string& text)
{
    const Access parts = lock();
    if (!mOpen) {
        return;
    }
    if (parts->line.isFull()) {
        return append({kInputFull, Output, 0}); // locks again, which throws: oddity 2
    }
    if (!text.empty()) {
        parts->line.insert(text.front());
        mCompletion.reset();
    }
}

void Console::Private::erase(bool (InputLine::*edit)(bool wholeWord), int modifiers)
{
    if (((*lock()).line.*edit)(isCtrl(modifiers))) {
        mCompletion.reset();
    }
}

void Console::Private::navigateHistory(int direction)
{
    if (const std::optional<std::u32string_view> line = mHistory.navigate(direction)) {
        lock()->line.show(*line);
    }
}

std::vector<std::u32string> Console::history() const { return mPrivate->mHistory.lines(); }

void Console::addToHistory(const std::u32string& line)
{
    if (!line.empty()) { // an empty one that is typed isn't recorded either
        mPrivate->mHistory.record(nullptr, line);
    }
}

void Console::Private::submitInput() { execute(mConsole.activeInput(), true); }

bool Console::Private::autoComplete(bool backwards)
{
    if (applyCompletion(backwards)) {
        return true;
    }
    std::u32string line = mConsole.activeInput();
    const bool endsWithBlank = !line.empty() && line.back() == kWordDelimiter;
    if (auto candidates = mCommands.candidates(splitString(line, kWordDelimiter), endsWithBlank)) {
        mCompletion.begin(std::move(*candidates), std::move(line));
        applyCompletion(backwards);
    }
    return false; // also for the key that builds the list: oddity 4
}

bool Console::Private::applyCompletion(bool backwards)
{
    if (!mCompletion.isInProgress()) {
        return false;
    }
    const std::u32string line = mCompletion.step(backwards);
    lock()->line.show(line);
    return true;
}

void Console::execute(const std::u32string& line) { mPrivate->execute(line, false); }
void Console::setDepthLimit(unsigned depth) { mPrivate->mDepthLimit = depth; }
bool Console::isRunning() const { return mPrivate->isRunning(); }

void Console::Private::execute(std::u32string line, bool recordInHistory)
{
    if (mDepthLimit != 0 && mRunningLines > mDepthLimit) {
        refuse(line);
    }
    ++mRunningLines;
    const auto ended = qScopeGuard([this] { --mRunningLines; });

    std::vector<std::u32string> words = splitUnquoted(line, kWordDelimiter);
    std::u32string recorded = recordInHistory ? line : std::u32string();
    append({std::move(line), Input, 0}); // the echo, before anything that the line does
    if (words.empty()) {
        return;
    }
    if (const auto alias = mAliases.find(words.front()); alias != mAliases.end()) {
        const std::vector<std::u32string> lines = alias->second; // a line may redefine or clear the alias
        for (const std::u32string& aliasLine : lines) {
            execute(aliasLine, false);
        }
        return;
    }
    ConsoleCommand* const command = mCommands.find(words.front());
    if (recordInHistory) {
        mHistory.record(command, std::move(recorded));
    }
    dispatch(command, std::move(words));
}

/// Says in the log that `line` is not run, and ends all that is running.
void Console::Private::refuse(const std::u32string& line)
{
    const std::u32string limit = StringUtil::toU32String(std::to_string(mDepthLimit));
    const std::u32string refusal = U"'" + line + kTooDeepMiddle + limit + U".";
    append({refusal, Output, 0});
    throw DepthLimitError(StringUtil::toString(refusal));
}

/// Runs `command`, or says that there is none if it is null.
void Console::Private::dispatch(ConsoleCommand* command, std::vector<std::u32string>&& words)
{
    if (command == nullptr) {
        append({U"'" + words.front() + kUnknownCommandEnd, Output, 0});
    } else {
        runCommand(*command, std::move(words));
    }
    change([command](Guarded& parts) {
        if (command != nullptr) {
            parts.log.endRedirection(); // an outer line's too: oddity 7
        }
        parts.log.append({{}, Output, 0});
        parts.line.clear();
    });
}

void Console::Private::runCommand(ConsoleCommand& command, std::vector<std::u32string>&& words)
{
    const ConsoleArgs args(std::move(words));
    if (args.hasRedirect()) {
        openRedirect(args.redirectTarget());
    }
    {
        const CommandTable::Call call(mCommands, command);
        command.execute(args, mConsole);
    }
    if (args.hasRedirectOpen()) {
        lock()->log.endRedirection();
        const std::u32string path = currentDir() + U"/" + args.redirectTarget(); // oddity 9
        ExternalProcess::openFileInDefaultApplication(StringUtil::toString(path));
    }
}

void Console::Private::openRedirect(const std::u32string& target)
{
    if (const Access parts = lock(); parts->log.isRedirected()) {
        parts->log.failRedirection();
        return;
    }
    // Without the lock: a pipe that nobody reads yet opens when somebody does. No other thread redirects.
    std::ofstream file(StringUtil::toString(target), std::ios::out | std::ios::trunc);
    lock()->log.redirectTo(std::move(file));
}

void Console::registerCommand(std::unique_ptr<ConsoleCommand>&& command)
{
    if (!command) {
        reportVerification("Console", __LINE__, "command");
        return;
    }
    mPrivate->mCommands.add(command->name(), std::move(command));
}

bool Console::unregisterCommand(const std::u32string& name) { return mPrivate->mCommands.remove(name); }

ConsoleCommand* Console::lookupCommand(const std::u32string& name) { return mPrivate->mCommands.find(name); }

const std::vector<std::u32string>* Console::lookupAlias(const std::u32string& name) const
{
    const auto found = mPrivate->mAliases.find(name);
    return found == mPrivate->mAliases.end() ? nullptr : &found->second;
}

void Console::forEachCommand(const std::function<void(const ConsoleCommand&)>& fn)
{
    mPrivate->mCommands.forEach(fn);
}

void Console::forEachAlias(
    const std::function<void(const std::u32string& name, const std::vector<std::u32string>& lines)>& fn)
{
    auto& aliases = mPrivate->mAliases;
    for (auto next = aliases.begin(); next != aliases.end();) {
        const auto [name, lines] = *next; // copies, as `fn` may change the table
        fn(name, lines);
        next = aliases.upper_bound(name);
    }
}

void Console::write(const std::string& text, ConsoleMessageType type)
{
    mPrivate->append({StringUtil::toU32String(text), type, 0});
}

void Console::write(const std::u32string& text, ConsoleMessageType type)
{
    mPrivate->append({text, type, 0});
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
    mPrivate->append({std::u32string(indent, U' ') + text, type, indent});
}

void Console::writeIndented(const std::u32string& text, unsigned indent)
{
    writeIndented(text, Output, indent);
}

void Console::newline() { mPrivate->append({{}, Output, 0}); }
std::size_t Console::logSize() const { return mPrivate->lock()->log.entries().size(); }

void Console::readLog(std::size_t first, std::size_t count, std::vector<LogEntry>& entries) const
{
    mPrivate->lock()->log.read(first, count, entries);
}

LogPart Console::readLogPart(std::size_t index, std::size_t first, std::size_t count) const
{
    return mPrivate->lock()->log.readPart(index, first, count);
}

void Console::Private::append(LogEntry&& entry)
{
    change([&entry](Guarded& parts) { parts.log.append(std::move(entry)); });
}

bool Console::mouseWheel(Angle vertical, Angle)
{
    if (mPrivate->mOpen) {
        mPrivate->scrollLines(ScrollPosition::linesOfTurn(vertical.value()));
    }
    return mPrivate->mOpen;
}

void Console::Private::scrollLines(std::int64_t lines)
{
    const unsigned page = lines > 0 ? visibleLineCount() : 0;
    const Access parts = lock();
    parts->scroll.scroll(lines, parts->log.entries().size(), page);
}

unsigned Console::Private::visibleLineCount() const
{
    if (!mFont) {
        reportVerification("Console", 365, "mFont");
        return kLinesWithoutFont;
    }
    if (mWindowSize.y == 0) {
        return 0; // without a look at the font, which needs a QGuiApplication
    }
    return mWindowSize.y / static_cast<unsigned>(std::max(1, QFontMetrics(mMeasuringFont).height()));
}

bool Console::runFile(const std::filesystem::path& path)
{
    ConsoleFile file(path);
    if (!file.isOpen()) {
        reportVerification("Console", 449, "ifs.is_open()");
        return false;
    }
    while (std::optional<std::u32string> line = file.nextLine()) {
        mPrivate->execute(std::move(*line), false);
    }
    if (const std::error_code& error = file.readError()) {
        writeIndented(U"ERROR: Console file '" + textOfPath(file.path()) + U"' can't be read to its end: " +
                          StringUtil::toU32String(error.message()) + U".  The rest will not be run.",
                      Output, kIndent);
    }
    return true;
}

bool Console::runFileWithName(const std::u32string& name)
{
    const std::vector<std::filesystem::path> found = mPrivate->mRunPaths.find(name);
    if (found.empty()) {
        return false;
    }
    if (found.size() >= 2) {
        writeIndented(U"WARNING: '" + name + U"' resolved to multiple paths...", Output, kIndent);
        for (const std::filesystem::path& path : found) {
            writeIndented(textOfPath(path), Output, kInnerIndent);
        }
        writeIndented(U"The console file at '" + textOfPath(found.front()) + U"' will be run.", Output,
                      kIndent);
    }
    return runFile(found.front());
}

bool Console::appendRunpath(const std::filesystem::path& path) { return mPrivate->mRunPaths.append(path); }
bool Console::removeRunpath(const std::filesystem::path& path) { return mPrivate->mRunPaths.remove(path); }
const std::vector<std::filesystem::path>& Console::runPaths() const { return mPrivate->mRunPaths.paths(); }

ConsoleSnapshot Console::snapshot() const
{
    const Private::Access parts = mPrivate->lock();
    return mPrivate->takeSnapshot(parts);
}

ConsoleSnapshot Console::Private::takeSnapshot(const Access& parts) const
{
    ConsoleSnapshot snapshot({}, parts->line.text(), mTextColor, mBackgroundColor,
                             parts->line.cursorPosition(), mCursorChar, mCursorBlinkRate,
                             parts->scroll.offset(), mFont);
    snapshot.mLines.reserve(parts->log.entries().size());
    addNewLines(parts, snapshot);
    return snapshot;
}

/// Copies to `snapshot`, which has room for them, the entries that were written since it was taken: all or, if it throws
/// `std::bad_alloc`, none.
void Console::Private::addNewLines(const Access& parts, ConsoleSnapshot& snapshot)
{
    const LogEntries& log = parts->log.entries();
    std::vector<LogEntry>& lines = snapshot.mLines;
    const std::size_t known = lines.size();
    auto removeNew = qScopeGuard([&] { lines.resize(known); });
    log.forEachPiece(known, log.size() - known, [&lines](const LogEntry* begin, const LogEntry* end) {
        lines.insert(lines.end(), begin, end);
    });
    removeNew.dismiss();
}

/// Brings `snapshot` up to date. \return 0, or the number of lines that it must first get room for.
std::size_t Console::Private::refresh(ConsoleSnapshot& snapshot)
{
    const Access parts = lock();
    const std::size_t size = parts->log.entries().size();
    // The font is this console's own, and a snapshot that shares it keeps its address from being used again.
    if (!mFont || snapshot.mFont != mFont || snapshot.mLines.size() > size) {
        snapshot = takeSnapshot(parts);
        return 0;
    }
    if (snapshot.mLines.capacity() < size) {
        return size; // also since an insertion that moves the lines and then fails would lose them
    }
    std::u32string input = parts->line.text();
    addNewLines(parts, snapshot);
    snapshot.mInput = std::move(input);
    snapshot.mCursorPosition = parts->line.cursorPosition();
    snapshot.mScrollOffset = parts->scroll.offset(); // the rest never changes
    return 0;
}

void Console::refresh(ConsoleSnapshot& snapshot) const
{
    // Room is made without the lock, since growing moves all lines: other threads would wait for that. It is more than what
    // is needed, so that what they write meanwhile has room too.
    while (const std::size_t lines = mPrivate->refresh(snapshot)) {
        snapshot.mLines.reserve(std::max(lines + lines / 2, 2 * snapshot.mLines.size()));
    }
}

} // namespace zephyr::console
