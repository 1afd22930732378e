#ifndef ZEPHYR_CONSOLE_QUICK_FORWARDINGCOMMAND_H
#define ZEPHYR_CONSOLE_QUICK_FORWARDINGCOMMAND_H

#include "zephyr/console/ConsoleCommand.h"

#include <QPointer>
#include <QString>

#include <string>
#include <vector>

namespace zephyr::console::quick {

class Command;

/// What the console holds for a Command, which belongs to QML.
class ForwardingCommand : public ConsoleCommand
{
public:
    ForwardingCommand(Command& command, const QString& name);

    /// Whether `console` runs `command` under `name`.
    static bool isRegistered(Console& console, const QString& name, const Command& command);

    std::u32string name() const override { return mName; }

    void execute(const ConsoleArgs& args, Console& console) override;
    std::vector<std::u32string> getAutoCompleteResults(const ConsoleArgs& args) override;

private:
    const QPointer<Command> mCommand; // null once QML destroyed it, which may happen while it runs
    const std::u32string mName;
};

} // namespace zephyr::console::quick

#endif
