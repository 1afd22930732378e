#include "ReferenceData.h"

#include "TypedCommand.h"
#include "VariableCommand.h"
#include "Words.h"
#include "zephyr/console/Console.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace zephyr::console::commands {

namespace {

ReferenceForm formOf(const TypedCommand& command, const detail::Form& form)
{
    ReferenceForm result{form.usage(command.name()), form.description, {}, {}};
    for (const detail::FormParameter& parameter : form.parameters) {
        const std::optional<std::u32string>& byDefault = parameter.described.defaultText();
        result.parameters.push_back(
            {parameter.usage(), parameter.isArgument() ? parameter.byName() : std::u32string(),
             parameter.expected(),
             byDefault ? parameter.rules.withUnit(quoted(*byDefault)) : std::u32string(),
             parameter.described.description()});
    }
    return result;
}

ReferenceCommand typed(const TypedCommand& command)
{
    ReferenceCommand result{command.name(), command.description(), {}};
    std::transform(command.forms().begin(), command.forms().end(), std::back_inserter(result.forms),
                   [&](const detail::Form& form) { return formOf(command, form); });
    return result;
}

/// What printHelp() writes of an argument, which is the only way to its texts.
std::vector<std::u32string> helpOf(const ConsoleCommand& command, const std::u32string& argument,
                                   Console& scratch)
{
    const std::size_t before = scratch.logSize();
    command.printHelp(argument, scratch, 0);
    std::vector<LogEntry> entries;
    scratch.readLog(before, scratch.logSize() - before, entries);
    std::vector<std::u32string> lines;
    std::transform(entries.begin(), entries.end(), std::back_inserter(lines),
                   [](const LogEntry& entry) { return entry.text; });
    lines.resize(2); // a description and a help text
    return lines;
}

ReferenceCommand untyped(const ConsoleCommand& command, Console& scratch)
{
    ReferenceCommand result{command.name(), {}, {}};
    command.forEachArg([&](const std::u32string& argument) {
        const std::vector<std::u32string> help = helpOf(command, argument, scratch);
        result.forms.push_back({command.name() + U" " + argument, help[0], help[1], {}});
    });
    if (result.forms.empty()) {
        result.forms.push_back({command.name(), {}, {}, {}});
    }
    return result;
}

} // namespace

ReferenceData referenceData(Console& console)
{
    ReferenceData data;
    const auto scratch = std::make_unique<Console>();
    console.forEachCommand([&](const ConsoleCommand& command) {
        if (const auto* const variable = dynamic_cast<const VariableCommand*>(&command)) {
            if (!variable->limits().isHidden()) {
                data.variables.push_back({variable->name(), variable->description(), variable->shownDefault(),
                                          variable->rules().expected(), variable->limits().isReadOnly()});
            }
        } else if (const auto* const made = dynamic_cast<const TypedCommand*>(&command)) {
            data.commands.push_back(typed(*made));
        } else {
            data.commands.push_back(untyped(command, *scratch));
        }
    });
    console.forEachAlias([&](const std::u32string& name, const std::vector<std::u32string>& lines) {
        data.aliases.push_back({name, lines});
    });
    return data;
}

} // namespace zephyr::console::commands
