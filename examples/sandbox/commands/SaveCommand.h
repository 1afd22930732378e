#ifndef ZEPHYR_SANDBOX_COMMANDS_SAVECOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_SAVECOMMAND_H

#include "zephyr/console/ConsoleCommand.h"

#include <string>

namespace zephyr::sandbox {

/// A command of one word besides its own: the file that it writes. The base of the sandbox's commands that
/// save something.
///
/// - It is: the part that they share, which is reading the file's name and writing it whole or not at all. It
///   is not: a command by itself.
/// - Threads, ownership: as for every ConsoleCommand.
/// - Failure: no name or more than one is answered with printIncorrectUsage(), a file that can't be written
///   with one line that says why; a file that was there is then as it was.
class SaveCommand : public console::ConsoleCommand
{
public:
    void execute(const console::ConsoleArgs& args, console::Console& console) override;

protected:
    /// `usage` is the whole line in short, which help shows in front of the description.
    SaveCommand(const std::u32string& usage, const std::u32string& description,
                const std::u32string& helpText);

    /// Writes what there is to write. `file` is the name without its quotes, not empty.
    virtual void save(const std::u32string& file, console::Console& console) const = 0;

    /// Makes `bytes` the content of `file` and answers with "Wrote `what` to 'file'.".
    static void writeFile(const std::u32string& file, const std::string& bytes, const std::string& what,
                          console::Console& console);

private:
    std::u32string mUsage;
};

} // namespace zephyr::sandbox

#endif
