#include "AliasLine.h"

#include "Signs.h"
#include "zephyr/common/StringUtil.h"

#include <algorithm>

namespace zephyr::console::commands {

namespace {

constexpr char32_t kSpace = U' ';
constexpr char32_t kLineFeed = U'\n';
constexpr char32_t kLineEnd[] = U";";
constexpr char32_t kSpecialInLines[] = U"\";";

/// Whether `text` survives being written to a console file and read back.
bool fitsAFile(const std::u32string& text)
{
    return text.find(kLineFeed) == std::u32string::npos && text.find(kMaskedSpace) == std::u32string::npos &&
           StringUtil::toU32String(StringUtil::toString(text)) == text;
}

/// Whether the console takes `name` for a single word.
bool isOneWord(const std::u32string& name)
{
    bool isQuoted = false;
    for (const char32_t c : name) {
        if (c == kQuote) {
            isQuoted = !isQuoted;
        } else if (c == kSpace && !isQuoted) {
            return false;
        }
    }
    return !isQuoted && name != U">" && name != U">!"; // those two redirect the output
}

bool isPlainLine(const std::u32string& line)
{
    return line.find_first_of(kSpecialInLines) == std::u32string::npos && StringUtil::trim(line) == line;
}

std::u32string joinedLines(const std::vector<std::u32string>& lines)
{
    std::u32string value = lines.front();
    for (std::size_t i = 1; i < lines.size(); ++i) {
        value += kLineEnd;
        value += kSpace + lines[i];
    }
    // A trailing semicolon would not start another line, so an empty last line needs one of its own.
    return lines.back().empty() ? value + kLineEnd : value;
}

AliasRefusal refused(const std::u32string& name, const std::u32string& why)
{
    std::u32string refusal = U"Can't save alias '" + name + U"': " + why;
    std::replace(refusal.begin(), refusal.end(), kLineFeed, kSpace);
    return AliasRefusal{refusal};
}

} // namespace

AliasLine aliasLine(const std::u32string& name, const std::vector<std::u32string>& lines)
{
    if (!isOneWord(name) || !fitsAFile(name)) {
        return refused(name, U"a console file can't hold its name.");
    }
    if (lines.empty()) {
        return refused(name, U"it has no lines.");
    }
    for (const std::u32string& line : lines) {
        if (!isPlainLine(line) || !fitsAFile(line)) {
            return refused(name, U"a console file can't hold its line '" + line + U"'.");
        }
    }
    return U"alias " + name + U" \"" + joinedLines(lines) + U"\"";
}

} // namespace zephyr::console::commands
