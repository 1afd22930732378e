#include "Words.h"

#include "Signs.h"
#include "zephyr/common/StringUtil.h"

#include <QChar>

#include <algorithm>
#include <stdexcept>

namespace zephyr::console::commands {

namespace {

constexpr char32_t kSwitch = U'/';
constexpr std::u32string_view kVowels = U"aeiouAEIOU";

/// Whether `c` may be lost where a word begins or ends, as the console trims a file's lines of byte order marks too.
bool isBlank(char32_t c) { return QChar::isSpace(c) || c < U' ' || c == QChar::ByteOrderMark; }

std::u32string listed(const std::vector<std::u32string>& texts, std::u32string_view last)
{
    std::u32string list;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) {
            list += i + 1 == texts.size() ? last : U", ";
        }
        list += texts[i];
    }
    return list;
}

} // namespace

std::vector<std::u32string> wordsOf(const ConsoleArgs& args)
{
    std::vector<std::u32string> words;
    words.reserve(args.argCount());
    for (unsigned i = 1; i < args.argCount(); ++i) {
        std::u32string word = args.arg(i);
        if (!word.empty()) {
            words.push_back(std::move(word));
        }
    }
    return words;
}

std::u32string unquoted(std::u32string_view word)
{
    std::u32string text(word);
    std::erase(text, kQuote);
    return text;
}

std::u32string quoted(const std::u32string& text)
{
    const bool isPlain = !text.empty() && text.front() != kSwitch && text.front() != U'>' &&
                         std::none_of(text.begin(), text.end(), isBlank);
    return isPlain ? text : kQuote + text + kQuote;
}

std::optional<SwitchWord> switchWord(std::u32string_view word)
{
    if (word.empty() || word.front() != kSwitch) {
        return std::nullopt;
    }
    bool isQuoted = false;
    for (std::size_t i = 1; i < word.size(); ++i) {
        if (word[i] == kQuote) {
            isQuoted = !isQuoted;
        } else if (word[i] == U'=' && !isQuoted) {
            return SwitchWord{unquoted(word.substr(1, i - 1)), std::u32string(word.substr(i + 1))};
        }
    }
    return SwitchWord{unquoted(word.substr(1)), std::nullopt};
}

std::u32string orList(const std::vector<std::u32string>& texts) { return listed(texts, U" or "); }
std::u32string andList(const std::vector<std::u32string>& texts) { return listed(texts, U" and "); }

std::u32string withArticle(std::u32string_view name)
{
    const bool isVowel = !name.empty() && kVowels.find(name.front()) != std::u32string_view::npos;
    return (isVowel ? U"an " : U"a ") + std::u32string(name);
}

std::u32string capitals(std::u32string_view name)
{
    std::u32string result(name);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char32_t c) { return c == U' ' ? U'-' : static_cast<char32_t>(QChar::toUpper(c)); });
    return result;
}

std::u32string_view lastWord(std::u32string_view name)
{
    const std::size_t blank = name.rfind(U' ');
    return blank == std::u32string_view::npos ? name : name.substr(blank + 1);
}

void requireName(const std::u32string& name, const char* what)
{
    const bool isGood = !name.empty() && name.front() != kSwitch && name != U">" && name != U">!" &&
                        name.find(kQuote) == std::u32string_view::npos &&
                        std::none_of(name.begin(), name.end(), isBlank);
    if (!isGood) {
        throw std::invalid_argument(std::string(what) + " can't be named '" + StringUtil::toString(name) +
                                    "'");
    }
}

} // namespace zephyr::console::commands
