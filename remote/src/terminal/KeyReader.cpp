#include "terminal/KeyReader.h"

#include <QByteArrayView>
#include <QString>

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace zephyr::console::remote {

namespace {

constexpr std::size_t kBytesAtOnce = 4096;

bool isTemporary(int error) { return error == EINTR || error == EAGAIN; }

} // namespace

KeyReader::KeyReader(int in) : mInput(in)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe2");
    }
    mBellOut = ends[0];
    mBellIn = ends[1];
}

KeyReader::~KeyReader()
{
    ::close(mBellIn);
    ::close(mBellOut);
}

std::optional<wchar_t> KeyReader::take()
{
    if (mKeys.empty()) {
        return std::nullopt;
    }
    const wchar_t key = mKeys.front();
    mKeys.pop_front();
    return key;
}

bool KeyReader::wait(bool reads, std::chrono::milliseconds atMost)
{
    std::array<pollfd, 2> sources{{{mBellOut, POLLIN, 0}, {reads ? mInput : -1, POLLIN, 0}}};
    if (::poll(sources.data(), sources.size(), static_cast<int>(atMost.count())) <= 0) {
        return false;
    }
    if (sources[0].revents != 0) {
        std::array<char, 64> bytes{};
        while (::read(mBellOut, bytes.data(), bytes.size()) > 0) {
        }
    }
    return sources[1].revents != 0;
}

bool KeyReader::read()
{
    std::array<char, kBytesAtOnce> bytes{};
    const ssize_t count = ::read(mInput, bytes.data(), bytes.size());
    if (count <= 0) {
        return count < 0 && isTemporary(errno);
    }
    const QString text = mDecoder.decode(QByteArrayView(bytes.data(), count));
    for (const char32_t key : text.toStdU32String()) {
        mKeys.push_back(static_cast<wchar_t>(key));
    }
    return true;
}

void KeyReader::ring() const
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(mBellIn, &byte, 1); // a full pipe rings as well
}

} // namespace zephyr::console::remote
