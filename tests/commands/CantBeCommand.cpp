// Functions that can't be a command, each on a line of its own that is marked as refused.

#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Command.h"

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
    add(console, U"x", U"", [](int, const std::u32string&, std::optional<bool>, Answer&) {});
    // clang-format off
    add(console, U"x", U"", [](Unknown) {}); // refused
    add(console, U"x", U"", [](int&) {}); // refused
    add(console, U"x", U"", [](auto) {}); // refused
    add(console, U"x", U"", Overloaded()); // refused
    add(console, U"x", U"", [](Nameless) {}); // refused
    add(console, U"x", U"", [] { return Unknown(); }); // refused
    add(console, U"x", U"", [](int) {}, argument(U"a"), argument(U"b")); // refused
    add(console, U"x", U"", 3); // refused
    add(console, U"x", U"", [](zephyr::console::Console) {}); // refused
    add(console, command(U"x", U"").sub(U"y", U"", [](std::vector<Unknown>) {})); // refused
    add(console, U"x", U"", [](std::optional<std::optional<int>>) {}); // refused
    // clang-format on
}
