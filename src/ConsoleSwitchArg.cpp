#include "zephyr/console/ConsoleSwitchArg.h"

#include "AssertReport.h"
#include "SplitString.h"
#include "zephyr/console/ConsoleArgs.h"

#include <utility>
#include <vector>

namespace zephyr::console {

namespace {

constexpr char32_t kSwitchMark = U'/';
constexpr char32_t kValueSeparator = U'=';

std::u32string unquoted(std::u32string piece)
{
    unmaskQuoted(piece, kValueSeparator);
    removeQuotes(piece);
    return piece;
}

} // namespace

ConsoleSwitchArg::ConsoleSwitchArg(const ConsoleArgs& args, unsigned whichArg)
{
    if (whichArg >= args.argCount()) {
        reportAssertion("ConsoleSwitchArg", 17, "whichArg < args.argCount()");
        return;
    }
    std::u32string word = args.arg(whichArg);
    if (word.empty() || word.front() != kSwitchMark) {
        return;
    }
    maskQuoted(word, kValueSeparator);
    std::vector<std::u32string> pieces = splitString(word, kValueSeparator);
    mSwitchArg = unquoted(std::move(pieces[0])); // there is one, since the word begins with the slash
    if (pieces.size() >= 2) {
        mValue = unquoted(std::move(pieces[1]));
    }
}

const std::u32string& ConsoleSwitchArg::switchArg() const { return mSwitchArg; }

const std::u32string& ConsoleSwitchArg::value() const { return mValue; }

} // namespace zephyr::console
