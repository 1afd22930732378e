#include "sandbox/probe/KeyProbe.h"
#include "sandbox/program/Batch.h"
#include "sandbox/program/Complaint.h"
#include "sandbox/program/Options.h"
#include "sandbox/program/WindowRun.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>

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

int print(const QString& text)
{
    if (std::fputs(text.toUtf8().constData(), stdout) < 0 || std::fflush(stdout) != 0) {
        complainAboutOutput(std::generic_category().message(errno));
        return kFailed;
    }
    return 0;
}

/// What needs no window system must run where there is none.
int runWithoutWindow(const Options& options, int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (options.wantsHelp) {
        return print(helpText());
    }
    if (options.wantsVersion) {
        return print("zephyr-sandbox " ZEPHYR_SANDBOX_VERSION "\n");
    }
    return runBatch(options);
}

int probeKeys()
{
    KeyProbe window([](const QString& line) {
        if (print(line + '\n') != 0) {
            QCoreApplication::exit(kFailed);
        }
    });
    window.show();
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe is a failed write, which is reported
    const ParsedOptions parsed = parseOptions(commandLine(argc, argv));
    if (!parsed.error.isEmpty()) {
        complain(parsed.error);
        return kFailed;
    }
    const Options& options = parsed.options;
    if (options.wantsHelp || options.wantsVersion || !options.batch.isEmpty()) {
        return runWithoutWindow(options, argc, argv);
    }
    const QGuiApplication application(argc, argv);
    QGuiApplication::setDesktopFileName("zephyr-sandbox"); // whose icon the desktop shows
    return options.probesKeys ? probeKeys() : runWindow(options);
}
