#ifndef ZEPHYR_CONSOLE_ALIASCONSOLECOMMAND_H
#define ZEPHYR_CONSOLE_ALIASCONSOLECOMMAND_H

#include "zephyr/console/ConsoleCommand.h"

#include <map>
#include <string>
#include <vector>

namespace zephyr::console {

/// The command `alias`: defines, replaces and clears the console's aliases.
///
/// It holds a reference to the alias table of the console that owns it.
///
/// | line | does |
/// |---|---|
/// | `alias n "a; b"` | makes `n` stand for the lines `a` and `b` |
/// | `alias n ""` | clears `n` |
class AliasConsoleCommand : public ConsoleCommand
{
public:
    using AliasTable = std::map<std::u32string, std::vector<std::u32string>>;

    explicit AliasConsoleCommand(AliasTable& aliases);

    std::u32string name() const override;
    void execute(const ConsoleArgs& args, Console& console) override;

private:
    void define(const std::u32string& aliasName, std::vector<std::u32string> lines, Console& console);
    void clear(const std::u32string& aliasName, Console& console);

    AliasTable& mAliases;
};

} // namespace zephyr::console

#endif
