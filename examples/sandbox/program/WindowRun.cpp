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

#include <QCoreApplication>
#include <QImage>

#include <cstdio>

namespace zephyr::sandbox {

namespace {

constexpr int kFailed = 1;
constexpr int kCantStart = 2;

/// What the options ask a window that is shown to do.
void doAsAsked(const Options& options, Sandbox& sandbox, SandboxWindow& window)
{
    for (const QString& line : options.lines) {
        runGuarded(sandbox, [&](console::Console& console) { console.execute(line.toStdU32String()); });
    }
    window.update(); // a paused simulation isn't painted anew by itself
    if (!sandbox.isQuitting()) {
        typeInto(window, options.keys);
    }
    if (!options.screenshot.isEmpty()) {
        const QString error = savePicture(window.frame(), options.screenshot);
        if (!error.isEmpty()) {
            complain(error);
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
    SandboxWindow window(sandbox);
    window.resize(options.size);
    window.whenShown([&] { doAsAsked(options, sandbox, window); });
    window.show();
    return QCoreApplication::exec();
}

} // namespace

int runWindow(const Options& options)
{
    Sandbox sandbox;
    const QString complaint = complaintAboutStartup(options, sandbox.console());
    if (!complaint.isEmpty()) {
        complain(complaint);
        return kCantStart;
    }
    LogPrinter printer(sandbox.console(), stdout);
    const auto printLog = [&] {
        if (options.printsLog) {
            printer.printNew();
        }
    };
    sandbox.whenQuitting([&] {
        printLog(); // before the log gets a line about how the command was left
        QCoreApplication::quit();
    });
    runGuarded(sandbox, [&](console::Console& console) { runStartupFile(options, console); });
    const int exitCode = sandbox.isQuitting() ? 0 : showWindow(options, sandbox);
    if (!sandbox.isQuitting()) {
        sandbox.recording().end(sandbox.console());
        printLog();
    }
    if (!printer.error().empty()) {
        complainAboutOutput(printer.error());
        return kFailed;
    }
    return exitCode;
}

} // namespace zephyr::sandbox
