#include "sandbox/program/HeadlessRun.h"

#include "sandbox/program/Complaint.h"
#include "sandbox/program/GuardedRun.h"
#include "sandbox/program/LogPrinter.h"
#include "sandbox/program/Options.h"
#include "sandbox/program/Printing.h"
#include "sandbox/program/Sandbox.h"
#include "sandbox/program/StartupFile.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

namespace zephyr::sandbox {

namespace {

constexpr int kFailed = 1;
constexpr int kCantStart = 2;
constexpr std::chrono::milliseconds kFrame(16);

/// Moves the sandbox on in real time until the program is to end.
int runInRealTime(Sandbox& sandbox)
{
    sandbox.recording().moveToBackground();
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        clock.start();
        sandbox.moveOn(seconds);
    });
    timer.start(kFrame);
    return QCoreApplication::exec();
}

/// Does what the options ask for, and serves. \return the exit code.
int serve(const Options& options, Sandbox& sandbox)
{
    std::optional<console::remote::ConsoleServer> server(std::in_place, sandbox.console(), *options.serve);
    if (!server->isListening()) {
        complain(server->error());
        return kFailed;
    }
    sandbox.whenConsoleEnds([&] { server.reset(); });
    sandbox.whenQuitting([] { QCoreApplication::quit(); });
    if (const std::optional<std::string> error =
            print("Served as '" + server->name().toStdString() + "'.\n", stdout)) {
        complainAboutOutput(*error);
        return kFailed;
    }
    for (const QString& line : options.lines) {
        runGuarded(sandbox, [&](console::Console& console) { console.execute(line.toStdU32String()); });
    }
    return sandbox.isQuitting() ? 0 : runInRealTime(sandbox);
}

} // namespace

int runHeadless(const Options& options)
{
    Sandbox sandbox;
    if (const std::optional<QString> complaint = complaintAboutStartup(options.startup, sandbox.console())) {
        complain(*complaint);
        return kCantStart;
    }
    runGuarded(sandbox, [&](console::Console& console) { runStartupFile(options.startup, console); });
    const int exitCode = sandbox.isQuitting() ? 0 : serve(options, sandbox);
    sandbox.recording().end(sandbox.console());
    return exitCode;
}

} // namespace zephyr::sandbox
