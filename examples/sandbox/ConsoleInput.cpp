#include "sandbox/ConsoleInput.h"

#include "sandbox/QuitCommand.h"
#include "sandbox/SandboxCommand.h"
#include "zephyr/common/Angle.h"
#include "zephyr/console/Console.h"

#include <QChar>
#include <QPoint>
#include <Qt>

#include <algorithm>
#include <exception>
#include <system_error>
#include <utility>

namespace zephyr::sandbox {

namespace {

constexpr char kErrorPrefix[] = "Error: ";
constexpr char kUnknownError[] = "an exception of an unknown kind";
constexpr char kFullLine[] = "the input line is full";

constexpr char32_t kEscape = U'\x1b';
constexpr char32_t kControlSequence = U'\x9b'; // an escape character and a bracket in one
constexpr double kEighthsPerDegree = 8.0;

/// What a key press types. Return, Tab, Escape and Ctrl with a letter carry control characters, and a
/// terminal-minded input method whole escape sequences, whose end nobody can tell.
std::u32string typedText(const QString& text)
{
    std::u32string typed;
    for (const char32_t c : text.toStdU32String()) {
        if (c == kEscape || c == kControlSequence) {
            break;
        }
        if (QChar::category(c) != QChar::Other_Control) {
            typed += c;
        }
    }
    return typed;
}

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// Whether `error` is how a console refuses text that its input line has no room for. Enter types nothing; an
/// error of this kind is then a command's.
bool isFullLine(const std::system_error& error, int key)
{
    return error.code() == std::errc::resource_deadlock_would_occur && !isEnter(key);
}

} // namespace

ConsoleInput::ConsoleInput(console::Console& console, std::function<void()> quit)
    : mConsole(console), mQuit(std::move(quit))
{}

bool ConsoleInput::keyPressed(int key, int modifiers, const QString& text)
{
    bool isConsumed = true; // a key whose command throws is the console's all the same
    const bool isDone = guarded([&] { isConsumed = pressEach(key, modifiers, typedText(text)); });
    if (!isDone && isEnter(key)) {
        // Takes the line away that was run, as the console does itself behind a command that ends well.
        mConsole.open();
    }
    return isConsumed;
}

bool ConsoleInput::pressEach(int key, int modifiers, const std::u32string& typed)
try {
    const bool wasOpen = mConsole.isOpen();
    const bool isConsumed = mConsole.keyPressed(key, modifiers, typed.substr(0, 1));
    for (std::size_t i = 1; wasOpen && i < typed.size(); ++i) {
        mConsole.keyPressed(Qt::Key_unknown, modifiers, typed.substr(i, 1));
    }
    return isConsumed;
} catch (const std::system_error& error) {
    if (!isFullLine(error, key)) {
        throw;
    }
    reportError(kFullLine);
    return true;
}

bool ConsoleInput::keyReleased(int key, int modifiers, const QString& text)
{
    return mConsole.keyReleased(key, modifiers, typedText(text));
}

bool ConsoleInput::wheelTurned(const QPoint& eighths)
{
    return mConsole.mouseWheel(Angle(eighths.y() / kEighthsPerDegree),
                               Angle(eighths.x() / kEighthsPerDegree));
}

void ConsoleInput::execute(const QString& line)
{
    guarded([&] { mConsole.execute(line.toStdU32String()); });
}

void ConsoleInput::runFile(const std::u32string& name)
{
    guarded([&] { mConsole.runFileWithName(name); });
}

bool ConsoleInput::guarded(const std::function<void()>& run)
{
    if (mHasQuit) {
        return true;
    }
    try {
        run();
        return true;
    } catch (const QuitRequest&) {
        mHasQuit = true;
        mQuit();
        return true;
    } catch (const std::exception& error) {
        reportError(error.what());
    } catch (...) {
        reportError(kUnknownError);
    }
    return false;
}

void ConsoleInput::reportError(std::string what)
{
    std::replace(what.begin(), what.end(), '\n', ' ');
    mConsole.writeIndented(kErrorPrefix + what, kAnswerIndent);
}

} // namespace zephyr::sandbox
