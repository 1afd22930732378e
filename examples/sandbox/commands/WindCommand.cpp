#include "sandbox/commands/WindCommand.h"

#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "zephyr/console/Console.h"

#include <cstddef>
#include <optional>

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr double kDefaultGust = 15.0; // metres a second
constexpr std::size_t kMaxSetWords = 2;

constexpr char32_t kSpeedSwitch[] = U"/speed";
constexpr char32_t kHeadingSwitch[] = U"/heading";

constexpr char32_t kShowDescription[] = U"Shows the wind's speed, its heading and the gust on top of it.";
constexpr char32_t kShowHelp[] = U"Usage: wind show";
constexpr char32_t kSetDescription[] =
    U"Sets the wind's speed (0 to 60 m/s) and heading (0 to under 360 degrees; 0 is up, 90 right).";
constexpr char32_t kSetHelp[] =
    U"Usage: wind set SPEED [HEADING], or wind set [/speed=SPEED] [/heading=HEADING]";
constexpr char32_t kGustDescription[] = U"Lets the wind blow harder for a moment.";
constexpr char32_t kGustHelp[] =
    U"Usage: wind gust [STRENGTH].  STRENGTH is above 0 to 60 m/s, 15 if left out.";

bool readSpeed(const std::u32string& text, double& speed)
{
    const std::optional<double> number = numberFrom(text);
    if (!number || *number < 0.0 || *number > kMaxWindSpeed) {
        return false;
    }
    speed = *number;
    return true;
}

bool readHeading(const std::u32string& text, double& heading)
{
    const std::optional<double> number = numberFrom(text);
    if (!number || *number < 0.0 || *number >= kFullCircle) {
        return false;
    }
    heading = *number;
    return true;
}

} // namespace

WindCommand::WindCommand(Simulation& simulation) : mSimulation(simulation)
{
    addSubCommand({U"show", kShowDescription, kShowHelp},
                  [this](const SubCommandWords& words, Console& console) { return show(words, console); });
    addSubCommand(
        {U"set",
         kSetDescription,
         kSetHelp,
         {{kSpeedSwitch, {U"0", U"5", U"12", U"30"}}, {kHeadingSwitch, {U"0", U"90", U"180", U"270"}}}},
        [this](const SubCommandWords& words, Console& console) { return set(words, console); });
    addSubCommand(
        {U"gust", kGustDescription, kGustHelp, {}, {U"5", U"15", U"30"}},
        [this](const SubCommandWords& words, Console& console) { return startGust(words, console); });
}

std::u32string WindCommand::name() const
{
    return U"wind";
}

bool WindCommand::show(const SubCommandWords& words, Console& console) const
{
    if (!words.plain.empty()) {
        return false;
    }
    writeWind(console);
    return true;
}

bool WindCommand::set(const SubCommandWords& words, Console& console)
{
    if (words.plain.size() > kMaxSetWords || words.plain.empty() == words.switches.empty()) {
        return false; // too many words, none at all, or both forms mixed
    }
    const std::optional<std::u32string> speed = givenValue(words, 0, kSpeedSwitch);
    const std::optional<std::u32string> heading = givenValue(words, 1, kHeadingSwitch);
    Wind wind = mSimulation.wind();
    if ((speed && !readSpeed(*speed, wind.speed)) || (heading && !readHeading(*heading, wind.heading))) {
        return false;
    }
    mSimulation.setWind(wind);
    writeWind(console);
    return true;
}

bool WindCommand::startGust(const SubCommandWords& words, Console& console)
{
    double strength = kDefaultGust;
    if (words.plain.size() > 1 || (!words.plain.empty() && !readSpeed(words.plain[0], strength)) ||
        strength == 0.0) {
        return false;
    }
    mSimulation.startGust(strength);
    writeWind(console);
    return true;
}

void WindCommand::writeWind(Console& console) const
{
    const Wind& wind = mSimulation.wind();
    console.writeIndented("Wind: " + textOf(wind.speed) + " m/s, heading " + textOf(wind.heading) +
                              " degrees, gust " + textOf(mSimulation.gust()) + " m/s.",
                          kAnswerIndent);
}

} // namespace zephyr::sandbox
