#include "sandbox/program/StartupFile.h"

#include "sandbox/program/Options.h"
#include "zephyr/console/Console.h"

#include <QFileInfo>

namespace zephyr::sandbox {

namespace {

constexpr char kUsualFile[] = "startup.console";
constexpr char kStartupExtension[] = ".console";

constexpr char kCantRun[] = "can't run '%1': %2.";
constexpr char kMissing[] = "there is no such file";
constexpr char kDirectory[] = "it is a directory";
constexpr char kUnreadable[] = "it can't be read";

/// The file that is run at the start. Where no directory of the runpath has it, one that doesn't exist.
std::filesystem::path startupFile(const Options& options, const console::Console& console)
{
    const QString called = startupName(options);
    const QString ending = called.endsWith(kStartupExtension) ? QString() : QString(kStartupExtension);
    std::filesystem::path name((called + ending).toStdU32String());
    for (const std::filesystem::path& directory : console.runPaths()) {
        if (QFileInfo(directory / name).exists()) {
            return directory / name;
        }
    }
    return name;
}

QString reasonNotToRun(const std::filesystem::path& file)
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

} // namespace

QString startupName(const Options& options)
{
    return options.startup.isEmpty() ? QString(kUsualFile) : options.startup;
}

QString complaintAbout(const QString& name, const std::filesystem::path& file)
{
    const QString reason = reasonNotToRun(file);
    return reason.isEmpty() ? QString() : QString(kCantRun).arg(name, reason);
}

QString complaintAboutStartup(const Options& options, const console::Console& console)
{
    if (options.skipsStartup) {
        return {};
    }
    const std::filesystem::path file = startupFile(options, console);
    const bool mayBeMissing = options.startup.isEmpty();
    return mayBeMissing && !QFileInfo(file).exists() ? QString() : complaintAbout(startupName(options), file);
}

void runStartupFile(const Options& options, console::Console& console)
{
    if (!options.startup.isEmpty()) {
        console.runFile(startupFile(options, console));
    } else if (!options.skipsStartup) {
        console.runFileWithName(startupName(options).toStdU32String());
    }
}

} // namespace zephyr::sandbox
