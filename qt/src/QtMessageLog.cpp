#include "QtMessageLog.h"

#include "ConsoleLender.h"
#include "LogMirror.h"
#include "zephyr/console/Console.h"

#include <QScopeGuard>
#include <QString>
#include <QtGlobal>

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

namespace {

const char* const kMessage = "Qt %1: %2";
const char* const kDebug = "debug";
const char* const kInfo = "info";
const char* const kWarning = "warning";
const char* const kCritical = "critical";
const char* const kFatal = "fatal";

/// A console that asked for messages. Several kits may have asked for the same one.
struct Listener
{
    std::shared_ptr<ConsoleLender> console;
    std::weak_ptr<LogMirror> mirror;
};

/// Qt's message handler is one function for the whole program, so that what it writes to must be found from it.
struct Listeners
{
    std::mutex mutex;
    std::vector<Listener> all;
    QtMessageHandler first = nullptr;    // what was installed before this file's handler ever was
    QtMessageHandler previous = nullptr; // what was installed before it last was
};

Listeners& listeners()
{
    // Never destroyed: the last messages come at the program's end.
    static auto* const instance = new Listeners;
    return *instance;
}

/// The listener of `console`, which is there.
std::vector<Listener>::iterator find(const ConsoleLender& console)
{
    std::vector<Listener>& all = listeners().all;
    return std::find_if(all.begin(), all.end(),
                        [&](const Listener& listener) { return listener.console.get() == &console; });
}

const char* nameOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg: return kDebug;
    case QtInfoMsg: return kInfo;
    case QtWarningMsg: return kWarning;
    case QtCriticalMsg: return kCritical;
    default: return kFatal;
    }
}

/// Writes to each console once, however many listen for it.
void writeToConsoles(const std::vector<Listener>& all, const QString& line) noexcept
{
    std::vector<const Console*> told;
    for (const Listener& listener : all) {
        try {
            const BorrowedConsole console(listener.console);
            if (console && std::find(told.begin(), told.end(), &*console) == told.end()) {
                told.push_back(&*console);
                console->write(line.toStdU32String(), Output);
            }
        } catch (...) {
            // For want of memory, or from under a console's lock. The handler before gets the message all the same.
            continue;
        }
    }
}

/// The program ends when a fatal message has been handled.
void keepLastWords(const std::vector<Listener>& all)
{
    for (const Listener& listener : all) {
        if (const std::shared_ptr<LogMirror> mirror = listener.mirror.lock()) {
            mirror->catchUpBeforeTheEnd();
        }
    }
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    std::vector<Listener> all;
    QtMessageHandler first = nullptr;
    QtMessageHandler previous = nullptr;
    {
        const std::lock_guard lock(listeners().mutex);
        all = listeners().all;
        first = listeners().first;
        previous = listeners().previous;
    }
    // A handler that was installed over this one, and then had this one installed over it, calls it back.
    static thread_local bool isHandling = false;
    if (isHandling) {
        first(type, context, message);
        return;
    }
    isHandling = true;
    const auto handled = qScopeGuard([] { isHandling = false; });
    writeToConsoles(all, QString(kMessage).arg(nameOf(type), message));
    if (type == QtFatalMsg) {
        keepLastWords(all);
    }
    previous(type, context, message);
}

void takeOver()
{
    const QtMessageHandler installed = qInstallMessageHandler(handleMessage);
    if (installed == handleMessage) {
        return;
    }
    listeners().previous = installed;
    if (listeners().first == nullptr) {
        listeners().first = installed;
    }
}

/// Where somebody has installed another handler since, that one stays, and may go on calling this one.
void handBack()
{
    const QtMessageHandler installed = qInstallMessageHandler(listeners().previous);
    if (installed == handleMessage) {
        // What was before is in its place now, and if it calls this handler, must not be called again.
        listeners().previous = listeners().first;
    } else {
        qInstallMessageHandler(installed);
    }
}

} // namespace

QtMessageLog::QtMessageLog(std::shared_ptr<ConsoleLender> console) : mConsole(std::move(console))
{
    const std::lock_guard lock(listeners().mutex);
    listeners().all.push_back({mConsole, {}});
    if (listeners().all.size() == 1) {
        takeOver();
    }
}

QtMessageLog::~QtMessageLog()
{
    const std::lock_guard lock(listeners().mutex);
    listeners().all.erase(find(*mConsole));
    if (listeners().all.empty()) {
        handBack();
    }
}

void QtMessageLog::setMirror(const std::weak_ptr<LogMirror>& mirror)
{
    const std::lock_guard lock(listeners().mutex);
    find(*mConsole)->mirror = mirror;
}

} // namespace zephyr::console::qt
