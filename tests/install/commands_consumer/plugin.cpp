// A plugin of the host whose commands go when it is unloaded.

#include <zephyr/console/Console.h>
#include <zephyr/console/commands/Command.h>
#include <zephyr/console/commands/Variable.h>

#include <memory>

namespace {

namespace zc = zephyr::console;

struct Parts
{
    explicit Parts(zc::Console& console)
        : greet(zc::commands::add(console, U"greet", U"Greets.",
                                  [](const std::string& whom) { return "Hello " + whom + "."; })),
          volume(console, U"volume", 5, U"How loud.", zc::commands::between(0, 10))
    {}

    zc::commands::Registration greet;
    zc::commands::Variable<int> volume;
};

std::unique_ptr<Parts> parts;

} // namespace

extern "C" __attribute__((visibility("default"))) void load(zc::Console& console)
{
    parts = std::make_unique<Parts>(console);
}

extern "C" __attribute__((visibility("default"))) void unload() { parts.reset(); }
