#include "sandbox/commands/ObstacleCommand.h"

#include "sandbox/commands/AnswerIndent.h"
#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "zephyr/console/Console.h"

#include <optional>

namespace zephyr::sandbox {

using console::Console;

namespace {

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
constexpr char32_t kClearDescription[] = U"Removes all obstacles.";
constexpr char32_t kClearHelp[] = U"Usage: obstacle clear";

constexpr char kNone[] = "There are no obstacles.";
constexpr char kFull[] = "No room: there are 24 obstacles, which is the most.";
static_assert(kMaxObstacleCount == 24);

/// The coordinate that `text` spells, if it is from 0 to `highest`.
std::optional<double> coordinateFrom(const std::optional<std::u32string>& text, double highest)
{
    return text ? numberWithin(0.0, highest, *text) : std::nullopt;
}

} // namespace

ObstacleCommand::ObstacleCommand(Simulation& simulation) : mSimulation(simulation)
{
    addSubCommand({U"add",
                   kAddDescription,
                   kAddHelp,
                   3,
                   {{kXSwitch, {U"40", U"80", U"120"}},
                    {kYSwitch, {U"20", U"45", U"70"}},
                    {kRadiusSwitch, {U"3", U"5", U"10"}}}},
                  [this](const SubCommandWords& words, Console& console) { return add(words, console); });
    addSubCommand({U"list", kListDescription, kListHelp}, [this](const SubCommandWords&, Console& console) {
        list(console);
        return true;
    });
    addSubCommand({U"remove", kRemoveDescription, kRemoveHelp, 1},
                  [this](const SubCommandWords& words, Console& console) { return remove(words, console); });
    addSubCommand({U"clear", kClearDescription, kClearHelp},
                  [this](const SubCommandWords&, Console& console) {
                      clear(console);
                      return true;
                  });
}

std::u32string ObstacleCommand::name() const { return U"obstacle"; }

bool ObstacleCommand::add(const SubCommandWords& words, Console& console)
{
    const std::optional<double> x = coordinateFrom(givenValue(words, 0, kXSwitch), kFieldWidth);
    const std::optional<double> y = coordinateFrom(givenValue(words, 1, kYSwitch), kFieldHeight);
    const std::optional<std::u32string> radiusText = givenValue(words, 2, kRadiusSwitch);
    const std::optional<double> radius =
        radiusText ? numberWithin(kMinObstacleRadius, kMaxObstacleRadius, *radiusText)
                   : kDefaultObstacleRadius;
    if (!hasOneForm(words) || !x || !y || !radius) {
        return false;
    }
    if (const std::optional<std::size_t> index = mSimulation.addObstacle({{*x, *y}, *radius})) {
        writeObstacle(*index, console);
    } else {
        console.writeIndented(kFull, kAnswerIndent);
    }
    return true;
}

void ObstacleCommand::list(Console& console) const
{
    if (mSimulation.obstacles().empty()) {
        console.writeIndented(kNone, kAnswerIndent);
    }
    for (std::size_t i = 0; i < mSimulation.obstacles().size(); ++i) {
        writeObstacle(i, console);
    }
}

bool ObstacleCommand::remove(const SubCommandWords& words, Console& console)
{
    const auto highest = static_cast<unsigned>(mSimulation.obstacles().size());
    const std::optional<unsigned> number =
        words.plain.empty() ? std::nullopt : countWithin(1, highest, words.plain[0]);
    if (!number) {
        return false;
    }
    mSimulation.removeObstacle(*number - 1);
    console.writeIndented("Removed obstacle " + std::to_string(*number) + ".", kAnswerIndent);
    return true;
}

void ObstacleCommand::clear(Console& console)
{
    mSimulation.clearObstacles();
    console.writeIndented(kNone, kAnswerIndent);
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
