#ifndef ZEPHYR_CONSOLE_ENDOFRUN_H
#define ZEPHYR_CONSOLE_ENDOFRUN_H

#include "zephyr/console/detail/Export.h"

namespace zephyr::console {

/// A command throws this to end everything that is running, the rest of an alias, a console file or a batch included,
/// because the user asked for it: a command that ends the program, say. It is no `std::exception`, as nothing went wrong.
/// The console lets it out as it lets out whatever a command throws. The libraries around the console catch it and write no
/// line for it.
struct ZEPHYR_CONSOLE_EXPORT EndOfRun
{};

} // namespace zephyr::console

#endif
