// A plugin of the host that registers a command.

#include <zephyr/console/Console.h>
#include <zephyr/console/ConsoleCommand.h>

#include <memory>
#include <string>

namespace {

namespace zc = zephyr::console;

class PluggedCommand : public zc::ConsoleCommand
{
public:
    std::u32string name() const override { return U"plugged"; }

    void execute(const zc::ConsoleArgs&, zc::Console& console) override
    {
        console.write(U"From the plugin.", zc::Output);
    }
};

} // namespace

extern "C" __attribute__((visibility("default"))) void registerCommands(zc::Console& console)
{
    console.registerCommand(std::make_unique<PluggedCommand>());
}
