#include "Runpath.h"

#include "Paths.h"

#include <algorithm>

namespace zephyr::console {

bool Runpath::append(const std::filesystem::path& path)
{
    if (std::find(mRunPaths.begin(), mRunPaths.end(), path) != mRunPaths.end()) {
        return false;
    }
    mRunPaths.push_back(path);
    return true;
}

bool Runpath::remove(const std::filesystem::path& path)
{
    const auto found = std::find(mRunPaths.begin(), mRunPaths.end(), path);
    if (found == mRunPaths.end()) {
        return false;
    }
    mRunPaths.erase(found);
    return true;
}

std::vector<std::filesystem::path> Runpath::find(const std::u32string& name) const
{
    std::vector<std::filesystem::path> found;
    for (const std::filesystem::path& directory : mRunPaths) {
        std::filesystem::path candidate = directory / pathOfText(name);
        if (pathExists(candidate)) {
            found.push_back(std::move(candidate));
        }
    }
    return found;
}

} // namespace zephyr::console
