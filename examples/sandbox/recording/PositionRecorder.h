#ifndef ZEPHYR_SANDBOX_RECORDING_POSITIONRECORDER_H
#define ZEPHYR_SANDBOX_RECORDING_POSITIONRECORDER_H

#include <cstddef>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace zephyr::sandbox {

class Simulation;

/// Writes the positions of particles to a CSV file with the columns `step,time,particle,x,y`. Seconds and metres have
/// three decimals after a full stop, in every locale.
///
/// - It is: one open file. It is not: in charge of the simulation; callers take the steps.
/// - Threads: used by one thread at a time.
/// - Failure: isGood() turns false and stays so; error() says why. The file keeps what was written before.
class PositionRecorder
{
public:
    /// Number of particles that the file has for each step: the first ones.
    static constexpr std::size_t kParticles = 100;

    /// Creates or empties the file `path` and writes the header. Accepts a device such as `/dev/null`, but no pipe,
    /// which might block the program.
    explicit PositionRecorder(const std::string& path);

    /// Appends a row for each of the first kParticles particles.
    void writePositions(const Simulation& simulation);

    /// Flushes and closes the file. Nothing may be written after that.
    void finish();

    bool isGood() const { return !mError; }

    /// Why writing failed, as the end of a sentence; nothing while all is well.
    const std::optional<std::string>& error() const { return mError; }

private:
    struct Closer
    {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void write(const std::string& text);
    void noteError();

    std::unique_ptr<std::FILE, Closer> mFile;
    std::optional<std::string> mError;
};

} // namespace zephyr::sandbox

#endif
