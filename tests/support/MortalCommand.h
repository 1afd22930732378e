#ifndef ZEPHYR_TESTS_SUPPORT_MORTALCOMMAND_H
#define ZEPHYR_TESTS_SUPPORT_MORTALCOMMAND_H

#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace zephyr::test {

/// Expires when its command is destroyed.
using Life = std::weak_ptr<void>;

/// Registers a command that calls `run`, and returns its life. `destroyed` is called when the command is
/// destroyed.
inline Life addMortalCommand(console::Console& console, const std::u32string& name,
                             ScriptedCommand::Run run = {}, std::function<void()> destroyed = {})
{
    const std::shared_ptr<void> life(nullptr, [destroyed = std::move(destroyed)](void*) {
        if (destroyed) {
            destroyed();
        }
    });
    addCommand(console, name).onExecute = [life, run = std::move(run)](const console::ConsoleArgs& args,
                                                                       console::Console& runner) {
        if (run) {
            run(args, runner);
        }
    };
    return life;
}

} // namespace zephyr::test

#endif
