#include "CompletionSource.h"

#include "zephyr/console/Console.h"
#include "zephyr/console/InputWords.h"
#include "zephyr/console/detail/ForcedUnwinding.h"

#include <QScopeGuard>

#include <utility>

namespace zephyr::console::qt {

namespace {

/// Thrown to end a walk over the commands, of which there may be thousands.
struct EndOfWalk
{};

} // namespace

CompletionSource::CompletionSource(Clock clock) : mClock(std::move(clock)) {}

ZEPHYR_CATCHES_FORCED_UNWINDING std::optional<SharedTexts> CompletionSource::ask(Console& console,
                                                                                 const std::u32string& line)
{
    const std::u32string name(firstWord(line));
    ConsoleCommand* const wanted = console.lookupCommand(name);
    if (wanted == nullptr) {
        return std::nullopt;
    }
    std::optional<SharedTexts> answer;
    try {
        console.forEachCommand([&](const ConsoleCommand& command) {
            if (&command == wanted) {
                answer = timedAnswer(*wanted, name, line);
                throw EndOfWalk();
            }
        });
    }
    ZEPHYR_LET_FORCED_UNWINDING_THROUGH
    catch (...)
    { // the end of the walk, or what the command threw
    }
    return answer;
}

SharedTexts CompletionSource::timedAnswer(ConsoleCommand& command, const std::u32string& name,
                                          const std::u32string& line)
{
    const auto start = mClock();
    const auto answered = qScopeGuard([&] { // one that throws late holds typing up as well
        if (mClock() - start > kSlow) {
            mSlow.insert(name);
        }
    });
    return SharedTexts(command.getAutoCompleteResults(completionArgs(line)));
}

} // namespace zephyr::console::qt
