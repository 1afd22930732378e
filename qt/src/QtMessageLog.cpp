#include "QtMessageLog.h"

#include "ConsoleLender.h"
#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <exception>
#include <memory>
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

using Consoles = std::vector<std::shared_ptr<ConsoleLender>>;

constexpr std::size_t kMostHandlers = 8;

/// What Qt's message handler writes to, and the handlers that it was installed over. The handler is one function for
/// the whole program, so this can't be a member.
struct Capture
{
    const qint64 process = QCoreApplication::applicationPid();
    std::mutex mutex;
    Consoles consoles; // one for each host; several hosts may have the same console

    // The newest first; null where there are no more. Forked children read them too, where the mutex may be locked for
    // ever.
    std::array<std::atomic<QtMessageHandler>, kMostHandlers> others{};
};

/// The capture of the process, or its parent's if there is none yet; null if that has none either. It is never
/// destroyed, since messages may come until the very end of the program.
std::atomic<Capture*>& currentCapture()
{
    static std::atomic<Capture*> current{nullptr};
    return current;
}

bool isOfThisProcess(const Capture& capture) { return capture.process == QCoreApplication::applicationPid(); }

/// The capture of this process, which is made if there is none. For the host's thread.
Capture& ownCapture()
{
    Capture* const current = currentCapture();
    if (current != nullptr && isOfThisProcess(*current)) {
        return *current;
    }
    auto own = std::make_unique<Capture>();
    if (current != nullptr) { // the parent's, which installed what this process has inherited
        std::transform(current->others.begin(), current->others.end(), own->others.begin(),
                       [](const auto& other) { return other.load(); });
    }
    currentCapture() = own.get();
    return *own.release();
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

/// Writes to each console once, even if it has several hosts.
void writeToConsoles(const Consoles& all, QtMsgType type, const QString& message)
{
    std::vector<const Console*> told;
    for (const std::shared_ptr<ConsoleLender>& lender : all) {
        try {
            const BorrowedConsole console(lender);
            if (console && std::find(told.begin(), told.end(), &*console) == told.end()) {
                told.push_back(&*console);
                for (const QString& line : linesOf(type, message)) {
                    console->write(line.toStdU32String(), Output);
                }
            }
        } catch (const std::exception&) {
            // Memory ran out, or the message came from under the console's lock. The previous handler still gets it.
            continue;
        }
    }
}

/// The consoles that get messages: none in a forked child that didn't ask for them, nor where memory ran out.
Consoles consolesOf(Capture& capture)
{
    if (!isOfThisProcess(capture)) {
        return {};
    }
    const std::lock_guard lock(capture.mutex);
    try {
        return capture.consoles;
    } catch (const std::bad_alloc&) {
        return {};
    }
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    Capture& capture = *currentCapture();
    const Consoles consoles = consolesOf(capture); // first, as it waits for a takeOver() on another thread
    // A handler that was installed over this one may call it. If this one was then installed again, the two would call
    // each other without end. So a message that comes back goes to the handler that was there before those two.
    static thread_local std::size_t depth = 0; // calls of this function that the thread is in
    const QtMessageHandler other = depth < kMostHandlers ? capture.others[depth].load() : nullptr;
    ++depth;
    const auto handled = qScopeGuard([] { --depth; });
    if (depth == 1) {
        writeToConsoles(consoles, type, message);
    }
    if (other != nullptr) {
        other(type, context, message);
    }
}

/// Has Qt call handleMessage() before all other handlers.
void takeOver(Capture& capture)
{
    const QtMessageHandler installed = qInstallMessageHandler(handleMessage);
    if (installed == handleMessage) {
        return;
    }
    QtMessageHandler next = installed;
    for (std::atomic<QtMessageHandler>& other : capture.others) {
        next = other.exchange(next);
        if (next == nullptr || next == installed) {
            return; // each of them is there once
        }
    }
}

/// Has Qt call the handler again that was there before. A handler that was installed later stays in place, and may
/// still call handleMessage().
void handBack(Capture& capture)
{
    auto& others = capture.others;
    const QtMessageHandler installed = qInstallMessageHandler(others.front());
    if (installed != handleMessage) {
        qInstallMessageHandler(installed);
        return;
    }
    if (others[1] == nullptr) {
        return; // the last one stays, for a handler that still calls this one
    }
    // The handler that is in place again may call handleMessage(), which must not call it back.
    for (std::size_t i = 0; i + 1 < others.size(); ++i) {
        others[i] = others[i + 1].load();
    }
    others.back() = nullptr;
}

} // namespace

QtMessageLog::QtMessageLog(std::shared_ptr<ConsoleLender> console) : mConsole(std::move(console)) { begin(); }

QtMessageLog::~QtMessageLog()
{
    Capture& capture = ownCapture();
    const std::lock_guard lock(capture.mutex);
    const auto mine = std::find(capture.consoles.begin(), capture.consoles.end(), mConsole);
    if (mine == capture.consoles.end()) {
        return; // a forked child that didn't ask for messages
    }
    capture.consoles.erase(mine);
    if (capture.consoles.empty()) {
        handBack(capture);
    }
}

void QtMessageLog::begin()
{
    Capture& capture = ownCapture();
    const std::lock_guard lock(capture.mutex);
    if (std::find(capture.consoles.begin(), capture.consoles.end(), mConsole) == capture.consoles.end()) {
        capture.consoles.push_back(mConsole);
    }
    takeOver(capture);
}

} // namespace zephyr::console::qt
