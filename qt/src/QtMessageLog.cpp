#include "QtMessageLog.h"

#include "ConsoleLender.h"
#include "zephyr/console/Console.h"

#include <QScopeGuard>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <algorithm>
#include <mutex>
#include <new>
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

/// A console that gets messages. Several hosts of one console make several listeners.
struct Listener
{
    std::shared_ptr<ConsoleLender> console;
};

/// What Qt's message handler writes to. The handler is one function for the whole program, so this can't be a member.
struct Listeners
{
    std::mutex mutex;
    std::vector<Listener> all;
    QtMessageHandler first = nullptr;    // installed when handleMessage() took over for the first time
    QtMessageHandler previous = nullptr; // installed when handleMessage() took over for the last time
};

Listeners& listeners()
{
    // Never destroyed, since messages may come until the very end of the program.
    static auto* const instance = new Listeners;
    return *instance;
}

/// The listener for `console`. There must be one.
std::vector<Listener>::iterator listenerFor(const ConsoleLender& console)
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

/// The lines of a message, each with the kind of the message before it, as another thread may write in between.
QStringList linesOf(QtMsgType type, const QString& message)
{
    QStringList lines = message.split(QChar::LineFeed);
    if (lines.size() > 1 && lines.back().isEmpty()) {
        lines.removeLast(); // the message ends with a line feed
    }
    for (QString& line : lines) {
        if (line.endsWith(QChar::CarriageReturn)) {
            line.chop(1);
        }
        line = QString(kMessage).arg(nameOf(type), line);
    }
    return lines;
}

/// Writes to each console once, even if it has several listeners.
void writeToConsoles(const std::vector<Listener>& all, QtMsgType type, const QString& message) noexcept
{
    std::vector<const Console*> told;
    for (const Listener& listener : all) {
        try {
            const BorrowedConsole console(listener.console);
            if (console && std::find(told.begin(), told.end(), &*console) == told.end()) {
                told.push_back(&*console);
                for (const QString& line : linesOf(type, message)) {
                    console->write(line.toStdU32String(), Output);
                }
            }
        } catch (...) {
            // Memory ran out, or the message came from under the console's lock. The previous handler still gets it.
            continue;
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
        first = listeners().first;
        previous = listeners().previous;
        try {
            all = listeners().all;
        } catch (const std::bad_alloc&) { // the handler before gets the message all the same
        }
    }
    // A handler that was installed later calls this one. If this one was then installed again, that handler is the
    // previous one too, and would call this one back without end.
    static thread_local bool isHandling = false;
    if (isHandling) {
        first(type, context, message);
        return;
    }
    isHandling = true;
    const auto handled = qScopeGuard([] { isHandling = false; });
    writeToConsoles(all, type, message);
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

/// A handler that was installed later stays in place, and may still call this one.
void handBack()
{
    const QtMessageHandler installed = qInstallMessageHandler(listeners().previous);
    if (installed == handleMessage) {
        // The previous handler is in place again. If it calls this one, it must not be called back.
        listeners().previous = listeners().first;
    } else {
        qInstallMessageHandler(installed);
    }
}

} // namespace

QtMessageLog::QtMessageLog(std::shared_ptr<ConsoleLender> console) : mConsole(std::move(console))
{
    const std::lock_guard lock(listeners().mutex);
    listeners().all.push_back({mConsole});
    if (listeners().all.size() == 1) {
        takeOver();
    }
}

QtMessageLog::~QtMessageLog()
{
    const std::lock_guard lock(listeners().mutex);
    listeners().all.erase(listenerFor(*mConsole));
    if (listeners().all.empty()) {
        handBack();
    }
}

} // namespace zephyr::console::qt
