#include "ConsoleWatch.h"

#include "zephyr/console/Console.h"

#include <utility>

namespace zephyr::console::qt {

namespace {

/// Tells the end of the console, which destroys its observers.
class EndNotice
{
public:
    explicit EndNotice(ChangeNotice& notice) : mNotice(notice) {}
    ~EndNotice() { mNotice.post(); }
    EndNotice(const EndNotice&) = delete;
    EndNotice& operator=(const EndNotice&) = delete;

private:
    ChangeNotice& mNotice;
};

} // namespace

ConsoleWatch::ConsoleWatch(QObject& receiver, std::function<void()> changed, std::function<void()> frameEnded)
    : mChanged(receiver, std::move(changed)),
      mFrameEnded(receiver, [this, frameEnded = std::move(frameEnded)] {
          mIsInFrame = false;
          frameEnded();
      })
{}

void ConsoleWatch::start(Console& console)
{
    const std::shared_ptr<ConsoleWatch> self = shared_from_this();
    const auto end = std::make_shared<EndNotice>(mChanged);
    mObserver = console.addObserver([self, &console, end] { self->hear(console); });
}

void ConsoleWatch::end(Console& console) { console.removeObserver(mObserver); }

void ConsoleWatch::endCalls()
{
    mChanged.end();
    mFrameEnded.end();
}

void ConsoleWatch::hear(const Console& console)
{
    if (std::this_thread::get_id() == mHostThread && console.isOpen() != mIsOpen) {
        mChanged.post();
    } else if (mIsOpen && isInFrame()) {
        mFrameEnded.post();
    } else if (mIsOpen) {
        mToldSize = console.logSize();
        mChanged.post();
    }
}

bool ConsoleWatch::isInFrame() const
{
    const std::thread::id self = std::this_thread::get_id();
    return mPaintingThread.load() == self && (self != mHostThread || mIsInFrame);
}

void ConsoleWatch::framePainted()
{
    mPaintingThread = std::this_thread::get_id();
    if (mPaintingThread.load() == mHostThread) {
        mIsInFrame = true;
        mFrameEnded.post();
    }
}

} // namespace zephyr::console::qt
