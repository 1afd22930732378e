#include "sandbox/Batch.h"

#include "sandbox/Complaint.h"
#include "sandbox/LogFollower.h"
#include "sandbox/QuitCommand.h"
#include "sandbox/Sandbox.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <exception>
#include <filesystem>

namespace zephyr::sandbox {

namespace {

constexpr char kCantRun[] = "can't run '%1': %2.";
constexpr char kMissing[] = "there is no such file";
constexpr char kDirectory[] = "it is a directory";
constexpr char kUnreadable[] = "it can't be read";
constexpr char kStopped[] = "stopped in '%1': %2.";

constexpr int kBatchFailed = 2;

/// Why `file` can't be run, or an empty string. Looked at before, as a console takes such a file for a
/// programming error.
QString reasonNotToRun(const QString& file)
{
    const QFileInfo info(file);
    if (!info.exists()) {
        return kMissing;
    }
    if (info.isDir()) {
        return kDirectory;
    }
    return info.isReadable() ? QString() : kUnreadable;
}

/// Runs both files. \return what a command threw, in one line for the user; empty if nothing was.
QString runFiles(console::Console& console, const QString& file, bool skipsStartup)
{
    try {
        if (!skipsStartup) {
            console.runFileWithName(kStartupFile);
        }
        console.runFile(std::filesystem::path(QFile::encodeName(file).toStdString()));
    } catch (const QuitRequest&) {
        return {};
    } catch (const std::exception& error) {
        return QString(kStopped).arg(file, error.what());
    }
    return {};
}

} // namespace

int runBatch(const QString& file, bool skipsStartup)
{
    const QString reason = reasonNotToRun(file);
    if (!reason.isEmpty()) {
        complain(QString(kCantRun).arg(file, reason));
        return kBatchFailed;
    }
    Sandbox sandbox;
    LogFollower follower(sandbox.console(), stdout);
    const QString runError = runFiles(sandbox.console(), file, skipsStartup);
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
