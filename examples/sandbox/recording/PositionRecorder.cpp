#include "sandbox/recording/PositionRecorder.h"

#include "sandbox/recording/FileWriting.h"
#include "sandbox/simulation/Simulation.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <system_error>

namespace zephyr::sandbox {

namespace {

constexpr char kHeader[] = "step,time,particle,x,y\n";
constexpr int kDecimals = 3;

std::string fixed(double value)
{
    std::array<char, 64> buffer{};
    const std::to_chars_result result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                                      std::chars_format::fixed, kDecimals);
    return {buffer.data(), result.ptr};
}

} // namespace

PositionRecorder::PositionRecorder(const std::string& path) : mError(reasonNotToWrite(path, Devices::Allowed))
{
    if (!isGood()) {
        return;
    }
    mFile.reset(std::fopen(path.c_str(), "wb"));
    if (!mFile) {
        noteError();
        return;
    }
    write(kHeader);
}

void PositionRecorder::writePositions(const Simulation& simulation)
{
    const std::string moment = std::to_string(simulation.stepCount()) + ',' + fixed(simulation.time()) + ',';
    const std::size_t count = std::min(kParticles, simulation.particles().size());
    for (std::size_t i = 0; i < count && isGood(); ++i) {
        const glm::dvec2& position = simulation.particles()[i].position;
        write(moment + std::to_string(i) + ',' + fixed(position.x) + ',' + fixed(position.y) + '\n');
    }
}

void PositionRecorder::finish()
{
    if (mFile && std::fclose(mFile.release()) != 0 && isGood()) {
        noteError();
    }
}

void PositionRecorder::write(const std::string& text)
{
    if (std::fwrite(text.data(), 1, text.size(), mFile.get()) != text.size()) {
        noteError();
    }
}

void PositionRecorder::noteError() { mError = std::generic_category().message(errno); }

} // namespace zephyr::sandbox
