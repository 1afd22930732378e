#include "BlinkTimer.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <cmath>

namespace zephyr::console::qt {

namespace {

qint64 now() { return QDeadlineTimer::current(Qt::PreciseTimer).deadline(); }

} // namespace

BlinkTimer::BlinkTimer(const QObject& context, const std::function<void()>& changes) : mChanges(changes)
{
    mTimer.setSingleShot(true);
    mTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&mTimer, &QTimer::timeout, &context, [this] { onTimeout(); });
}

bool BlinkTimer::setDue(double seconds)
{
    mDue = now() + static_cast<qint64>(std::ceil(seconds * 1000.0)) + 1;
    return !mIsWaiting.exchange(true);
}

void BlinkTimer::start()
{
    if (const qint64 due = mDue; due != 0) {
        mTimer.start(static_cast<int>(std::max<qint64>(0, due - now())));
    }
}

void BlinkTimer::onTimeout()
{
    mDue = 0;
    mIsWaiting = false;
    mChanges();
}

void BlinkTimer::stop()
{
    mDue = 0;
    mIsWaiting = false;
    mTimer.stop();
}

} // namespace zephyr::console::qt
