#ifndef ZEPHYR_CONSOLE_COMMANDS_REFERENCEDATA_H
#define ZEPHYR_CONSOLE_COMMANDS_REFERENCEDATA_H

#include <string>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::commands {

/// What reference() says of a word that is typed for a command.
struct ReferenceParameter
{
    std::u32string usage;    ///< As usage shows it.
    std::u32string byName;   ///< As an argument may be typed too.
    std::u32string expected; ///< What it must be like.
    std::u32string byDefault;
    std::u32string description;
};

/// What reference() says of a function of a command, or of an argument handler.
struct ReferenceForm
{
    std::u32string usage;
    std::u32string description;
    std::u32string help; ///< Of an argument handler.
    std::vector<ReferenceParameter> parameters;
};

/// What reference() says of a command.
struct ReferenceCommand
{
    std::u32string name;
    std::u32string description;
    std::vector<ReferenceForm> forms;
};

/// What reference() says of a variable.
struct ReferenceVariable
{
    std::u32string name;
    std::u32string description;
    std::u32string byDefault;
    std::u32string expected;
    bool isReadOnly;
};

/// What reference() says of an alias.
struct ReferenceAlias
{
    std::u32string name;
    std::vector<std::u32string> lines;
};

/// All that can be typed on a console.
struct ReferenceData
{
    std::vector<ReferenceCommand> commands;
    std::vector<ReferenceVariable> variables;
    std::vector<ReferenceAlias> aliases;
};

/// Asks `console` for everything.
ReferenceData referenceData(Console& console);

} // namespace zephyr::console::commands

#endif
