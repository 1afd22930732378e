#include "sandbox/commands/ParticlesCommand.h"

#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "zephyr/console/Console.h"

#include <optional>

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr char32_t kCountDescription[] = U"Shows how many particles there are, or adds or removes some.";
constexpr char32_t kCountHelp[] = U"Usage: particles count [N].  N is 0 to 20000.";
constexpr char32_t kClearParticlesDescription[] = U"Removes all particles.";
constexpr char32_t kClearParticlesHelp[] = U"Usage: particles clear";

} // namespace

ParticlesCommand::ParticlesCommand(Simulation& simulation) : mSimulation(simulation)
{
    addSubCommand({U"count", kCountDescription, kCountHelp, {}, {U"1000", U"4000", U"20000"}},
                  [this](const SubCommandWords& words, Console& console) { return count(words, console); });
    addSubCommand({U"clear", kClearParticlesDescription, kClearParticlesHelp},
                  [this](const SubCommandWords& words, Console& console) { return clear(words, console); });
}

std::u32string ParticlesCommand::name() const
{
    return U"particles";
}

bool ParticlesCommand::count(const SubCommandWords& words, Console& console)
{
    if (words.plain.size() > 1) {
        return false;
    }
    if (!words.plain.empty()) {
        const std::optional<unsigned> number = countFrom(words.plain[0]);
        if (!number || *number > kMaxParticleCount) {
            return false;
        }
        mSimulation.setParticleCount(*number);
    }
    writeCount(console);
    return true;
}

bool ParticlesCommand::clear(const SubCommandWords& words, Console& console)
{
    if (!words.plain.empty()) {
        return false;
    }
    mSimulation.setParticleCount(0);
    writeCount(console);
    return true;
}

void ParticlesCommand::writeCount(Console& console) const
{
    console.writeIndented("Particles: " + std::to_string(mSimulation.particles().size()) + ".",
                          kAnswerIndent);
}

} // namespace zephyr::sandbox
