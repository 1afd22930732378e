#include "LampCommand.h"

#include <memory>

extern "C" __attribute__((visibility("default"))) void registerCommands(zephyr::console::Console& console)
{
    console.registerCommand(std::make_unique<LampCommand>());
}
