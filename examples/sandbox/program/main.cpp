#include "sandbox/probe/KeyProbe.h"
#include "sandbox/program/Batch.h"
#include "sandbox/program/Complaint.h"
#include "sandbox/program/HeadlessRun.h"
#include "sandbox/program/Options.h"
#include "sandbox/program/PosixProcess.h"
#include "sandbox/program/Printing.h"
#include "sandbox/program/Sandbox.h"
#include "sandbox/program/WindowRun.h"
#include "zephyr/console/commands/Reference.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <cstdio>
#include <optional>
#include <string>
#include <variant>

namespace {

using namespace zephyr::sandbox;

constexpr int kFailed = 1;

QStringList commandLine(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments += QString::fromLocal8Bit(argv[i]);
    }
    return arguments;
}

/// Prints to standard output. \return the program's exit code.
int printOut(const QString& text)
{
    if (const std::optional<std::string> error = print(text.toStdString(), stdout)) {
        complainAboutOutput(*error);
        return kFailed;
    }
    return 0;
}

/// Does what needs no window, also where there is no window system.
int runWithoutWindow(const Options& options, int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (options.wantsHelp) {
        return printOut(helpText());
    }
    if (options.wantsVersion) {
        return printOut("zephyr-sandbox " ZEPHYR_SANDBOX_VERSION "\n");
    }
    if (options.reference) {
        Sandbox sandbox;
        return printOut(QString::fromStdString(reference(sandbox.console(), *options.reference)));
    }
    return options.isHeadless ? runHeadless(options) : runBatch(options);
}

int probeKeys()
{
    KeyProbe window([](const QString& line) {
        if (printOut(line + '\n') != 0) {
            QCoreApplication::exit(kFailed);
        }
    });
    window.show();
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    preparePosixProcess();
    const ParsedOptions parsed = parseOptions(commandLine(argc, argv));
    if (const auto* const error = std::get_if<OptionsError>(&parsed)) {
        complain(error->text);
        return kFailed;
    }
    const auto& options = *std::get_if<Options>(&parsed);
    if (options.wantsHelp || options.wantsVersion || options.reference || options.batch ||
        options.isHeadless) {
        return runWithoutWindow(options, argc, argv);
    }
    const QGuiApplication application(argc, argv);
    QGuiApplication::setDesktopFileName("zephyr-sandbox"); // whose icon the desktop shows
    return options.probesKeys ? probeKeys() : runWindow(options);
}
