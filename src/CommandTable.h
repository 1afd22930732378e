#ifndef ZEPHYR_CONSOLE_COMMANDTABLE_H
#define ZEPHYR_CONSOLE_COMMANDTABLE_H

#include "zephyr/console/ConsoleCommand.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console {

/// The registered commands by name, and which of them are on the stack.
///
/// A command that leaves the table is destroyed at once, unless a Call of it is under way: then when its outermost Call
/// ends. Used by one thread.
class CommandTable
{
public:
    /// A call into a command, or with it, from the object's construction to its destruction. Calls end in the reverse
    /// order in which they began, as objects on the stack do.
    class Call
    {
    public:
        Call(CommandTable& table, const ConsoleCommand& command)
            : mTable(table), mCommand(&command), mOuter(std::exchange(table.mInnermost, this))
        {}
        ~Call() { mTable.mInnermost = mOuter; }

        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

    private:
        friend class CommandTable;

        CommandTable& mTable;
        const ConsoleCommand* const mCommand;
        Call* const mOuter;
        std::unique_ptr<ConsoleCommand> mKept; // the command, once it has left the table
    };

    CommandTable() = default;
    CommandTable(const CommandTable&) = delete;
    CommandTable& operator=(const CommandTable&) = delete;

    /// Files `command` under `name` in place of what is there. Throws `std::bad_alloc`; `command` is then the caller's.
    void add(const std::u32string& name, std::unique_ptr<ConsoleCommand>&& command);

    /// The command filed under exactly `name`, or null.
    ConsoleCommand* find(const std::u32string& name) const;

    /// What the command that the first of `words` names completes their last with, asked as a Call of it; nothing if there
    /// is no such command. Throws what the command throws.
    std::optional<std::vector<std::u32string>> candidates(std::vector<std::u32string>&& words);

    /// Calls `fn` with each command in ascending order of name, as a Call of it. `fn` may change the table.
    void forEach(const std::function<void(const ConsoleCommand&)>& fn);

    /// Removes every command.
    void clear();

private:
    void retire(std::unique_ptr<ConsoleCommand> command);

    std::map<std::u32string, std::unique_ptr<ConsoleCommand>> mCommands;
    Call* mInnermost = nullptr;
};

} // namespace zephyr::console

#endif
