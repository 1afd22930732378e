#include "sandbox/program/Batch.h"

#include "sandbox/program/Complaint.h"
#include "sandbox/program/LogPrinter.h"
#include "sandbox/program/Sandbox.h"
#include "sandbox/program/StartupFile.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/commands/Failure.h"

#include <QFile>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>

namespace zephyr::sandbox {

namespace {

constexpr char kStopped[] = "stopped in '%1': %2.";
constexpr char kOneFailed[] = "a command failed: %1";
constexpr char kSomeFailed[] = "%1 commands failed, the last with: %2";

constexpr int kCommandFailed = 1;
constexpr int kFailed = 2;

std::filesystem::path pathOf(const QString& file) { return QFile::encodeName(file).toStdString(); }

/// Why one of the files can't be run, in one line for the user; nothing if both can.
std::optional<QString> complaintAboutFiles(const QString& file, const StartupChoice& startup,
                                           const console::Console& console)
{
    const std::optional<QString> complaint = complaintAboutStartup(startup, console);
    return complaint ? complaint : complaintAbout(file, pathOf(file));
}

QString complaintAbout(const console::commands::FailureCounter& failures)
{
    const QString last = QString::fromStdU32String(failures.lastLine());
    return failures.count() == 1 ? QString(kOneFailed).arg(last)
                                 : QString(kSomeFailed).arg(failures.count()).arg(last);
}

/// Runs both files. \return what a command threw, in one line for the user; nothing if none did.
std::optional<QString> runFiles(const QString& file, const StartupChoice& startup, console::Console& console)
{
    QString running = startupName(startup);
    try {
        runStartupFile(startup, console);
        running = file;
        console.runFile(pathOf(file));
    } catch (const console::EndOfRun&) {
        return std::nullopt;
    } catch (const std::exception& error) {
        return QString(kStopped).arg(running, error.what());
    }
    return std::nullopt;
}

} // namespace

int runBatch(const QString& file, const StartupChoice& startup)
{
    Sandbox sandbox;
    if (const std::optional<QString> complaint = complaintAboutFiles(file, startup, sandbox.console())) {
        complain(*complaint);
        return kFailed;
    }
    LogPrinter printer(sandbox.console(), stdout);
    printer.printNew();
    sandbox.console().setObserver([&] { printer.printNew(); }); // each line as it is written
    const console::commands::FailureCounter failures(sandbox.console());
    const std::optional<QString> runError = runFiles(file, startup, sandbox.console());
    sandbox.console().setObserver({});
    if (runError) {
        complain(*runError);
        return kFailed;
    }
    if (printer.error()) {
        complainAboutOutput(*printer.error());
        return kFailed;
    }
    if (failures.count() > 0) {
        complain(complaintAbout(failures));
        return kCommandFailed;
    }
    return 0;
}

} // namespace zephyr::sandbox
