#ifndef ZEPHYR_SANDBOX_COMMANDS_POSITIONRECORDER_H
#define ZEPHYR_SANDBOX_COMMANDS_POSITIONRECORDER_H

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace zephyr::sandbox {

class Simulation;

/// Writes where particles are to a CSV file with the columns `step,time,particle,x,y`: seconds and metres
/// with three decimals, a full stop before them in every locale.
///
/// - It is: one open file. It is not: in charge of the simulation; who uses it takes the steps.
/// - Threads: used by one thread at a time.
/// - Ownership: owns the file, which it closes.
/// - Failure: isGood() turns false and stays so; error() says why. What was written until then stays in the
/// file.
class PositionRecorder
{
public:
    /// The particles that a file holds of each step: the oldest ones.
    static constexpr std::size_t kParticles = 100;

    /// Creates or empties the file `path` and writes the header. A device such as `/dev/null` is written, too; a pipe, which
    /// might never take anything, is refused.
    explicit PositionRecorder(const std::string& path);

    /// Appends a row for each of the first kParticles particles as they are now.
    void writePositions(const Simulation& simulation);

    /// Hands all to the system and closes the file; nothing may be written after it.
    void finish();

    bool isGood() const { return mError.empty(); }

    /// Why writing failed, in words that end a sentence; empty while nothing has.
    const std::string& error() const { return mError; }

private:
    struct Closer
    {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void write(const std::string& text);
    void noteError();

    std::unique_ptr<std::FILE, Closer> mFile;
    std::string mError;
};

} // namespace zephyr::sandbox

#endif
