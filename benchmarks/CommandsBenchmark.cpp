// The cost of a line that runs a command made of a function, beside one that reads the same words by hand.

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSwitchArg.h"
#include "zephyr/console/commands/Command.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <string>

namespace zephyr::bench {
namespace {

using console::Console;
using console::ConsoleArgs;
using console::ConsoleSwitchArg;

constexpr double kHighestSpeed = 60;
constexpr double kHighestHeading = 360;
constexpr unsigned kFirstWord = 2; // behind the command and the sub-command
constexpr std::int64_t kLines = 20000;
const std::u32string kLine = U"wind set 12.5 /heading=90";

struct Wind
{
    double speed = 0;
    std::optional<double> heading;
};

/// The command as a careful program would write it: it answers what is wrong, and changes nothing then.
class WindCommand : public console::ConsoleCommand
{
public:
    explicit WindCommand(Wind& wind) : mWind(wind)
    {
        registerArgHandler(
            U"set", [this](const ConsoleArgs& args, Console& console) { set(args, console); },
            U"Sets speed and heading.", U"Usage: wind set SPEED [/heading=NUMBER]");
    }

    std::u32string name() const override { return U"wind"; }

private:
    static std::optional<double> number(std::u32string word, double highest)
    {
        std::erase(word, U'"');
        const std::string text = StringUtil::toString(word);
        double value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool isGood =
            error == std::errc() && end == text.data() + text.size() && value >= 0 && value <= highest;
        return isGood ? std::optional(value) : std::nullopt;
    }

    void set(const ConsoleArgs& args, Console& console)
    {
        std::optional<double> speed;
        std::optional<double> heading;
        bool isWrong = false;
        for (unsigned i = kFirstWord; i < args.argCount(); ++i) {
            const ConsoleSwitchArg word(args, i);
            if (word.switchArg().empty()) {
                isWrong = isWrong || speed.has_value();
                speed = number(args.arg(i), kHighestSpeed);
            } else {
                isWrong = isWrong || heading.has_value() || word.switchArg() != U"/heading";
                heading = number(word.value(), kHighestHeading);
                isWrong = isWrong || !heading;
            }
        }
        if (isWrong || !speed) {
            printIncorrectUsage(U"set", console, 4);
            return;
        }
        mWind = {*speed, heading};
    }

    Wind& mWind;
};

void addTyped(Console& console, Wind& wind)
{
    using namespace console::commands;
    add(console, command(U"wind", U"The wind.")
                     .sub(
                         U"set", U"Sets speed and heading.",
                         [&wind](double speed, std::optional<double> heading) { wind = {speed, heading}; },
                         argument(U"speed").between(0, kHighestSpeed),
                         option(U"heading").between(0, kHighestHeading)));
}

void callByHand(benchmark::State& state)
{
    Wind wind;
    Console console;
    console.registerCommand(std::make_unique<WindCommand>(wind));
    for (auto _ : state) {
        console.execute(kLine);
    }
    benchmark::DoNotOptimize(wind);
}

void callTyped(benchmark::State& state)
{
    Wind wind;
    Console console;
    addTyped(console, wind);
    for (auto _ : state) {
        console.execute(kLine);
    }
    benchmark::DoNotOptimize(wind);
}

void settings(benchmark::internal::Benchmark* registered)
{
    registered->Arg(1)->MeasureProcessCPUTime()->Iterations(kLines);
}

BENCHMARK(callByHand)->Name("typed_command/floor")->Apply(settings);
BENCHMARK(callTyped)->Name("typed_command/console")->Apply(settings);

} // namespace
} // namespace zephyr::bench
