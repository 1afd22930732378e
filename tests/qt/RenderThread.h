#ifndef ZEPHYR_TESTS_QT_RENDERTHREAD_H
#define ZEPHYR_TESTS_QT_RENDERTHREAD_H

#include "zephyr/console/qt/ConsoleHost.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSize>

#include <atomic>
#include <stop_token>
#include <thread>

namespace zephyr::test {

/// A thread that paints frame after frame of `size` while it lives.
class RenderThread
{
public:
    RenderThread(console::qt::ConsoleHost& host, QSize size)
        : mHost(host), mSize(size), mThread([this](const std::stop_token& stop) { run(stop); })
    {}

    /// Waits until a whole frame has been painted that was begun after this call.
    void awaitFrame() const
    {
        const int before = mFrames;
        while (mFrames < before + 2) {
            QCoreApplication::processEvents();
        }
    }

    /// Ends the thread. \return the last frame.
    QImage finish()
    {
        awaitFrame();
        mThread.request_stop();
        mThread.join();
        return mFrame;
    }

private:
    void run(const std::stop_token& stop)
    {
        while (!stop.stop_requested()) {
            QImage frame(mSize, QImage::Format_ARGB32_Premultiplied);
            frame.fill(Qt::white);
            QPainter painter(&frame);
            mHost.paint(painter);
            painter.end();
            mFrame = frame;
            ++mFrames;
        }
    }

    console::qt::ConsoleHost& mHost;
    QSize mSize;
    QImage mFrame;
    std::atomic<int> mFrames{0};
    std::jthread mThread;
};

} // namespace zephyr::test

#endif
