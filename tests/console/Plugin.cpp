// A library of commands that a host loads and unloads; built twice, with another answer.
#include "zephyr/console/Console.h"

#include <memory>

namespace {

class PluginCommand : public zephyr::console::ConsoleCommand
{
public:
    std::u32string name() const override { return U"plugin"; }

    void execute(const zephyr::console::ConsoleArgs&, zephyr::console::Console& console) override
    {
        console.write(ANSWER, zephyr::console::Output);
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) void registerCommands(zephyr::console::Console& console)
{
    console.registerCommand(std::make_unique<PluginCommand>());
}
