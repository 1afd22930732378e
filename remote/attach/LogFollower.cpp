#include "attach/LogFollower.h"

#include <variant>

namespace zephyr::attach {

void LogFollower::received(const console::remote::Message& message)
{
    if (const auto* const entry = std::get_if<console::remote::EntryMessage>(&message)) {
        print(entry->entry);
    }
}

} // namespace zephyr::attach
