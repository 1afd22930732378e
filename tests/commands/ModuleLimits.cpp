#include "commands/ModuleLimits.h"

zephyr::console::commands::Parameter zephyr::test::evenNumber()
{
    return console::commands::argument(U"number").check([](int number) { return number % 2 == 0; },
                                                        U"is odd");
}
