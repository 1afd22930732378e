#include "terminal/PlainLines.h"

#include "terminal/WriteAll.h"

#include <QPointer>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace zephyr::console::remote {

namespace {

constexpr qsizetype kMaxLine = qsizetype{1} << 20; // bytes
constexpr qsizetype kBytesOfARead = qsizetype{1} << 16;
constexpr char kTooLong[] = "A line of more than 1 MiB was left out.\n";
constexpr char kCantPrint[] = "Can't print the console's log: %s.\n";

bool isFile(int descriptor)
{
    struct stat status{};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

PlainLines::PlainLines(std::FILE* in, std::FILE* out, LineCallbacks callbacks, bool reads)
    : mIn(::fileno(in)), mOut(out), mCallbacks(std::move(callbacks))
{
    mTurn.setInterval(0);
    connect(&mTurn, &QTimer::timeout, this, &PlainLines::takeTurn);
    if (!reads) {
        return;
    }
    if (!isFile(mIn)) {
        mReadable = std::make_unique<QSocketNotifier>(mIn, QSocketNotifier::Read);
        connect(mReadable.get(), &QSocketNotifier::activated, this, &PlainLines::read);
    } else {
        mTurn.start();
    }
}

void PlainLines::print(const QString& text)
{
    if (mHasEnded) {
        return;
    }
    const QByteArray bytes = (text.endsWith(u'\n') ? text : text + u'\n').toUtf8();
    const int error = writeAll(mOut, bytes);
    if (error == EPIPE) {
        QTimer::singleShot(0, this, &PlainLines::end);
    } else if (error != 0 && !std::exchange(mHasComplained, true)) {
        std::fprintf(stderr, kCantPrint, std::generic_category().message(error).c_str());
    }
}

void PlainLines::setPromptShown(bool shown)
{
    mIsShown = shown;
    if (shown && !mHasEnded) {
        mTurn.start();
    }
}

/// Delivers a line that has come, or sees to it that more come.
void PlainLines::takeTurn()
{
    mTurn.stop();
    if (!mIsShown || mIsDelivering || mHasEnded) {
        return; // who ends that calls again
    }
    if (const std::optional<QByteArray> line = nextLine()) {
        deliver(*line);
    } else if (mIsAtEnd) {
        end();
    } else if (mReadable) {
        mReadable->setEnabled(true);
    } else {
        read();
    }
}

void PlainLines::read()
{
    if (mReadable) {
        mReadable->setEnabled(false);
    }
    mBytes.remove(0, std::exchange(mBegin, 0));
    const qsizetype size = mBytes.size();
    mBytes.resize(size + kBytesOfARead);
    const ssize_t count = ::read(mIn, mBytes.data() + size, static_cast<std::size_t>(kBytesOfARead));
    mBytes.resize(size + (count > 0 ? count : 0));
    mIsAtEnd = count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN);
    mTurn.start();
}

void PlainLines::deliver(const QByteArray& line)
{
    const QPointer<PlainLines> self = this;
    const auto entered = mCallbacks.entered; // which may destroy this object
    mIsDelivering = true;
    if (entered) {
        entered(QString::fromUtf8(line));
    }
    if (!self.isNull()) {
        mIsDelivering = false;
        mTurn.start();
    }
}

void PlainLines::end()
{
    if (std::exchange(mHasEnded, true)) {
        return;
    }
    mReadable.reset();
    const auto ended = mCallbacks.ended; // which may destroy this object
    if (ended) {
        ended();
    }
}

std::optional<QByteArray> PlainLines::nextLine()
{
    for (qsizetype end = 0; (end = mBytes.indexOf('\n', mBegin)) >= 0;) {
        if (std::optional<QByteArray> line = takeUpTo(end)) {
            return line;
        }
    }
    if (mIsAtEnd && mBegin < mBytes.size()) {
        return takeUpTo(mBytes.size());
    }
    if (mBytes.size() - mBegin > kMaxLine) {
        mBytes.clear();
        mBegin = 0;
        mIsSkipping = true;
    }
    return std::nullopt;
}

/// Takes the line that ends at `end`. \return nothing if it is too long.
std::optional<QByteArray> PlainLines::takeUpTo(qsizetype end)
{
    const QByteArray line = mBytes.mid(mBegin, end - mBegin);
    mBegin = end + 1;
    if (std::exchange(mIsSkipping, false) || line.size() > kMaxLine) {
        std::fputs(kTooLong, stderr);
        return std::nullopt;
    }
    return line.endsWith('\r') ? line.chopped(1) : line;
}

} // namespace zephyr::console::remote
