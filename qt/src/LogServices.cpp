#include "LogServices.h"

#include "ConsoleLender.h"
#include "Gui.h"
#include "LogMirror.h"
#include "LogText.h"
#include "QtMessageLog.h"
#include "zephyr/console/Console.h"

#include <QClipboard>
#include <QGuiApplication>

#include <utility>

namespace zephyr::console::qt {

namespace {

void putOnClipboard(const QString& text)
{
    if (hasGui()) {
        QGuiApplication::clipboard()->setText(text);
    }
}

} // namespace

LogServices::LogServices(std::shared_ptr<ConsoleLender> console) : mConsole(std::move(console)) {}

LogServices::~LogServices() = default;

void LogServices::copyLog() const
{
    if (const BorrowedConsole console(mConsole); console) {
        const ConsoleSnapshot snapshot = console->snapshot();
        putOnClipboard(logText(snapshot.lines(), 0, snapshot.lines().size()));
    }
}

void LogServices::copyLastAnswer() const
{
    if (const BorrowedConsole console(mConsole); console && !mLastAnswer.isEmpty()) {
        putOnClipboard(mLastAnswer.text(console->snapshot().lines()));
    }
}

bool LogServices::mirrorLog(const QString& fileName)
{
    mMirror = fileName.isEmpty() ? nullptr : std::make_shared<LogMirror>(mConsole, fileName);
    if (mMessages) {
        mMessages->setMirror(mMirror);
    }
    return mMirror && mMirror->isOpen();
}

void LogServices::catchUpMirror()
{
    if (mMirror) {
        mMirror->tryCatchUp();
    }
}

void LogServices::captureQtMessages(bool capture)
{
    if (capture == (mMessages != nullptr)) {
        return;
    }
    mMessages = capture ? std::make_unique<QtMessageLog>(mConsole) : nullptr;
    if (mMessages) {
        mMessages->setMirror(mMirror);
    }
}

void LogServices::end()
{
    captureQtMessages(false);
    mirrorLog({});
}

} // namespace zephyr::console::qt
