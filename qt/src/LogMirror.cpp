#include "LogMirror.h"

#include "ConsoleLender.h"
#include "MirrorFile.h"
#include "MirrorWriter.h"
#include "zephyr/console/Console.h"

#include <new>
#include <utility>

namespace zephyr::console::qt {

namespace {

const char* const kWriteError = "The log is no longer written to '%1': %2";

} // namespace

/// The console's observer: tells the writer that the log has grown, as long as there is the console.
class LogMirror::Follower
{
public:
    Follower(Console& console, std::shared_ptr<MirrorWriter> writer, QString name)
        : mConsole(console), mWriter(std::move(writer)), mName(std::move(name))
    {}

    ~Follower()
    {
        if (mWriter->isInItsProcess()) {
            mWriter->forgetConsole();
        }
    }

    Follower(const Follower&) = delete;
    Follower& operator=(const Follower&) = delete;

    /// Has the writer write what is new in the log. The caller must hold no lock, as other observers hear of an error.
    void writeNew()
    {
        if (!mWriter->isInItsProcess()) {
            return;
        }
        mWriter->writeUpTo(mConsole.logSize());
        if (const QString error = mWriter->takeError(); !error.isNull()) {
            tryReport(error);
        }
    }

private:
    void tryReport(const QString& error)
    {
        try {
            mConsole.write(QString(kWriteError).arg(mName, error).toStdU32String(), Output);
        } catch (const std::bad_alloc&) {
            return; // the mirror ends without a word
        }
    }

    Console& mConsole;
    const std::shared_ptr<MirrorWriter> mWriter;
    const QString mName;
};

LogMirror::LogMirror(std::shared_ptr<ConsoleLender> console) : mConsole(std::move(console)) {}

LogMirror::~LogMirror()
{
    if (!mThread) {
        return;
    }
    if (!mWriter->isInItsProcess()) {
        static_cast<void>(
            mThread.release()); // a thread of another process can be neither joined nor detached
        return;
    }
    endFollowing();
    if (mWriter->stop()) {
        mThread->join();
    } else {
        mThread->detach();
    }
}

bool LogMirror::start(const QString& name, std::unique_ptr<MirrorFile> file)
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return false;
    }
    const auto writer = std::make_shared<MirrorWriter>(*console);
    const auto follower = std::make_shared<Follower>(*console, writer, name);
    mWriter = writer;
    mThread = std::make_unique<std::thread>(
        [writer, file = std::move(file)]() mutable { writer->run(std::move(file)); });
    mFollower = follower;
    mObserver = console->addObserver([follower] { follower->writeNew(); });
    follower->writeNew(); // which may destroy this object
    return writer->isOpen();
}

void LogMirror::endFollowing()
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return;
    }
    if (const std::shared_ptr<Follower> follower = mFollower.lock()) {
        follower->writeNew();
    }
    console->removeObserver(mObserver);
}

} // namespace zephyr::console::qt
