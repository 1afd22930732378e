#ifndef ZEPHYR_SANDBOX_COMMANDS_LOGSAVECOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_LOGSAVECOMMAND_H

#include "sandbox/commands/SaveCommand.h"

namespace zephyr::sandbox {

/// The command `log_save`: writes the console's log as it is shown to a text file in UTF-8.
class LogSaveCommand : public SaveCommand
{
public:
    LogSaveCommand();

    std::u32string name() const override;

protected:
    void save(const std::u32string& file, console::Console& console) const override;
};

} // namespace zephyr::sandbox

#endif
