#include "sandbox/WindowRun.h"

#include "sandbox/Complaint.h"
#include "sandbox/ConsoleInput.h"
#include "sandbox/KeyTyping.h"
#include "sandbox/LogPrinter.h"
#include "sandbox/Options.h"
#include "sandbox/Sandbox.h"
#include "sandbox/SandboxWindow.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>

#include <cstdio>

namespace zephyr::sandbox {

namespace {

constexpr char kCantWrite[] = "can't write '%1': %2.";
constexpr char kPictureFormat[] = "PNG";

constexpr int kFailed = 1;

/// \return why the picture couldn't be written, or an empty string.
QString savePicture(const QImage& picture, const QString& path)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture.save(&buffer, kPictureFormat);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush()) {
        return {};
    }
    return file.errorString();
}

/// What the options ask a window that is shown to do.
void doAsAsked(const Options& options, ConsoleInput& input, SandboxWindow& window)
{
    for (const QString& line : options.lines) {
        input.execute(line);
    }
    typeInto(window, options.keys);
    if (!options.screenshot.isEmpty()) {
        const QString error = savePicture(window.frame(), options.screenshot);
        if (!error.isEmpty()) {
            complain(QString(kCantWrite).arg(options.screenshot, error));
            QCoreApplication::exit(kFailed);
            return;
        }
    }
    if (options.quits) {
        QCoreApplication::quit();
    }
}

int showWindow(const Options& options, Sandbox& sandbox, ConsoleInput& input)
{
    SandboxWindow window(sandbox, input);
    window.resize(options.size);
    window.whenShown([&] { doAsAsked(options, input, window); });
    window.show();
    return QCoreApplication::exec();
}

} // namespace

int runWindow(const Options& options)
{
    Sandbox sandbox;
    ConsoleInput input(sandbox.console(), [] { QCoreApplication::quit(); });
    if (!options.skipsStartup) {
        input.runFile(kStartupFile);
    }
    const int exitCode = input.hasQuit() ? 0 : showWindow(options, sandbox, input);
    if (!options.printsLog) {
        return exitCode;
    }
    LogPrinter printer(sandbox.console(), stdout);
    printer.printNew();
    if (!printer.error().empty()) {
        complainAboutOutput(printer.error());
        return kFailed;
    }
    return exitCode;
}

} // namespace zephyr::sandbox
