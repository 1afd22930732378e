#include "KeyDelivery.h"

#include "ConsoleKeys.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/DepthLimitError.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/ExceptionLine.h"
#include "zephyr/console/Texts.h"
#include "zephyr/console/detail/ForcedUnwinding.h"

#include <Qt>

#include <exception>
#include <new>
#include <system_error>
#include <utility>

namespace zephyr::console::qt {

namespace {

/// The console throws this error when its line is full, but a command or a completion may throw the same.
bool isRefusedInsertion(const std::system_error& error, int key)
{
    return error.code() == std::errc::resource_deadlock_would_occur && !runsLine(key) && !completesLine(key);
}

} // namespace

KeyDelivery::KeyDelivery(std::function<void(const QString& line)> caught) : mCaught(std::move(caught)) {}

void KeyDelivery::press(Console& console, int key, int modifiers, const std::u32string& text)
{
    try {
        pressAndCount(console, key, modifiers, text);
    } catch (const std::bad_alloc&) {
        return; // no memory for a line that says so either
    }
}

void KeyDelivery::pressAndCount(Console& console, int key, int modifiers, const std::u32string& text)
{
    mIsFullLineReported = mIsFullLineReported && !console.activeInput().empty(); // another line
    if (!console.isOpen()) {
        tryPressOne(console, key, modifiers, text.substr(0, 1));
        return;
    }
    bool isDone = false;
    const auto prepare = [&] { isDone = mPlaces.prepare(console, key, modifiers, text); };
    if (tryToDo(prepare, console, key) && !isDone) {
        pressAll(console, key, modifiers, text);
        mPlaces.follow(console, key, modifiers, text);
    }
}

void KeyDelivery::pressAll(Console& console, int key, int modifiers, const std::u32string& text)
{
    bool goesOn = tryPressOne(console, key, modifiers, text.substr(0, 1));
    for (std::size_t i = 1; goesOn && i < text.size(); ++i) {
        goesOn = tryPressOne(console, 0, Qt::NoModifier, text.substr(i, 1));
    }
}

/// \return whether the console took the key without throwing.
bool KeyDelivery::tryPressOne(Console& console, int key, int modifiers, const std::u32string& text)
{
    const auto press = [&] { console.keyPressed(key, modifiers, text); };
    const bool isTaken = tryToDo(press, console, key);
    mIsFullLineReported = mIsFullLineReported && (!isTaken || text.empty());
    return isTaken;
}

/// Does what `key` asks for, and reports what that throws. \return whether it threw nothing.
ZEPHYR_CATCHES_FORCED_UNWINDING bool KeyDelivery::tryToDo(const std::function<void()>& action,
                                                          Console& console, int key)
{
    try {
        action();
        return true;
    } catch (const EndOfRun&) { // as the user asked for
    } catch (const DepthLimitError& error) {
        mCaught(QString::fromUtf8(error.what())); // which the console has written already
    } catch (const std::system_error& error) {
        if (isRefusedInsertion(error, key)) {
            reportFullLine(console);
        } else {
            report(console, exceptionLine(std::current_exception()));
        }
    }
    ZEPHYR_LET_FORCED_UNWINDING_THROUGH
    catch (...) { report(console, exceptionLine(std::current_exception())); }
    return false;
}

void KeyDelivery::reportFullLine(Console& console)
{
    mPlaces.followRefusal(console);
    if (!std::exchange(mIsFullLineReported, true)) {
        report(console, kInputFull);
    }
}

ZEPHYR_CATCHES_FORCED_UNWINDING void KeyDelivery::report(Console& console, const std::u32string& line)
{
    try {
        console.write(line, Output);
    } catch (const std::bad_alloc&) {
        throw;
    }
    ZEPHYR_LET_FORCED_UNWINDING_THROUGH
    catch (...)
    { // the observer's; the line is written
    }
    mCaught(QString::fromStdU32String(line));
}

} // namespace zephyr::console::qt
