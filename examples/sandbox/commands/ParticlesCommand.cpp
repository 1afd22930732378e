#include "sandbox/commands/ParticlesCommand.h"

#include "sandbox/commands/AnswerIndent.h"
#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "zephyr/console/Console.h"

#include <optional>

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr char32_t kCountDescription[] = U"Shows how many particles there are, or adds or removes some.";
constexpr char32_t kCountHelp[] = U"Usage: particles count [N].  N is 0 to 20000.";
constexpr char32_t kClearDescription[] = U"Removes all particles.";
constexpr char32_t kClearHelp[] = U"Usage: particles clear";

} // namespace

ParticlesCommand::ParticlesCommand(Simulation& simulation) : mSimulation(simulation)
{
    addSubCommand({U"count", kCountDescription, kCountHelp, 1, {}, {U"1000", U"4000", U"20000"}},
                  [this](const SubCommandWords& words, Console& console) { return count(words, console); });
    addSubCommand({U"clear", kClearDescription, kClearHelp},
                  [this](const SubCommandWords&, Console& console) {
                      clear(console);
                      return true;
                  });
}

std::u32string ParticlesCommand::name() const { return U"particles"; }

bool ParticlesCommand::count(const SubCommandWords& words, Console& console)
{
    if (!words.plain.empty()) {
        const std::optional<unsigned> number = countWithin(0, kMaxParticleCount, words.plain[0]);
        if (!number) {
            return false;
        }
        mSimulation.setParticleCount(*number);
    }
    writeCount(console);
    return true;
}

void ParticlesCommand::clear(Console& console)
{
    mSimulation.setParticleCount(0);
    writeCount(console);
}

void ParticlesCommand::writeCount(Console& console) const
{
    console.writeIndented("Particles: " + std::to_string(mSimulation.particles().size()) + ".",
                          kAnswerIndent);
}

} // namespace zephyr::sandbox
