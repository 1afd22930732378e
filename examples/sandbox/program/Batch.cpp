#include "sandbox/program/Batch.h"

#include "sandbox/program/Complaint.h"
#include "sandbox/program/LogPrinter.h"
#include "sandbox/program/Options.h"
#include "sandbox/program/Sandbox.h"
#include "sandbox/program/StartupFile.h"
#include "zephyr/console/remote/Batch.h"

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>

namespace zephyr::sandbox {

namespace {

namespace remote = console::remote;

std::filesystem::path pathOf(const QString& file) { return QFile::encodeName(file).toStdString(); }

/// Why one of the files can't be run, in one line for the user; nothing if both can.
std::optional<QString> complaintAboutFiles(const Options& options, const console::Console& console)
{
    const std::optional<QString> complaint = complaintAboutStartup(options.startup, console);
    return complaint ? complaint : complaintAbout(*options.batch, pathOf(*options.batch));
}

/// Runs the files, the startup file first if there is one. \return the exit code.
int runFiles(const Options& options, Sandbox& sandbox)
{
    remote::BatchOptions how;
    how.keepsGoing = options.keepsGoing;
    how.report = [](const std::string& failure) { complain(QString::fromStdString(failure)); };
    int status = remote::kBatchSucceeded;
    if (const std::optional<std::filesystem::path> startup =
            startupToRun(options.startup, sandbox.console())) {
        status = remote::runBatch(sandbox.console(), *startup, how);
    }
    const bool goesOn =
        status == remote::kBatchSucceeded || (status == remote::kBatchLineFailed && options.keepsGoing);
    if (goesOn && !sandbox.isQuitting()) {
        status = std::max(status, remote::runBatch(sandbox.console(), pathOf(*options.batch), how));
    }
    return status;
}

} // namespace

int runBatch(const Options& options)
{
    Sandbox sandbox;
    if (const std::optional<QString> complaint = complaintAboutFiles(options, sandbox.console())) {
        complain(*complaint);
        return remote::kBatchImpossible;
    }
    LogPrinter printer(sandbox.console(), stdout);
    printer.printNew();
    if (printer.error()) {
        complainAboutOutput(*printer.error());
        return remote::kBatchImpossible;
    }
    return runFiles(options, sandbox);
}

} // namespace zephyr::sandbox
