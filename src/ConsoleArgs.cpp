#include "zephyr/console/ConsoleArgs.h"

#include "AssertReport.h"

#include <algorithm>
#include <utility>

namespace zephyr::console {

namespace {

constexpr std::u32string_view kRedirect = U">";
constexpr std::u32string_view kRedirectOpen = U">!";

const std::u32string kEmptyString;

bool isRedirectToken(std::u32string_view word)
{
    return word == kRedirect || word == kRedirectOpen;
}

} // namespace

ConsoleArgs::ConsoleArgs(std::vector<std::u32string> words)
{
    bool seenRedirect = false;
    for (std::u32string& word : words) {
        if (isRedirectToken(word)) {
            seenRedirect = true;
            mRedirectOpen = mRedirectOpen || word == kRedirectOpen;
        } else if (!seenRedirect) {
            mArgs.push_back(std::move(word));
        } else {
            mRedirectTarget = std::move(word); // the last plain word wins
        }
    }
}

const std::u32string& ConsoleArgs::cmd() const
{
    if (mArgs.empty()) {
        reportAssertion("ConsoleArgs", 31, "!mArgs.empty()");
        return kEmptyString;
    }
    return mArgs[0];
}

const std::u32string& ConsoleArgs::subCmd() const
{
    return mArgs.size() >= 2 ? mArgs[1] : kEmptyString;
}

unsigned ConsoleArgs::argCount() const
{
    return static_cast<unsigned>(mArgs.size());
}

bool ConsoleArgs::isAnyArg(std::u32string_view word) const
{
    return std::find(mArgs.begin(), mArgs.end(), word) != mArgs.end();
}

bool ConsoleArgs::hasRedirect() const
{
    return !mRedirectTarget.empty();
}

bool ConsoleArgs::hasRedirectOpen() const
{
    return mRedirectOpen;
}

std::u32string ConsoleArgs::redirectTarget() const
{
    return mRedirectTarget;
}

} // namespace zephyr::console
