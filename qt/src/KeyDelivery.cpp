#include "KeyDelivery.h"

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <Qt>

#include <exception>
#include <system_error>
#include <utility>

namespace zephyr::console::qt {

namespace {

const char* const kInputFull = "Maximum input length exceeded.";
const char* const kExceptionStart = "The console caught an exception: ";
const char* const kUnknownException = "unknown exception";

bool runsHostCode(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

bool isRefusedInsertion(const std::system_error& error, int key)
{
    return error.code() == std::errc::resource_deadlock_would_occur && !runsHostCode(key);
}

} // namespace

KeyDelivery::KeyDelivery(std::function<void(const QString& line)> caught) : mCaught(std::move(caught)) {}

void KeyDelivery::press(Console& console, int key, int modifiers, const std::u32string& text)
{
    mRefusalTold = mRefusalTold && !console.activeInput().empty(); // another line
    bool goesOn = pressOne(console, key, modifiers, text.substr(0, 1));
    for (std::size_t i = 1; goesOn && i < text.size(); ++i) {
        goesOn = pressOne(console, 0, Qt::NoModifier, text.substr(i, 1));
    }
}

/// \return whether the console took the key without an exception.
bool KeyDelivery::pressOne(Console& console, int key, int modifiers, const std::u32string& text)
{
    try {
        console.keyPressed(key, modifiers, text);
        mRefusalTold = mRefusalTold && text.empty();
        return true;
    } catch (const std::system_error& error) {
        if (isRefusedInsertion(error, key)) {
            tellRefusal(console);
        } else {
            tell(console, kExceptionStart + std::string(error.what()));
        }
    } catch (const std::exception& error) {
        tell(console, kExceptionStart + std::string(error.what()));
    } catch (...) {
        tell(console, std::string(kExceptionStart) + kUnknownException);
    }
    return false;
}

void KeyDelivery::tellRefusal(Console& console)
{
    if (!std::exchange(mRefusalTold, true)) {
        tell(console, kInputFull);
    }
}

void KeyDelivery::tell(Console& console, const std::string& message)
{
    QString line = QString::fromStdU32String(StringUtil::toU32String(message));
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    console.write(line.toStdU32String(), Output);
    mCaught(line);
}

} // namespace zephyr::console::qt
