#ifndef ZEPHYR_TESTS_COMMANDS_MODULELIMITS_H
#define ZEPHYR_TESTS_COMMANDS_MODULELIMITS_H

#include "zephyr/console/commands/Parameter.h"

namespace zephyr::test {

/// An argument that must be even, described in a shared library, as a part of a large program would.
[[gnu::visibility("default")]] console::commands::Parameter evenNumber();

} // namespace zephyr::test

#endif
