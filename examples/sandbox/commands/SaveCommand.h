#ifndef ZEPHYR_SANDBOX_COMMANDS_SAVECOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_SAVECOMMAND_H

#include "zephyr/console/ConsoleCommand.h"

#include <string>

namespace zephyr::sandbox {

/// Base of the sandbox's commands that save something. Their only argument is the file, which is written whole or not
/// at all.
///
/// - Failure: no name or more than one is answered with printIncorrectUsage(). A file that can't be written is answered
///   with one line that says why, and then an existing file is as it was.
class SaveCommand : public console::ConsoleCommand
{
public:
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

protected:
    /// `usage` shows how the whole line looks; help puts it in front of the description.
    SaveCommand(const std::u32string& usage, const std::u32string& description,
                const std::u32string& helpText);

    /// Writes the file. `file` is its name, without quotes and not empty.
    virtual void save(const std::u32string& file, console::Console& console) const = 0;

    /// Makes `bytes` the content of `file` and answers "Wrote `what` to 'file'."
    static void writeFile(const std::u32string& file, const std::string& bytes, const std::string& what,
                          console::Console& console);

private:
    std::u32string mUsage;
};

} // namespace zephyr::sandbox

#endif
