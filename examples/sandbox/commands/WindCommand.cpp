#include "sandbox/commands/WindCommand.h"

#include "sandbox/commands/AnswerIndent.h"
#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "zephyr/console/Console.h"

#include <optional>

namespace zephyr::sandbox {

using console::Console;

namespace {

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

std::optional<double> speedFrom(const std::u32string& text) { return numberWithin(0.0, kMaxWindSpeed, text); }

std::optional<double> headingFrom(const std::u32string& text)
{
    const std::optional<double> heading = numberWithin(0.0, kFullCircle, text);
    return heading == kFullCircle ? std::nullopt : heading;
}

} // namespace

WindCommand::WindCommand(Simulation& simulation) : mSimulation(simulation)
{
    addSubCommand({U"show", kShowDescription, kShowHelp}, [this](const SubCommandWords&, Console& console) {
        writeWind(console);
        return true;
    });
    addSubCommand(
        {U"set",
         kSetDescription,
         kSetHelp,
         2,
         {{kSpeedSwitch, {U"0", U"5", U"12", U"30"}}, {kHeadingSwitch, {U"0", U"90", U"180", U"270"}}}},
        [this](const SubCommandWords& words, Console& console) { return set(words, console); });
    addSubCommand(
        {U"gust", kGustDescription, kGustHelp, 1, {}, {U"5", U"15", U"30"}},
        [this](const SubCommandWords& words, Console& console) { return startGust(words, console); });
}

std::u32string WindCommand::name() const { return U"wind"; }

bool WindCommand::set(const SubCommandWords& words, Console& console)
{
    const Wind& now = mSimulation.wind();
    const std::optional<std::u32string> speedText = givenValue(words, 0, kSpeedSwitch);
    const std::optional<std::u32string> headingText = givenValue(words, 1, kHeadingSwitch);
    const std::optional<double> speed = speedText ? speedFrom(*speedText) : now.speed;
    const std::optional<double> heading = headingText ? headingFrom(*headingText) : now.heading;
    if (!hasOneForm(words) || !speed || !heading) {
        return false;
    }
    mSimulation.setWind({*speed, *heading});
    writeWind(console);
    return true;
}

bool WindCommand::startGust(const SubCommandWords& words, Console& console)
{
    const std::optional<double> strength = words.plain.empty() ? kDefaultGust : speedFrom(words.plain[0]);
    if (!strength || *strength == 0.0) {
        return false;
    }
    mSimulation.startGust(*strength);
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
