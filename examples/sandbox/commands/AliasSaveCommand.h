#ifndef ZEPHYR_SANDBOX_COMMANDS_ALIASSAVECOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_ALIASSAVECOMMAND_H

#include "sandbox/commands/SaveCommand.h"

namespace zephyr::sandbox {

/// The command `alias_save`: writes the console's aliases as a console file, which `run` restores exactly. An
/// alias that a console file can't hold is named, and nothing is written.
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
