// The example in the class's comment is a whole program: here it is only compiled, as it takes the test's own input.

#include "zephyr/console/Console.h"
#include "zephyr/console/remote/ConsoleTerminal.h"

#include <QCoreApplication>

namespace zephyr::test {

int runTerminalExample(int argc, char** argv);

int runTerminalExample(int argc, char** argv)
{
    using console::Console;
    using console::remote::ConsoleTerminal;
#include "ConsoleTerminal.inc"
}

} // namespace zephyr::test
