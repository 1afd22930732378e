#include "QtMessageLog.h"

#include "BorrowedConsole.h"

#include <QScopeGuard>
#include <QString>
#include <QtGlobal>

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

namespace {

/// Qt's message handler is one function for the whole program, so that what it writes to must be found from it.
struct Listeners
{
    std::mutex mutex;
    std::vector<std::weak_ptr<Console>> consoles;
    QtMessageHandler first = nullptr;    // what was installed before this file's handler ever was
    QtMessageHandler previous = nullptr; // what was installed before it last was
};

Listeners& listeners()
{
    static Listeners* const instance =
        new Listeners; // never destroyed: the last messages come at the program's end
    return *instance;
}

bool isSame(const std::weak_ptr<Console>& left, const std::weak_ptr<Console>& right)
{
    return !left.owner_before(right) && !right.owner_before(left);
}

QString kindOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QStringLiteral("debug");
    case QtInfoMsg:
        return QStringLiteral("info");
    case QtWarningMsg:
        return QStringLiteral("warning");
    case QtCriticalMsg:
        return QStringLiteral("critical");
    default:
        return QStringLiteral("fatal");
    }
}

void writeToConsoles(const std::vector<std::weak_ptr<Console>>& consoles, const QString& line) noexcept
{
    for (const std::weak_ptr<Console>& listening : consoles) {
        try {
            if (const BorrowedConsole console(listening); console) {
                console->write(line.toStdU32String(), Output);
            }
        } catch (...) {
            continue; // for want of memory; the handler before gets the message all the same
        }
    }
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    std::vector<std::weak_ptr<Console>> consoles;
    QtMessageHandler first = nullptr;
    QtMessageHandler previous = nullptr;
    {
        const std::lock_guard lock(listeners().mutex);
        consoles = listeners().consoles;
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
    writeToConsoles(consoles, QStringLiteral("Qt %1: %2").arg(kindOf(type), message));
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
    if (installed != handleMessage) {
        qInstallMessageHandler(installed);
    }
}

} // namespace

QtMessageLog::QtMessageLog(std::weak_ptr<Console> console) : mConsole(std::move(console))
{
    const std::lock_guard lock(listeners().mutex);
    listeners().consoles.push_back(mConsole);
    if (listeners().consoles.size() == 1) {
        takeOver();
    }
}

QtMessageLog::~QtMessageLog()
{
    const std::lock_guard lock(listeners().mutex);
    auto& consoles = listeners().consoles;
    consoles.erase(std::find_if(consoles.begin(), consoles.end(),
                                [this](const auto& other) { return isSame(other, mConsole); }));
    if (consoles.empty()) {
        handBack();
    }
}

} // namespace zephyr::console::qt
