#include "sandbox/commands/ObstacleCommand.h"

#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "zephyr/console/Console.h"

#include <optional>

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr std::size_t kMaxAddWords = 3;

constexpr char32_t kXSwitch[] = U"/x";
constexpr char32_t kYSwitch[] = U"/y";
constexpr char32_t kRadiusSwitch[] = U"/radius";

constexpr char32_t kAddDescription[] =
    U"Places a disc that the wind flows around, X metres from the left and Y from the top.";
constexpr char32_t kAddHelp[] =
    U"Usage: obstacle add X Y [RADIUS], or obstacle add /x=X /y=Y [/radius=RADIUS].  "
    U"X is 0 to 160, Y 0 to 90, RADIUS 1 to 12 m, 5 if left out.";
constexpr char32_t kListDescription[] = U"Lists the obstacles with their numbers.";
constexpr char32_t kListHelp[] = U"Usage: obstacle list";
constexpr char32_t kRemoveDescription[] = U"Removes an obstacle; those behind it move up one number.";
constexpr char32_t kRemoveHelp[] = U"Usage: obstacle remove N.  N is a number that 'obstacle list' shows.";
constexpr char32_t kClearObstaclesDescription[] = U"Removes all obstacles.";
constexpr char32_t kClearObstaclesHelp[] = U"Usage: obstacle clear";

constexpr char kNone[] = "There are no obstacles.";
constexpr char kFull[] = "No room: there are 24 obstacles, which is the most.";
static_assert(kMaxObstacleCount == 24);

/// The number that `text` is, if it is one from `lowest` to `highest`.
std::optional<double> numberWithin(double lowest, double highest, const std::optional<std::u32string>& text)
{
    const std::optional<double> number = text ? numberFrom(*text) : std::nullopt;
    return number && *number >= lowest && *number <= highest ? number : std::nullopt;
}

} // namespace

ObstacleCommand::ObstacleCommand(Simulation& simulation) : mSimulation(simulation)
{
    addSubCommand({U"add",
                   kAddDescription,
                   kAddHelp,
                   {{kXSwitch, {U"40", U"80", U"120"}},
                    {kYSwitch, {U"20", U"45", U"70"}},
                    {kRadiusSwitch, {U"3", U"5", U"10"}}}},
                  [this](const SubCommandWords& words, Console& console) { return add(words, console); });
    addSubCommand({U"list", kListDescription, kListHelp},
                  [this](const SubCommandWords& words, Console& console) { return list(words, console); });
    addSubCommand({U"remove", kRemoveDescription, kRemoveHelp},
                  [this](const SubCommandWords& words, Console& console) { return remove(words, console); });
    addSubCommand({U"clear", kClearObstaclesDescription, kClearObstaclesHelp},
                  [this](const SubCommandWords& words, Console& console) { return clear(words, console); });
}

std::u32string ObstacleCommand::name() const
{
    return U"obstacle";
}

bool ObstacleCommand::add(const SubCommandWords& words, Console& console)
{
    if (words.plain.size() > kMaxAddWords || words.plain.empty() == words.switches.empty()) {
        return false; // too many words, none at all, or both forms mixed
    }
    const std::optional<double> x = numberWithin(0.0, kFieldWidth, givenValue(words, 0, kXSwitch));
    const std::optional<double> y = numberWithin(0.0, kFieldHeight, givenValue(words, 1, kYSwitch));
    const std::optional<std::u32string> radiusText = givenValue(words, 2, kRadiusSwitch);
    const std::optional<double> radius =
        radiusText ? numberWithin(kMinObstacleRadius, kMaxObstacleRadius, radiusText)
                   : kDefaultObstacleRadius;
    if (!x || !y || !radius) {
        return false;
    }
    if (!mSimulation.addObstacle({{*x, *y}, *radius})) {
        console.writeIndented(kFull, kAnswerIndent);
        return true;
    }
    writeObstacle(mSimulation.obstacles().size() - 1, console);
    return true;
}

bool ObstacleCommand::list(const SubCommandWords& words, Console& console) const
{
    if (!words.plain.empty()) {
        return false;
    }
    if (mSimulation.obstacles().empty()) {
        console.writeIndented(kNone, kAnswerIndent);
    }
    for (std::size_t i = 0; i < mSimulation.obstacles().size(); ++i) {
        writeObstacle(i, console);
    }
    return true;
}

bool ObstacleCommand::remove(const SubCommandWords& words, Console& console)
{
    const std::optional<unsigned> number = words.plain.size() == 1 ? countFrom(words.plain[0]) : std::nullopt;
    if (!number || *number < 1 || *number > mSimulation.obstacles().size()) {
        return false;
    }
    mSimulation.removeObstacle(*number - 1);
    console.writeIndented("Removed obstacle " + std::to_string(*number) + ".", kAnswerIndent);
    return true;
}

bool ObstacleCommand::clear(const SubCommandWords& words, Console& console)
{
    if (!words.plain.empty()) {
        return false;
    }
    mSimulation.clearObstacles();
    console.writeIndented(kNone, kAnswerIndent);
    return true;
}

void ObstacleCommand::writeObstacle(std::size_t index, Console& console) const
{
    const Obstacle& obstacle = mSimulation.obstacles()[index];
    console.writeIndented("Obstacle " + std::to_string(index + 1) + ": x " + textOf(obstacle.centre.x) +
                              " m, y " + textOf(obstacle.centre.y) + " m, radius " + textOf(obstacle.radius) +
                              " m.",
                          kAnswerIndent);
}

} // namespace zephyr::sandbox
