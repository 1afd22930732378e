#include "zephyr/console/commands/Value.h"

#include "zephyr/common/StringUtil.h"

#include <algorithm>
#include <system_error>

namespace zephyr::console::commands {

namespace fs = std::filesystem;

namespace {

constexpr char32_t kOn[] = U"on";
constexpr char32_t kOff[] = U"off";

std::u32string textOfPath(const fs::path& path) { return StringUtil::toU32String(path.string()); }
fs::path pathOfText(const std::u32string& text) { return StringUtil::toString(text); }

} // namespace

/// \cond SPECIALISATIONS The members are as Value says.

std::optional<bool> Value<bool>::read(const std::u32string& text)
{
    if (text == kOn || text == U"true" || text == U"1") {
        return true;
    }
    if (text == kOff || text == U"false" || text == U"0") {
        return false;
    }
    return std::nullopt;
}

std::u32string Value<bool>::write(bool value) { return value ? kOn : kOff; }
std::vector<std::u32string> Value<bool>::candidates() { return {kOn, kOff}; }

std::optional<char32_t> Value<char32_t>::read(const std::u32string& text)
{
    return text.size() == 1 ? std::optional<char32_t>(text.front()) : std::nullopt;
}

std::u32string Value<char32_t>::write(char32_t value) { return {value}; }

std::optional<std::string> Value<std::string>::read(const std::u32string& text)
{
    return StringUtil::toString(text);
}

std::u32string Value<std::string>::write(const std::string& value) { return StringUtil::toU32String(value); }

std::optional<fs::path> Value<fs::path>::read(const std::u32string& text) { return pathOfText(text); }
std::u32string Value<fs::path>::write(const fs::path& value) { return textOfPath(value); }

std::vector<std::u32string> Value<fs::path>::candidates(const std::u32string& typed)
{
    const std::u32string directory = typed.substr(0, typed.rfind(U'/') + 1);
    const bool showsHidden = typed.size() > directory.size() && typed[directory.size()] == U'.';
    std::vector<std::u32string> files;
    std::error_code error;
    fs::directory_iterator entry(directory.empty() ? fs::path(".") : pathOfText(directory), error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        const std::u32string name = textOfPath(entry->path().filename());
        if (name.front() != U'.' || showsHidden) {
            std::error_code ignored;
            files.push_back(directory + name + (entry->is_directory(ignored) ? U"/" : U""));
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// \endcond

} // namespace zephyr::console::commands
