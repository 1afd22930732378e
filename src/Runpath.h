#ifndef ZEPHYR_CONSOLE_RUNPATH_H
#define ZEPHYR_CONSOLE_RUNPATH_H

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console {

/// The directories in which console files are looked for, in order. Paths are compared element by element, without
/// looking at the disk.
class Runpath
{
public:
    explicit Runpath(std::vector<std::filesystem::path> paths) : mRunPaths(std::move(paths)) {}

    /// Adds `path` at the end. \return false if an equal path is there already; nothing is added then.
    bool append(const std::filesystem::path& path);

    /// Removes the first path equal to `path`. \return false if there is none.
    bool remove(const std::filesystem::path& path);

    /// The directories, in order.
    const std::vector<std::filesystem::path>& paths() const { return mRunPaths; }

    /// The paths of all files and directories called `name` in the directories, in the same order. Throws
    /// `std::filesystem::filesystem_error` ("exists") if the file system can't tell whether one exists.
    std::vector<std::filesystem::path> find(const std::u32string& name) const;

private:
    std::vector<std::filesystem::path> mRunPaths;
};

} // namespace zephyr::console

#endif
