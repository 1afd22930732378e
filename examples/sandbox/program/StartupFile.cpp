#include "sandbox/program/StartupFile.h"

#include "sandbox/program/ConsoleFileName.h"
#include "zephyr/console/Console.h"

#include <QFileInfo>

namespace zephyr::sandbox {

namespace {

constexpr char kUsualFile[] = "startup.console";

constexpr char kCantRun[] = "can't run '%1': %2.";
constexpr char kMissing[] = "there is no such file";
constexpr char kDirectory[] = "it is a directory";
constexpr char kUnreadable[] = "it can't be read";

/// The startup file. If no directory of the runpath has it, a file that doesn't exist.
std::filesystem::path startupFile(const StartupChoice& startup, const console::Console& console)
{
    std::filesystem::path name(consoleFileName(startupName(startup).toStdU32String()));
    for (const std::filesystem::path& directory : console.runPaths()) {
        if (QFileInfo(directory / name).exists()) {
            return directory / name;
        }
    }
    return name;
}

std::optional<QString> reasonNotToRun(const std::filesystem::path& file)
{
    const QFileInfo info(file);
    if (!info.exists()) {
        return kMissing;
    }
    if (info.isDir()) {
        return kDirectory;
    }
    return info.isReadable() ? std::nullopt : std::optional<QString>(kUnreadable);
}

} // namespace

QString startupName(const StartupChoice& startup)
{
    const auto* const named = std::get_if<NamedStartup>(&startup);
    return named != nullptr ? named->name : kUsualFile;
}

std::optional<QString> complaintAbout(const QString& name, const std::filesystem::path& file)
{
    const std::optional<QString> reason = reasonNotToRun(file);
    return reason ? std::optional(QString(kCantRun).arg(name, *reason)) : std::nullopt;
}

std::optional<std::filesystem::path> startupToRun(const StartupChoice& startup,
                                                  const console::Console& console)
{
    if (std::holds_alternative<NoStartup>(startup)) {
        return std::nullopt;
    }
    std::filesystem::path file = startupFile(startup, console);
    if (std::holds_alternative<UsualStartup>(startup) && !QFileInfo(file).exists()) {
        return std::nullopt;
    }
    return file;
}

std::optional<QString> complaintAboutStartup(const StartupChoice& startup, const console::Console& console)
{
    const std::optional<std::filesystem::path> file = startupToRun(startup, console);
    return file ? complaintAbout(startupName(startup), *file) : std::nullopt;
}

void runStartupFile(const StartupChoice& startup, console::Console& console)
{
    if (std::holds_alternative<NamedStartup>(startup)) {
        console.runFile(startupFile(startup, console));
    } else if (std::holds_alternative<UsualStartup>(startup)) {
        console.runFileWithName(startupName(startup).toStdU32String());
    }
}

} // namespace zephyr::sandbox
