#include "DeclaredCommands.h"

#include "Command.h"
#include "ForwardingCommand.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/quick/ConsoleHandle.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zephyr::console::quick {

DeclaredCommands::DeclaredCommands(std::weak_ptr<Console> console) : mConsole(std::move(console)) {}

DeclaredCommands::~DeclaredCommands() = default;

std::shared_ptr<DeclaredCommands> DeclaredCommands::of(const ConsoleHandle& handle)
{
    return handle.mCommands;
}

void DeclaredCommands::add(Command& command, const QString& name)
{
    mEntries.push_back({&command, name});
    if (const std::shared_ptr<Console> console = mConsole.lock()) {
        registerAt(*console, mEntries.back());
    }
}

void DeclaredCommands::remove(const Command& command)
{
    const auto found = std::find_if(mEntries.begin(), mEntries.end(),
                                    [&](const Entry& entry) { return entry.command == &command; });
    if (found == mEntries.end()) {
        return;
    }
    const QString name = found->name;
    mEntries.erase(found);
    const std::shared_ptr<Console> console = mConsole.lock();
    if (!console || !ForwardingCommand::isRegistered(*console, name, command)) {
        return; // a command of the same name has replaced it
    }
    console->unregisterCommand(name.toStdU32String());
    if (const Entry* next = newestOf(name)) {
        registerAt(*console, *next);
    }
}

void DeclaredCommands::registerAt(Console& console, const Entry& entry)
{
    console.registerCommand(std::make_unique<ForwardingCommand>(*entry.command, entry.name));
}

const DeclaredCommands::Entry* DeclaredCommands::newestOf(const QString& name) const
{
    const auto found = std::find_if(mEntries.rbegin(), mEntries.rend(),
                                    [&](const Entry& entry) { return entry.name == name; });
    return found == mEntries.rend() ? nullptr : &*found;
}

} // namespace zephyr::console::quick
