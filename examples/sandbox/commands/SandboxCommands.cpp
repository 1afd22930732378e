#include "sandbox/commands/SandboxCommands.h"

#include "sandbox/recording/Recording.h"
#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "sandbox/simulation/SimulationClock.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/commands/Command.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::sandbox {

namespace commands = console::commands;
using commands::add;
using commands::argument;
using commands::command;
using commands::fail;
using commands::option;
using commands::Parameter;
using console::Console;

namespace {

constexpr unsigned kMaxSteps = 10000; // of one command, since nothing else happens meanwhile
constexpr unsigned kDefaultRecordSteps = 600;
constexpr double kMinSpeed = 0.1;
constexpr double kMaxSpeed = 10.0;
constexpr char kNoObstacles[] = "There are no obstacles.";

std::string windText(const Simulation& simulation)
{
    const Wind& wind = simulation.wind();
    return "Wind: " + textOf(wind.speed) + " m/s, heading " + textOf(wind.heading) + " degrees, gust " +
           textOf(simulation.gust()) + " m/s.";
}

std::string setWind(Simulation& simulation, std::optional<double> speed, std::optional<double> heading)
{
    if (!speed && !heading) {
        fail(U"Give a speed, a heading or both.");
    }
    const Wind& now = simulation.wind();
    // The sum turns minus zero into zero.
    simulation.setWind({speed.value_or(now.speed) + 0.0, heading.value_or(now.heading) + 0.0});
    return windText(simulation);
}

std::string obstacleText(const Simulation& simulation, std::size_t index)
{
    const Obstacle& obstacle = simulation.obstacles()[index];
    return "Obstacle " + std::to_string(index + 1) + ": x " + textOf(obstacle.centre.x) + " m, y " +
           textOf(obstacle.centre.y) + " m, radius " + textOf(obstacle.radius) + " m.";
}

std::string addDisc(Simulation& simulation, double x, double y, double radius)
{
    const std::optional<std::size_t> index = simulation.addObstacle({{x + 0.0, y + 0.0}, radius});
    if (!index) {
        fail("No room: there are " + std::to_string(kMaxObstacleCount) + " obstacles, which is the most.");
    }
    return obstacleText(simulation, *index);
}

std::vector<std::string> listDiscs(const Simulation& simulation)
{
    std::vector<std::string> lines;
    lines.reserve(simulation.obstacles().size());
    for (std::size_t i = 0; i < simulation.obstacles().size(); ++i) {
        lines.push_back(obstacleText(simulation, i));
    }
    return lines.empty() ? std::vector<std::string>{kNoObstacles} : lines;
}

std::string removeDisc(Simulation& simulation, std::size_t number)
{
    if (number < 1 || number > simulation.obstacles().size()) {
        fail("There is no obstacle " + std::to_string(number) + ".");
    }
    simulation.removeObstacle(number - 1);
    return "Removed obstacle " + std::to_string(number) + ".";
}

std::string particlesText(const Simulation& simulation)
{
    return "Particles: " + std::to_string(simulation.particles().size()) + ".";
}

std::string takeSteps(Simulation& simulation, const Recording& recording, unsigned steps)
{
    recording.refuseIfWorking();
    for (unsigned i = 0; i < steps; ++i) {
        simulation.step();
    }
    return "Now at step " + std::to_string(simulation.stepCount()) + " (" + textOf(simulation.time()) +
           " s).";
}

Parameter steps(Parameter parameter, unsigned byDefault)
{
    return parameter.between(1U, kMaxSteps).byDefault(byDefault);
}

} // namespace

void addWind(Console& console, Simulation& simulation)
{
    add(console,
        command(U"wind", U"The wind over the field.")
            .sub(
                U"gust", U"Lets the wind blow harder for a moment.",
                [&](double strength) {
                    simulation.startGust(strength);
                    return windText(simulation);
                },
                argument(U"strength")
                    .between(0, kMaxWindSpeed)
                    .unit(U"m/s")
                    .byDefault(kDefaultGust)
                    .offers(5, 15, 30)
                    .check([](double strength) { return strength > 0.0; }, U"is no gust"))
            .sub(
                U"set", U"Sets the wind's speed and heading.",
                [&](std::optional<double> speed, std::optional<double> to) {
                    return setWind(simulation, speed, to);
                },
                argument(U"speed").between(0, kMaxWindSpeed).unit(U"m/s").offers(0, 5, 12, 30).orByName(),
                argument(U"heading", U"0 is up, 90 right.")
                    .between(0, kFullCircle)
                    .unit(U"degrees")
                    .offers(0, 90, 180, 270)
                    .orByName()
                    .check([](double to) { return to < kFullCircle; }, U"is 0 degrees again"))
            .sub(U"show", U"Shows the wind's speed, its heading and the gust on top of it.",
                 [&] { return windText(simulation); }));
}

