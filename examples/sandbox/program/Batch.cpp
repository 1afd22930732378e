#include "sandbox/program/Batch.h"

#include "sandbox/commands/QuitCommand.h"
#include "sandbox/program/Complaint.h"
#include "sandbox/program/LogFollower.h"
#include "sandbox/program/Options.h"
#include "sandbox/program/Sandbox.h"
#include "sandbox/program/StartupFile.h"

#include <QFile>

#include <cstdio>
#include <exception>
#include <filesystem>

namespace zephyr::sandbox {

namespace {

constexpr char kStopped[] = "stopped in '%1': %2.";

constexpr int kBatchFailed = 2;

std::filesystem::path batchFile(const Options& options)
{
    return QFile::encodeName(options.batch).toStdString();
}

/// Why one of the files can't be run, in one line for the user; empty if both can.
QString complaintAboutFiles(const Options& options, const console::Console& console)
{
    const QString complaint = complaintAboutStartup(options, console);
    return complaint.isEmpty() ? complaintAbout(options.batch, batchFile(options)) : complaint;
}

/// Runs both files. \return what a command threw, in one line for the user; empty if nothing was.
QString runFiles(const Options& options, console::Console& console)
{
    QString running = startupName(options);
    try {
        runStartupFile(options, console);
        running = options.batch;
        console.runFile(batchFile(options));
    } catch (const QuitRequest&) {
        return {};
    } catch (const std::exception& error) {
        return QString(kStopped).arg(running, error.what());
    }
    return {};
}

} // namespace

int runBatch(const Options& options)
{
    Sandbox sandbox;
    const QString complaint = complaintAboutFiles(options, sandbox.console());
    if (!complaint.isEmpty()) {
        complain(complaint);
        return kBatchFailed;
    }
    LogFollower follower(sandbox.console(), stdout);
    const QString runError = runFiles(options, sandbox.console());
    const std::string printError = follower.stop();
    if (!runError.isEmpty()) {
        complain(runError);
        return kBatchFailed;
    }
    if (!printError.empty()) {
        complainAboutOutput(printError);
        return kBatchFailed;
    }
    return 0;
}

} // namespace zephyr::sandbox
