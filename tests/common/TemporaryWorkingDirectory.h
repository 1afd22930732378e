#ifndef ZEPHYR_TESTS_COMMON_TEMPORARYWORKINGDIRECTORY_H
#define ZEPHYR_TESTS_COMMON_TEMPORARYWORKINGDIRECTORY_H

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace zephyr::test {

/// A new directory that is the process's current one while the object lives, and is removed with all it
/// holds.
class TemporaryWorkingDirectory
{
public:
    TemporaryWorkingDirectory()
    {
        std::string name = (std::filesystem::temp_directory_path() / "zephyr-common-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary directory: " + name);
        }
        mPath = std::filesystem::canonical(name);
        std::filesystem::current_path(mPath);
    }

    TemporaryWorkingDirectory(const TemporaryWorkingDirectory&) = delete;
    TemporaryWorkingDirectory& operator=(const TemporaryWorkingDirectory&) = delete;

    ~TemporaryWorkingDirectory()
    {
        std::error_code ignored;
        std::filesystem::current_path(mBefore, ignored);
        std::filesystem::remove_all(mPath, ignored);
    }

    /// The directory's absolute path, free of symbolic links.
    const std::filesystem::path& path() const { return mPath; }

private:
    std::filesystem::path mBefore = std::filesystem::current_path();
    std::filesystem::path mPath;
};

} // namespace zephyr::test

#endif
