#include "console/LineCompletion.h"

#include "console/Texts.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/InputWords.h"
#include "zephyr/console/detail/ForcedUnwinding.h"

#include <set>
#include <string>
#include <vector>

namespace zephyr::console::remote {

namespace {

/// Thrown to end a walk over the commands, of which there may be thousands.
struct EndOfWalk
{};

/// The names that begin with `word`. Names that no line can begin with, those with a space, are left out.
ZEPHYR_CATCHES_FORCED_UNWINDING std::set<std::u32string> namesBeginningWith(Console& console,
                                                                            std::u32string_view word)
{
    std::set<std::u32string> names;
    const auto add = [&](const std::u32string& name) {
        if (name.starts_with(word) && !name.empty() && name.find(U' ') == std::u32string::npos) {
            names.insert(name);
        }
    };
    console.forEachAlias([&](const std::u32string& name, const auto&) { add(name); });
    console.forEachCommand([&](const ConsoleCommand& command) {
        try {
            add(command.name());
        }
        ZEPHYR_LET_FORCED_UNWINDING_THROUGH
        catch (...)
        { // one that can't tell its name can't be offered
        }
    });
    return names;
}

/// What the command offers that `line` begins with. The walk keeps it alive until it has answered, whatever it does.
ZEPHYR_CATCHES_FORCED_UNWINDING std::vector<std::u32string> offersOfCommand(Console& console,
                                                                            std::u32string_view line)
{
    std::vector<std::u32string> offers;
    ConsoleCommand* const wanted = console.lookupCommand(std::u32string(firstWord(line)));
    if (wanted == nullptr) {
        return offers;
    }
    try {
        console.forEachCommand([&](const ConsoleCommand& command) {
            if (&command == wanted) {
                offers = wanted->getAutoCompleteResults(completionArgs(line));
                throw EndOfWalk();
            }
        });
    }
    ZEPHYR_LET_FORCED_UNWINDING_THROUGH
    catch (...)
    { // the end of the walk, or what the command threw
    }
    return offers;
}

} // namespace

Completion completionOf(Console& console, std::u32string_view line)
{
    Completion completion;
    if (line.find(U' ') == std::u32string_view::npos) {
        for (const std::u32string& name : namesBeginningWith(console, line)) {
            completion.candidates += textOf(name);
        }
        return completion;
    }
    completion.from = textOf(completionHead(line)).size();
    for (const std::u32string& offer : offersOfCommand(console, line)) {
        completion.candidates += textOf(offer);
    }
    return completion;
}

} // namespace zephyr::console::remote
