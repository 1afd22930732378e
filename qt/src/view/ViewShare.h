#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWSHARE_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWSHARE_H

#include "FramePlan.h"
#include "ViewState.h"

#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace zephyr::console::qt {

/// What the host's thread and the thread that paints tell each other: what to show, and where it was painted. Both are
/// values that never change once they are here. From any thread.
class ViewShare
{
public:
    /// What the next frame shows.
    std::shared_ptr<const ViewState> state() const
    {
        const std::lock_guard lock(mMutex);
        return mState;
    }

    /// Sets what the next frame shows.
    void setState(std::shared_ptr<const ViewState> state)
    {
        const std::lock_guard lock(mMutex);
        std::swap(mState, state); // what was there is destroyed without the lock
    }

    /// The last frame that was painted, or null.
    std::shared_ptr<const FramePlan> plan() const
    {
        const std::lock_guard lock(mMutex);
        return mPlan;
    }

    /// Sets the frame that was painted.
    void setPlan(std::shared_ptr<const FramePlan> plan)
    {
        const std::lock_guard lock(mMutex);
        std::swap(mPlan, plan);
        if (mPlan->reachesEnd) {
            mTopAtEnd = mPlan->top;
        } else if (mPlan->top != mTopAtEnd) {
            mTopAtEnd.reset();
        }
    }

    /// The state's top with which a frame reached the end of the log, as in a window that became larger; none once a frame
    /// with another top didn't.
    std::optional<TextPlace> topAtEnd() const
    {
        const std::lock_guard lock(mMutex);
        return mTopAtEnd;
    }

private:
    mutable std::mutex mMutex;
    std::shared_ptr<const ViewState> mState = std::make_shared<const ViewState>();
    std::shared_ptr<const FramePlan> mPlan;
    std::optional<TextPlace> mTopAtEnd;
};

} // namespace zephyr::console::qt

#endif
