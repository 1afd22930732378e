#ifndef ZEPHYR_CONSOLE_QUICK_DECLAREDCOMMANDS_H
#define ZEPHYR_CONSOLE_QUICK_DECLAREDCOMMANDS_H

#include <QString>

#include <memory>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::quick {

class Command;
class ConsoleHandle;
class ScriptErrors;

/// The commands that QML declared for one console, and which of them run. Of several with one name the console runs the
/// newest, and the one before it again once that is gone.
class DeclaredCommands
{
public:
    explicit DeclaredCommands(std::weak_ptr<Console> console);
    ~DeclaredCommands();

    DeclaredCommands(const DeclaredCommands&) = delete;
    DeclaredCommands& operator=(const DeclaredCommands&) = delete;

    /// Those of the console that `handle` holds.
    static std::shared_ptr<DeclaredCommands> of(const ConsoleHandle& handle);

    /// Registers `command`, which must be removed before it is destroyed, under `name`.
    void add(Command& command, const QString& name);

    /// Removes `command` from the console. Does nothing if it was not added. While it runs, the call goes on.
    void remove(const Command& command);

    /// The console, or null if it is gone.
    std::shared_ptr<Console> console() const { return mConsole.lock(); }

    /// What hears of the exceptions of the command that runs; null while none does.
    ScriptErrors* runningScript() const { return mErrors; }

private:
    friend class ScriptErrors;

    struct Entry
    {
        Command* command;
        QString name;
    };

    static void registerAt(Console& console, const Entry& entry);
    const Entry* newestOf(const QString& name) const;

    const std::weak_ptr<Console> mConsole;
    std::vector<Entry> mEntries;     // oldest first
    ScriptErrors* mErrors = nullptr; // of the innermost command that runs
};

} // namespace zephyr::console::quick

#endif
