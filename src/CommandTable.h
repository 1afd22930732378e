#ifndef ZEPHYR_CONSOLE_COMMANDTABLE_H
#define ZEPHYR_CONSOLE_COMMANDTABLE_H

#include "zephyr/console/ConsoleCommand.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zephyr::console {

/// The registered commands by name, and which of them are on the stack.
///
/// A command that leaves the table is destroyed at once. If a Call of it is under way, it is destroyed when its
/// outermost Call ends. Only one thread may use a table.
class CommandTable
{
public:
    /// Keeps a command alive while one of its functions runs, or while a callback uses it. Calls are objects on the
    /// stack, so they end in the reverse order of their beginning.
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

    /// Files `command` under `name`, in place of a command that has the name. If it throws `std::bad_alloc`, the caller
    /// keeps `command`.
    void add(const std::u32string& name, std::unique_ptr<ConsoleCommand>&& command);

    /// Removes the command filed under exactly `name`. \return false if there is none.
    bool remove(const std::u32string& name);

    /// The command filed under exactly `name`, or null.
    ConsoleCommand* find(const std::u32string& name) const;

    /// Asks the command named by the first of `words` for candidates for the last of them, or for one more if the line
    /// ends with a blank, as a Call of the command. Throws what the command throws. \return nothing if there is no such
    /// command.
    std::optional<std::vector<std::u32string>> candidates(std::vector<std::u32string>&& words,
                                                          bool endsWithBlank);

    /// Calls `fn` with each command in ascending order of name, as a Call of the command. `fn` may change the table.
    void forEach(const std::function<void(const ConsoleCommand&)>& fn);

    /// Removes every command.
    void clear();

private:
    void retire(std::unique_ptr<ConsoleCommand> command);

    std::map<std::u32string, std::unique_ptr<ConsoleCommand>> mCommands;
    std::unordered_map<std::u32string_view, const std::unique_ptr<ConsoleCommand>*>
        mFinder; // finds them fast
    Call* mInnermost = nullptr;
    std::size_t mRemovals = 0; // from mCommands, by which iterators become invalid
};

} // namespace zephyr::console

#endif
