#include "sandbox/program/WindowRun.h"

#include "sandbox/program/Complaint.h"
#include "sandbox/program/GuardedRun.h"
#include "sandbox/program/KeyTyping.h"
#include "sandbox/program/LogPrinter.h"
#include "sandbox/program/Options.h"
#include "sandbox/program/Sandbox.h"
#include "sandbox/program/SandboxWindow.h"
#include "sandbox/program/Screenshot.h"
#include "sandbox/program/StartupFile.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <QCoreApplication>
#include <QImage>

#include <cstdio>
#include <optional>

namespace zephyr::sandbox {

namespace {

constexpr int kFailed = 1;
constexpr int kCantStart = 2;

/// Does what the options ask for once the window is shown.
void followOptions(const Options& options, Sandbox& sandbox, SandboxWindow& window)
{
    for (const QString& line : options.lines) {
        runGuarded(sandbox, [&](console::Console& console) { console.execute(line.toStdU32String()); });
    }
    window.update(); // the lines may have changed a paused simulation, which isn't repainted by itself
    if (!sandbox.isQuitting()) {
        typeInto(window, options.keys);
    }
    if (options.screenshot) {
        if (const std::optional<QString> error = saveScreenshot(window.frame(), *options.screenshot)) {
            complain(*error);
            QCoreApplication::exit(kFailed);
            return;
        }
    }
    if (options.quits) {
        window.whenNotRecording([] { QCoreApplication::quit(); });
    }
}

int showWindow(const Options& options, Sandbox& sandbox)
{
    SandboxWindow window(sandbox, options.isPlain);
    window.resize(options.size);
    window.whenShown([&] { followOptions(options, sandbox, window); });
    window.show();
    std::optional<console::remote::ConsoleServer> server;
    if (options.serve) {
        server.emplace(sandbox.console(), *options.serve); // its line in the log says if that fails
    }
    return QCoreApplication::exec();
}

} // namespace

int runWindow(const Options& options)
{
    Sandbox sandbox;
    if (const std::optional<QString> complaint = complaintAboutStartup(options.startup, sandbox.console())) {
        complain(*complaint);
        return kCantStart;
    }
    LogPrinter printer(sandbox.console(), stdout);
    const auto printLog = [&] {
        if (options.printsLog) {
            printer.printNew();
        }
    };
    sandbox.whenQuitting([&] {
        printLog();
        QCoreApplication::quit();
    });
    runGuarded(sandbox, [&](console::Console& console) { runStartupFile(options.startup, console); });
    const int exitCode = sandbox.isQuitting() ? 0 : showWindow(options, sandbox);
    if (!sandbox.isQuitting()) {
        sandbox.recording().end(sandbox.console());
        printLog();
    }
    if (printer.error()) {
        complainAboutOutput(*printer.error());
        return kFailed;
    }
    return exitCode;
}

} // namespace zephyr::sandbox
