#ifndef ZEPHYR_SANDBOX_COMMANDS_ALIASSAVECOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_ALIASSAVECOMMAND_H

#include "sandbox/commands/SaveCommand.h"

namespace zephyr::sandbox {

/// The command `alias_save`: writes the console's aliases to a console file; running the file restores them exactly. If
/// a console file can't hold one of the aliases, the answer names it and nothing is written.
class AliasSaveCommand : public SaveCommand
{
public:
    AliasSaveCommand();

    std::u32string name() const override;

protected:
    void save(const std::u32string& file, console::Console& console) const override;
};

} // namespace zephyr::sandbox

#endif
