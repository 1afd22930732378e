#ifndef ZEPHYR_TESTS_SANDBOX_PIPE_H
#define ZEPHYR_TESTS_SANDBOX_PIPE_H

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string_view>

namespace zephyr::test {

/// A named pipe. Both ends are kept open, so that a program that opens it as a file doesn't block.
class Pipe
{
public:
    explicit Pipe(const std::filesystem::path& path)
    {
        if (mkfifo(path.c_str(), S_IRUSR | S_IWUSR) == 0) {
            mDescriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
        }
        if (mDescriptor < 0) {
            throw std::runtime_error("no pipe at " + path.string());
        }
    }

    ~Pipe() { close(mDescriptor); }

    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    void write(std::string_view text) const
    {
        if (::write(mDescriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
            throw std::runtime_error("can't write into a pipe");
        }
    }

private:
    int mDescriptor = -1;
};

} // namespace zephyr::test

#endif
