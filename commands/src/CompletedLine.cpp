#include "CompletedLine.h"

#include "Signs.h"
#include "Words.h"

#include <algorithm>
#include <utility>

namespace zephyr::console::commands {

namespace {

constexpr char32_t kBlank = U' ';

/// The line behind the command word, as it was typed.
std::u32string textOf(const ConsoleArgs& args)
{
    std::u32string text;
    for (unsigned i = 1; i < args.argCount(); ++i) {
        text += (i > 1 ? U" " : U"") + args.arg(i);
    }
    return args.endsWithBlank() && args.argCount() > 1 ? text + kBlank : text;
}

/// The value of `offer` as a word, or as the end of one.
std::u32string asTyped(const Offer& offer, bool isFirstTyped)
{
    if (offer.needsQuotes) {
        return kQuote + offer.value + kQuote;
    }
    // What was typed without quotes needs none, such as a file's name that begins with a slash.
    const bool mayNeedQuotes = isFirstTyped || offer.value.find(kBlank) != std::u32string::npos;
    return mayNeedQuotes && !offer.value.empty() ? quoted(offer.value) : offer.value;
}

} // namespace

CompletedLine::CompletedLine(const ConsoleArgs& args)
    : mIsClosed(args.hasRedirect() || args.hasRedirectOpen() ||
                (args.argCount() < 2 && !args.endsWithBlank()))
{
    bool isQuoted = false;
    for (const char32_t c : textOf(args)) {
        isQuoted = isQuoted != (c == kQuote);
        if (c != kBlank || isQuoted) {
            mLast += c;
        } else if (!mLast.empty()) {
            mFinished.push_back(std::exchange(mLast, {}));
        }
    }
}

std::vector<std::u32string> CompletedLine::candidates(const std::vector<Offer>& offers) const
{
    const std::u32string typed = unquoted(mLast);
    const std::size_t blank = mLast.rfind(kBlank);
    const std::u32string kept =
        blank == std::u32string::npos ? std::u32string() : unquoted(mLast.substr(0, blank + 1));
    std::vector<std::u32string> result;
    for (const Offer& offer : offers) {
        const std::u32string whole = offer.head + offer.value;
        if (!whole.starts_with(typed) || whole == typed || whole.find(kQuote) != std::u32string::npos) {
            continue;
        }
        std::u32string candidate = offer.head + asTyped(offer, typed.empty());
        if (blank != std::u32string::npos) {
            candidate = whole.substr(kept.size()) + kQuote; // which a blank in a word has open
        }
        if (std::find(result.begin(), result.end(), candidate) == result.end()) {
            result.push_back(std::move(candidate));
        }
    }
    return result;
}

} // namespace zephyr::console::commands
