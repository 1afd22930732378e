#include "sandbox/StartupFile.h"

#include "sandbox/Options.h"
#include "zephyr/console/Console.h"

#include <QFileInfo>

namespace zephyr::sandbox {

namespace {

constexpr char32_t kStartupFile[] = U"startup.console";
constexpr char kExtension[] = ".console";

constexpr char kCantRun[] = "can't run '%1': %2.";
constexpr char kMissing[] = "there is no such file";
constexpr char kDirectory[] = "it is a directory";
constexpr char kUnreadable[] = "it can't be read";

/// The file that `--startup` names. Where no directory of the runpath has it, one that doesn't exist.
std::filesystem::path namedFile(const Options& options, const console::Console& console)
{
    const QString ending = options.startup.endsWith(kExtension) ? QString() : QString(kExtension);
    std::filesystem::path name((options.startup + ending).toStdU32String());
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

QString complaintAbout(const QString& name, const std::filesystem::path& file)
{
    const QString reason = reasonNotToRun(file);
    return reason.isEmpty() ? QString() : QString(kCantRun).arg(name, reason);
}

QString complaintAboutStartup(const Options& options, const console::Console& console)
{
    return options.startup.isEmpty() ? QString()
                                     : complaintAbout(options.startup, namedFile(options, console));
}

void runStartupFile(const Options& options, console::Console& console)
{
    if (!options.startup.isEmpty()) {
        console.runFile(namedFile(options, console));
    } else if (!options.skipsStartup) {
        console.runFileWithName(kStartupFile);
    }
}

} // namespace zephyr::sandbox
