// Functions that can't be a command, and other mistakes, each on a line of its own that says how it is refused.

#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Command.h"
#include "zephyr/console/commands/Variable.h"

struct Unknown
{};

enum class Nameless
{
    One
};

struct NoCandidates
{};

template <>
struct zephyr::console::commands::Value<NoCandidates>
{
    static constexpr std::u32string_view kName = U"thing";
    static constexpr bool kOnlyCandidates = true;
    static std::optional<NoCandidates> read(const std::u32string&) { return NoCandidates(); }
    static std::u32string write(const NoCandidates&) { return {}; }
};

struct Overloaded
{
    void operator()(int) const {}
    void operator()(double) const {}
    void go() {}
};

void addTo(zephyr::console::Console& console)
{
    using namespace zephyr::console::commands;
    add(console, U"x", U"", [](int, const std::u32string&, std::optional<bool>, Answer&) {});
    // clang-format off
    add(console, U"x", U"", [](Unknown) {}); // refused: This function can't be a command
    add(console, U"x", U"", [](int&) {}); // refused: This function can't be a command
    add(console, U"x", U"", [](auto) {}); // refused: This function can't be a command
    add(console, U"x", U"", Overloaded()); // refused: This function can't be a command
    add(console, U"x", U"", [](Nameless) {}); // refused: This function can't be a command
    add(console, U"x", U"", [] { return Unknown(); }); // refused: This function can't be a command
    add(console, U"x", U"", [](int) {}, argument(U"a"), argument(U"b")); // refused: This function can't be a command
    add(console, U"x", U"", 3); // refused: This function can't be a command
    add(console, U"x", U"", [](zephyr::console::Console) {}); // refused: This function can't be a command
    add(console, command(U"x", U"").sub(U"y", U"", [](std::vector<Unknown>) {})); // refused: This function can't be a command
    add(console, U"x", U"", [](std::optional<std::optional<int>>) {}); // refused: This function can't be a command
    add(console, U"x", U"", [p = std::make_unique<int>(1)] {}); // refused: This function can't be a command
    add(console, U"x", U"", &Overloaded::go); // refused: This function can't be a command
    argument(U"a").check([p = std::make_unique<int>(1)](int) { return true; }, U""); // refused: A check must have one signature
    Answer(console) << Unknown(); // refused: An answer takes texts
    argument(U"a").check([](auto) { return true; }, U""); // refused: A check must have one signature
    argument(U"a").check([](Unknown) { return true; }, U""); // refused: A check must have one signature
    argument(U"a").check([](int, int) { return true; }, U""); // refused: A check must have one signature
    add(console, U"x", U"", [](NoCandidates) {}); // refused: A Value<T> with kOnlyCandidates must have candidates()
    argument(U"a").byDefault('c'); // refused: A default, a limit, a choice or an offer must be
    argument(U"a").between(Unknown(), 1); // refused: A default, a limit, a choice or an offer must be
    argument(U"a").atMost(L'c'); // refused: A default, a limit, a choice or an offer must be
    argument(U"a").choices(U"a", Nameless::One); // refused: A default, a limit, a choice or an offer must be
    offers(Overloaded()); // refused: A default, a limit, a choice or an offer must be
    Variable<Unknown>(console, U"x", Unknown(), U""); // refused: A variable's type must be one that Value<T> reads
    // clang-format on
}
