#include "zephyr/console/remote/Batch.h"

#include "batch/Script.h"
#include "console/LineRunner.h"
#include "console/LogPrinter.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <QString>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <ios>
#include <limits>
#include <optional>
#include <system_error>

namespace zephyr::console::remote {

namespace {

namespace fs = std::filesystem;

/// One run of a batch.
class BatchRun
{
public:
    BatchRun(Console& console, const BatchOptions& options)
        : mConsole(console), mOptions(options), mPrinter(console, options.output)
    {}

    /// Runs a line that is named `place` where it fails. \return whether the next one is to be run.
    bool run(const std::u32string& line, const std::string& place)
    {
        const LineResult result = runLine(mConsole, line);
        if (result.outcome != Outcome::Ok) {
            report(kBatchLineFailed, place + ": " + StringUtil::toString(result.reason));
        }
        return !result.isEndOfRun && !mPrinter.error() &&
               (result.outcome == Outcome::Ok || mOptions.keepsGoing);
    }

    /// Reports why the batch can't go on.
    void reportImpossible(const std::string& sentence) { report(kBatchImpossible, sentence); }

    /// Ends the batch. \return its status.
    int end()
    {
        if (const std::optional<std::error_code> error = mPrinter.error()) {
            reportImpossible("Can't print the transcript: " + error->message() + ".");
        }
        return mStatus;
    }

private:
    void report(int status, const std::string& sentence)
    {
        mStatus = std::max(mStatus, status);
        if (mOptions.report) {
            mOptions.report(sentence);
        } else {
            std::fputs((sentence + '\n').c_str(), stderr);
        }
    }

    Console& mConsole;
    const BatchOptions& mOptions;
    LogPrinter mPrinter;
    int mStatus = kBatchSucceeded;
};

std::string nameOf(const fs::path& file)
{
    return StringUtil::toString(StringUtil::toU32String(file.string()));
}

/// Why the file can't be run, as the end of a sentence; nothing if it can.
std::optional<std::string> reasonNotToRun(const fs::path& file)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found) {
        return "there is no such file";
    }
    if (error) {
        return error.message();
    }
    return status.type() == fs::file_type::directory ? std::optional<std::string>("it is a directory")
                                                     : std::nullopt;
}

/// Runs what is whole of a script. \return whether the rest is to be run.
bool runWhole(Script& script, BatchRun& batch, const std::string& name)
{
    bool goesOn = true;
    std::optional<ScriptLine> line;
    while (goesOn && (line = script.next())) {
        goesOn = batch.run(line->text.toStdU32String(), name + ':' + std::to_string(line->number));
    }
    return goesOn;
}

/// Reads the next line. \return whether there is one; where it can't be read, `error` says why. Throws `std::bad_alloc`.
bool readLine(std::istream& stream, std::string& bytes, std::error_code& error)
{
    try {
        return static_cast<bool>(std::getline(stream, bytes));
    } catch (const std::ios_base::failure& failure) {
        error = failure.code();
        return false;
    }
}

/// Runs a script line by line, as the file may be a pipe whose end comes later.
void runScript(std::istream& stream, BatchRun& batch, const std::string& name)
{
    // Otherwise a line that doesn't fit into memory would look like the end of the file.
    stream.exceptions(std::ios::badbit);
    Script script(std::numeric_limits<qsizetype>::max());
    std::string bytes;
    std::error_code error;
    bool goesOn = true;
    while (goesOn && readLine(stream, bytes, error)) {
        script.add(QByteArray::fromStdString(bytes) + '\n');
        goesOn = runWhole(script, batch, name);
    }
    if (error) {
        batch.reportImpossible("Can't read '" + name + "' to its end: " + error.message() + '.');
    }
}

} // namespace

int runBatch(Console& console, const fs::path& file, const BatchOptions& options)
{
    BatchRun batch(console, options);
    const std::string name = nameOf(file);
    std::optional<std::string> reason = reasonNotToRun(file);
    std::ifstream stream;
    if (!reason) {
        errno = 0;
        stream.open(file);
        if (!stream.is_open()) {
            reason = std::generic_category().message(errno);
        }
    }
    if (reason) {
        batch.reportImpossible("Can't run '" + name + "': " + *reason + '.');
    } else {
        runScript(stream, batch, name);
    }
    return batch.end();
}

int runBatch(Console& console, const std::vector<std::u32string>& lines, const BatchOptions& options)
{
    BatchRun batch(console, options);
    for (std::size_t i = 0; i < lines.size() && batch.run(lines[i], "line " + std::to_string(i + 1)); ++i) {
    }
    return batch.end();
}

} // namespace zephyr::console::remote