void addSim(Console& console, Simulation& simulation, SimulationClock& clock, Recording& recording)
{
    add(console,
        command(U"sim", U"The simulation.")
            .sub(U"pause", U"Stops the simulation.",
                 [&] {
                     clock.setPaused(true);
                     return "Paused.";
                 })
            .sub(
                U"record",
                U"Moves the simulation on and writes the places of its first 100 particles to a CSV file.",
                [&](const std::filesystem::path& path, unsigned count, Console& own) {
                    recording.start(path, count, own);
                },
                option(U"path", U"Quote a name with spaces.")
                    .check([](const std::filesystem::path& path) { return !path.empty(); }, U"is no file"),
                steps(option(U"steps"), kDefaultRecordSteps).offers(120, 600, 3600))
            .sub(U"reset",
                 U"Starts over: the first particles in the first wind.  Pause and speed stay as they are.",
                 [&](Console& own) {
                     recording.end(own);
                     simulation.reset();
                     return "Back at the start.";
                 })
            .sub(U"resume", U"Lets the simulation run.",
                 [&] {
                     clock.setPaused(false);
                     return "Running.";
                 })
            .sub(
                U"speed", U"Shows or sets how fast simulated time passes.",
                [&](std::optional<double> factor) {
                    clock.setSpeed(factor.value_or(clock.speed()));
                    return "Speed: " + textOf(clock.speed()) + ".";
                },
                argument(U"factor", U"1 is as fast as a clock.")
                    .between(kMinSpeed, kMaxSpeed)
                    .offers(0.5, 1, 2))
            .sub(
                U"step", U"Moves the simulation on at once, paused or not.",
                [&](unsigned count) { return takeSteps(simulation, recording, count); },
                steps(argument(U"count", U"Steps of 1/120 s."), 1).offers(1, 120, 600)));
}

void addParticles(Console& console, Simulation& simulation)
{
    add(console, command(U"particles", U"The particles in the wind.")
                     .sub(U"clear", U"Removes all particles.",
                          [&] {
                              simulation.setParticleCount(0);
                              return particlesText(simulation);
                          })
                     .sub(
                         U"count", U"Shows how many particles there are, or adds or removes some.",
                         [&](std::optional<unsigned> count) {
                             if (count) {
                                 simulation.setParticleCount(*count);
                             }
                             return particlesText(simulation);
                         },
                         argument(U"count").between(0U, kMaxParticleCount).offers(1000, 4000, 20000)));
}

void addObstacle(Console& console, Simulation& simulation)
{
    add(console,
        command(U"obstacle", U"The discs that the wind flows around.")
            .sub(
                U"add", U"Places a disc, X metres from the left and Y from the top.",
                [&](double x, double y, double radius) { return addDisc(simulation, x, y, radius); },
                argument(U"x").between(0, kFieldWidth).unit(U"m").offers(40, 80, 120).orByName(),
                argument(U"y").between(0, kFieldHeight).unit(U"m").offers(20, 45, 70).orByName(),
                argument(U"radius")
                    .between(kMinObstacleRadius, kMaxObstacleRadius)
                    .unit(U"m")
                    .byDefault(kDefaultObstacleRadius)
                    .offers(3, 5, 10)
                    .orByName())
            .sub(U"clear", U"Removes all obstacles.",
                 [&] {
                     simulation.clearObstacles();
                     return kNoObstacles;
                 })
            .sub(U"list", U"Lists the obstacles with their numbers.", [&] { return listDiscs(simulation); })
            .sub(
                U"remove", U"Removes an obstacle; those behind it move up one number.",
                [&](std::size_t number) { return removeDisc(simulation, number); },
                argument(U"number", U"As 'obstacle list' shows it.")));
}

void addQuit(Console& console, std::function<void()> beforeThrow)
{
    add(console, U"quit", U"Ends the program; whatever stands behind it in a file is not run.",
        [beforeThrow = std::move(beforeThrow)] {
            beforeThrow();
            throw console::EndOfRun();
        });
}

} // namespace zephyr::sandbox
