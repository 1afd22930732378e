#include "LogServices.h"

#include "ConsoleLender.h"
#include "Gui.h"
#include "LogMirror.h"
#include "LogText.h"
#include "MirrorFile.h"
#include "QtMessageLog.h"
#include "zephyr/console/Console.h"

#include <QClipboard>
#include <QGuiApplication>

#include <exception>
#include <new>
#include <utility>

namespace zephyr::console::qt {

namespace {

/// Puts what `makeText` returns on the clipboard, which stays as it is where memory runs out.
template <typename MakeText>
void tryPutOnClipboard(const MakeText& makeText)
{
    if (!hasGui()) {
        return;
    }
    try {
        QGuiApplication::clipboard()->setText(makeText());
    } catch (const std::bad_alloc&) {
        return;
    }
}

} // namespace

LogServices::LogServices(std::shared_ptr<ConsoleLender> console) : mConsole(std::move(console)) {}

LogServices::~LogServices() = default;

void LogServices::copyLog() const
{
    if (const BorrowedConsole console(mConsole); console) {
        tryPutOnClipboard([&console] {
            const ConsoleSnapshot snapshot = console->snapshot();
            return logText(snapshot.lines(), 0, snapshot.lines().size());
        });
    }
}

void LogServices::copyLastAnswer() const
{
    if (const BorrowedConsole console(mConsole); console && !mLastAnswer.isEmpty()) {
        tryPutOnClipboard([&] { return mLastAnswer.text(*console); });
    }
}

bool LogServices::mirrorLog(const QString& fileName)
{
    mMirror.reset();
    if (fileName.isEmpty()) {
        return false;
    }
    try {
        mMirror = std::make_unique<LogMirror>(mConsole);
        return mMirror->start(fileName, std::make_unique<MirrorFile>(fileName));
    } catch (const std::exception&) { // no memory, or no thread
        mMirror.reset();
        return false;
    }
}

void LogServices::captureQtMessages(bool capture)
{
    if (!capture) {
        mMessages.reset();
    } else if (mMessages) {
        mMessages->begin();
    } else {
        mMessages = std::make_unique<QtMessageLog>(mConsole);
    }
}

void LogServices::end()
{
    captureQtMessages(false);
    mirrorLog({});
}

} // namespace zephyr::console::qt
