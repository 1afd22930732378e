#include "attach/Complaint.h"
#include "attach/ExitStatus.h"
#include "attach/InteractiveSession.h"
#include "attach/Listing.h"
#include "attach/LogFollower.h"
#include "attach/Options.h"
#include "attach/Output.h"
#include "attach/ScriptInput.h"
#include "attach/ScriptSession.h"
#include "attach/Utf8Locale.h"
#include "client/RunningPrograms.h"

#include <QCoreApplication>
#include <QFile>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>
#include <variant>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace zephyr::attach;
using namespace zephyr::console::remote;

constexpr char kVersion[] = "zephyr-attach " ZEPHYR_ATTACH_VERSION "\n";
constexpr char kNothingRuns[] = "No program that serves its console is running.";
constexpr char kSeveralRun[] = "Several programs are running, name one of them:";
constexpr char kStandardInput[] = "-";
constexpr char kStandardInputName[] = "standard input";

constexpr std::chrono::seconds kListingPatience(1);

QStringList commandLine(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments += QString::fromLocal8Bit(argv[i]);
    }
    return arguments;
}

/// Fills the place of each standard descriptor that is closed, or a socket would get its number. What fills it can't be
/// used for what it stands for, so that the program fails as it would with a closed one.
void fillClosedDescriptors()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) == -1) {
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY); // takes the lowest number
        }
    }
}

/// Prints to standard output. \return the exit status.
int printOut(const QByteArray& text) { return write(text) ? kOk : kNoAnswer; }

int list(const SocketPlace& place, bool isJson)
{
    const std::vector<RunningProgram> programs = runningPrograms(place, kListingPatience);
    return printOut(isJson ? jsonListing(programs) : listing(programs));
}

/// The name of the only program that runs; nothing, and a complaint, if it isn't one.
std::optional<QString> onlyName(const SocketPlace& place)
{
    const std::vector<RunningProgram> programs = runningPrograms(place, kListingPatience);
    if (programs.size() == 1) {
        return programs.front().name;
    }
    complain(programs.empty() ? kNothingRuns : kSeveralRun);
    const QByteArray text = listing(programs);
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stderr);
    return std::nullopt;
}

int runLine(const SocketPlace& place, const QString& name, const Options& options)
{
    ScriptInput input(*options.line);
    return ScriptSession(place, name, {options.isJson, true, options.keepsGoing}, input).run();
}

int runFile(const SocketPlace& place, const QString& name, const Options& options)
{
    const bool isStandardInput = !options.file || options.file == kStandardInput;
    auto file = std::make_unique<QFile>(isStandardInput ? QString() : *options.file);
    if (isStandardInput) {
        file->open(STDIN_FILENO, QIODevice::ReadOnly | QIODevice::Unbuffered);
    } else if (const std::optional<QString> error = openScript(*file)) {
        complain(*error);
        return kNoAnswer;
    }
    ScriptInput input(std::move(file), isStandardInput ? kStandardInputName : *options.file);
    return ScriptSession(place, name, {options.isJson, false, options.keepsGoing}, input).run();
}

/// Does what the options ask for with the program `name`.
int attach(const SocketPlace& place, const QString& name, const Options& options)
{
    if (options.line) {
        return runLine(place, name, options);
    }
    if (options.follows) {
        return LogFollower(place, name, options.isJson, options.last).run();
    }
    if (options.file || isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0) {
        return runFile(place, name, options);
    }
    return InteractiveSession(place, name, options.isJson, options.last).run();
}

int run(const Options& options)
{
    const SocketPlace place = SocketPlace::ofUser();
    std::optional<QString> error = place.error();
    if (!error && options.name) {
        error = place.errorInName(*options.name);
    }
    if (error) {
        complain(*error);
        return kNoAnswer;
    }
    if (options.lists) {
        return list(place, options.isJson);
    }
    const std::optional<QString> name = options.name ? options.name : onlyName(place);
    return name ? attach(place, *name, options) : kNoAnswer;
}

} // namespace

int main(int argc, char** argv)
{
    fillClosedDescriptors();
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe is a failed write
    ensureUtf8Locale();
    const ParsedOptions parsed = parseOptions(commandLine(argc, argv));
    if (const auto* const error = std::get_if<OptionsError>(&parsed)) {
        complain(error->text);
        return kNoAnswer;
    }
    const auto& options = *std::get_if<Options>(&parsed);
    const QCoreApplication application(argc, argv);
    if (options.wantsHelp) {
        return printOut(helpText().toUtf8());
    }
    return options.wantsVersion ? printOut(kVersion) : run(options);
}
