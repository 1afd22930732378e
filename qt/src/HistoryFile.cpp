#include "HistoryFile.h"

#include "ConsoleLender.h"
#include "HistoryStore.h"
#include "HistoryWriter.h"
#include "zephyr/console/Console.h"

#include <new>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

namespace {

const char* const kError = "The history can't be kept in '%1': %2";

} // namespace

HistoryFile::HistoryFile(std::shared_ptr<ConsoleLender> console, std::function<void()> notify)
    : mConsole(std::move(console)), mNotify(std::move(notify))
{}

HistoryFile::~HistoryFile() { end(); }

bool HistoryFile::start(const QString& name, std::unique_ptr<HistoryStore> store)
{
    end();
    mName = name;
    mIsReported = false;
    const auto writer = std::make_shared<HistoryWriter>(mNotify);
    mThread = std::make_unique<std::thread>(
        [writer, store = std::move(store)]() mutable { writer->run(std::move(store)); });
    mWriter = writer;
    const bool isRead = writer->waitUntilRead();
    catchUp(); // which may destroy this object
    return isRead;
}

void HistoryFile::end()
{
    if (!mThread) {
        return;
    }
    if (!mWriter->isInItsProcess()) {
        // A thread of another process can be neither joined nor detached.
        static_cast<void>(mThread.release());
        mWriter.reset();
        return;
    }
    if (const BorrowedConsole console(mConsole); console) {
        keepLine(*console); // that ends this
    }
    const std::shared_ptr<HistoryWriter> writer = std::exchange(mWriter, nullptr);
    const std::unique_ptr<std::thread> thread = std::move(mThread);
    if (writer->stop()) {
        thread->join();
    } else {
        thread->detach();
    }
    tryReport(writer); // which may destroy this object
}

void HistoryFile::noteLine(const Console& console)
{
    mRunning.reset();
    if (!isWriting()) {
        return;
    }
    try {
        mRunning = RunningLine{console.activeInput(), console.history().size()};
    } catch (const std::bad_alloc&) {
        return; // this line isn't kept
    }
}

void HistoryFile::keepLine(const Console& console)
{
    const std::optional<RunningLine> running = std::exchange(mRunning, std::nullopt);
    if (!running || !isWriting()) {
        return;
    }
    try {
        const std::vector<std::u32string> history = console.history();
        if (history.size() > running->record && history[running->record] == running->text) {
            mWriter->append(running->text);
        }
    } catch (const std::bad_alloc&) {
        return;
    }
}

void HistoryFile::catchUp()
{
    if (!isWriting()) {
        return;
    }
    if (const BorrowedConsole console(mConsole); console) {
        addLines(*console);
        tryReport(mWriter);
    }
}

bool HistoryFile::isWriting() const { return mWriter && mWriter->isInItsProcess(); }

/// Adds the lines that were read, but for those that the history has, as from a host of the same console before.
void HistoryFile::addLines(Console& console)
{
    const std::vector<std::u32string> lines = mWriter->takeLines();
    try {
        const std::vector<std::u32string> history = console.history();
        const std::unordered_set<std::u32string_view> known(history.begin(), history.end());
        for (const std::u32string& line : lines) {
            if (!known.contains(line)) {
                console.addToHistory(line);
            }
        }
    } catch (const std::bad_alloc&) {
        return; // the rest isn't recalled
    }
}

/// Logs why the file can't be used, once.
void HistoryFile::tryReport(const std::shared_ptr<HistoryWriter>& writer)
{
    const QString error = writer->takeError();
    const BorrowedConsole console(mConsole);
    if (error.isNull() || !console || std::exchange(mIsReported, true)) {
        return;
    }
    try {
        console->write(QString(kError).arg(mName, error).toStdU32String(), Output);
    } catch (const std::bad_alloc&) {
        return; // no memory for a word about it
    }
}

} // namespace zephyr::console::qt
