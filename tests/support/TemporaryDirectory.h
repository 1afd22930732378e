#ifndef ZEPHYR_TESTS_SUPPORT_TEMPORARYDIRECTORY_H
#define ZEPHYR_TESTS_SUPPORT_TEMPORARYDIRECTORY_H

#include <QFile>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace zephyr::test {

/// A real directory, empty at first. The destructor removes it and everything in it.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        if (!mDirectory.isValid()) {
            throw std::runtime_error("no temporary directory: " + mDirectory.errorString().toStdString());
        }
    }

    ~TemporaryDirectory()
    {
        // QTemporaryDir can't remove files whose names aren't UTF-8, and warns about those that are left.
        std::error_code ignored;
        const std::filesystem::path directory = QFile::encodeName(mDirectory.path()).toStdString();
        std::filesystem::permissions(directory, std::filesystem::perms::owner_all, ignored);
        for (const auto& entry : std::filesystem::directory_iterator(directory, ignored)) {
            std::filesystem::remove_all(entry.path(), ignored);
        }
    }

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// Its absolute path, without symbolic links.
    std::filesystem::path path() const
    {
        return std::filesystem::canonical(QFile::encodeName(mDirectory.path()).toStdString());
    }

    /// Writes `bytes` into the file `name`, relative to the directory, and returns its path. Replaces an existing
    /// file.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes) const
    {
        const std::filesystem::path file = path() / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream stream(file, std::ios::binary | std::ios::trunc);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        stream.close();
        if (!stream) {
            throw std::runtime_error("can't write " + file.string());
        }
        return file;
    }

    /// The bytes of the file `name`. Throws if there is none.
    std::string read(const std::filesystem::path& name) const
    {
        std::ifstream stream(path() / name, std::ios::binary);
        if (!stream.is_open()) {
            throw std::runtime_error("can't read " + (path() / name).string());
        }
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    /// Whether a file or directory `name` exists.
    bool has(const std::filesystem::path& name) const { return std::filesystem::exists(path() / name); }

private:
    QTemporaryDir mDirectory;
};

/// Makes a directory the current one while it lives.
class WorkingDirectory
{
public:
    explicit WorkingDirectory(const std::filesystem::path& path) : mPrevious(std::filesystem::current_path())
    {
        std::filesystem::current_path(path);
    }

    ~WorkingDirectory()
    {
        std::error_code ignored;
        std::filesystem::current_path(mPrevious, ignored);
    }

    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

private:
    std::filesystem::path mPrevious;
};

} // namespace zephyr::test

#endif
