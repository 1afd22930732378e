#include "CommandTable.h"

#include <QScopeGuard>

#include <iterator>
#include <utility>

namespace zephyr::console {

void CommandTable::add(const std::u32string& name, std::unique_ptr<ConsoleCommand>&& command)
{
    const auto added = mCommands.try_emplace(name);
    std::unique_ptr<ConsoleCommand>& entry = added.first->second;
    if (added.second) {
        auto undo = qScopeGuard([&] { mCommands.erase(added.first); });
        mFinder.emplace(added.first->first, &entry);
        undo.dismiss();
    }
    retire(std::move(entry));
    entry = std::move(command);
}

bool CommandTable::remove(const std::u32string& name)
{
    auto entry = mCommands.extract(name); // out of the table before the command is destroyed
    if (entry.empty()) {
        return false;
    }
    ++mRemovals;
    mFinder.erase(entry.key());
    retire(std::move(entry.mapped()));
    return true;
}

ConsoleCommand* CommandTable::find(const std::u32string& name) const
{
    const auto found = mFinder.find(name);
    return found == mFinder.end() ? nullptr : found->second->get();
}

std::optional<std::vector<std::u32string>> CommandTable::candidates(std::vector<std::u32string>&& words,
                                                                    bool endsWithBlank)
{
    ConsoleCommand* const command = words.empty() ? nullptr : find(words.front());
    if (command == nullptr) {
        return std::nullopt;
    }
    const Call call(*this, *command);
    return command->getAutoCompleteResults(ConsoleArgs(std::move(words), endsWithBlank));
}

void CommandTable::forEach(const std::function<void(const ConsoleCommand&)>& fn)
{
    // `fn` may change the table. Where it removes commands, the next name is searched for; to do so at each step would
    // cost most of the walk.
    for (auto next = mCommands.begin(); next != mCommands.end();) {
        const std::u32string name = next->first;
        const std::size_t removals = mRemovals;
        // The pointer is null while add() destroys the previous command.
        if (const ConsoleCommand* const command = next->second.get(); command != nullptr) {
            const Call call(*this, *command);
            fn(*command);
        }
        next = mRemovals == removals ? std::next(next) : mCommands.upper_bound(name);
    }
}

void CommandTable::clear()
{
    mFinder.clear();
    auto commands = std::exchange(mCommands, {});
    ++mRemovals;
    for (auto& [name, command] : commands) {
        retire(std::move(command));
    }
}

/// Destroys a command that left the table, or leaves that to its outermost call.
void CommandTable::retire(std::unique_ptr<ConsoleCommand> command)
{
    Call* outermost = nullptr;
    for (Call* call = mInnermost; call != nullptr; call = call->mOuter) {
        if (call->mCommand == command.get()) {
            outermost = call;
        }
    }
    if (outermost != nullptr) {
        outermost->mKept = std::move(command);
    }
}

} // namespace zephyr::console
