#ifndef ZEPHYR_TESTS_SUPPORT_NAMEDPIPE_H
#define ZEPHYR_TESTS_SUPPORT_NAMEDPIPE_H

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>

namespace zephyr::test {

/// A named pipe that nobody has opened yet.
class NamedPipe
{
public:
    explicit NamedPipe(std::filesystem::path path) : mPath(std::move(path))
    {
        if (mkfifo(mPath.c_str(), S_IRUSR | S_IWUSR) != 0) {
            throw std::runtime_error("no pipe at " + mPath.string());
        }
    }

    const std::filesystem::path& path() const { return mPath; }

private:
    std::filesystem::path mPath;
};

/// The reading end of a named pipe. Opening it doesn't wait for a writer.
class PipeReader
{
public:
    explicit PipeReader(const NamedPipe& pipe)
        : mDescriptor(open(pipe.path().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC))
    {
        if (mDescriptor < 0) {
            throw std::runtime_error("can't read " + pipe.path().string());
        }
    }

    ~PipeReader() { close(mDescriptor); }

    PipeReader(const PipeReader&) = delete;
    PipeReader& operator=(const PipeReader&) = delete;

    /// Waits until there is something to read. \return what the pipe holds. Throws if nothing comes for a minute.
    std::string read() const
    {
        constexpr int kTooLong = 60000; // ms
        pollfd readable{mDescriptor, POLLIN, 0};
        if (poll(&readable, 1, kTooLong) != 1) {
            throw std::runtime_error("nothing comes out of a pipe");
        }
        std::string text;
        std::array<char, 4096> part{};
        for (ssize_t size = 1; size > 0;) {
            size = ::read(mDescriptor, part.data(), part.size());
            text.append(part.data(), static_cast<std::size_t>(size > 0 ? size : 0));
        }
        return text;
    }

private:
    int mDescriptor;
};

} // namespace zephyr::test

#endif
