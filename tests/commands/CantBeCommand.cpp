// Functions that can't be a command: one for each number that CASE may be. With 0 it compiles.

#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Command.h"
#include "zephyr/console/commands/Variable.h"

#include <map>

struct Unknown
{};

enum class Nameless
{
    One
};

struct Overloaded
{
    void operator()(int) const {}
    void operator()(double) const {}
};

void addTo(zephyr::console::Console& console)
{
    using namespace zephyr::console::commands;
#if CASE == 0
    add(console, U"x", U"", [](int, const std::u32string&, std::optional<bool>, Answer&) {});
#elif CASE == 1
    add(console, U"x", U"", [](Unknown) {});
#elif CASE == 2
    add(console, U"x", U"", [](int&) {});
#elif CASE == 3
    add(console, U"x", U"", [](auto) {});
#elif CASE == 4
    add(console, U"x", U"", Overloaded());
#elif CASE == 5
    add(console, U"x", U"", [](Nameless) {});
#elif CASE == 6
    add(console, U"x", U"", [] { return Unknown(); });
#elif CASE == 7
    add(
        console, U"x", U"", [](int) {}, argument(U"a"), argument(U"b"));
#elif CASE == 8
    add(console, U"x", U"", 3);
#elif CASE == 9
    add(console, U"x", U"", [](zephyr::console::Console) {});
#elif CASE == 10
    add(console, command(U"x", U"").sub(U"y", U"", [](std::vector<Unknown>) {}));
#elif CASE == 11
    add(console, U"x", U"", [](std::optional<std::optional<int>>) {});
#endif
}
