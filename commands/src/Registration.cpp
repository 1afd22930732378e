#include "zephyr/console/commands/Registration.h"

#include "Place.h"
#include "zephyr/console/Console.h"

#include <utility>

namespace zephyr::console::commands {

bool Registration::isActive() const
{
    const std::shared_ptr<const detail::Place> place = mPlace.lock();
    return place && place->console->lookupCommand(place->name) == place->command;
}

void Registration::remove() noexcept
{
    if (isActive()) {
        const std::shared_ptr<const detail::Place> place = mPlace.lock();
        place->console->unregisterCommand(place->name);
    }
    mPlace.reset();
}

bool remove(Console& console, const std::u32string& name) { return console.unregisterCommand(name); }

} // namespace zephyr::console::commands
