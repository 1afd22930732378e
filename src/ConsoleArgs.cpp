#include "zephyr/console/ConsoleArgs.h"

#include "AssertReport.h"

#include <algorithm>
#include <utility>

namespace zephyr::console {

namespace {

constexpr std::u32string_view kRedirect = U">";
constexpr std::u32string_view kRedirectOpen = U">!";

const std::u32string kEmptyString;

bool isRedirectToken(std::u32string_view word) { return word == kRedirect || word == kRedirectOpen; }

} // namespace

ConsoleArgs::ConsoleArgs(std::vector<std::u32string> words) : mArgs(std::move(words))
{
    const auto redirect = std::find_if(mArgs.begin(), mArgs.end(), isRedirectToken);
    for (auto word = redirect; word != mArgs.end(); ++word) {
        if (isRedirectToken(*word)) {
            mRedirectOpen = mRedirectOpen || *word == kRedirectOpen;
        } else {
            mRedirectTarget = std::move(*word); // oddity 17: the last plain word wins
        }
    }
    mArgs.erase(redirect, mArgs.end());
}

const std::u32string& ConsoleArgs::cmd() const
{
    if (mArgs.empty()) {
        reportAssertion("ConsoleArgs", 31, "!mArgs.empty()");
        return kEmptyString;
    }
    return mArgs[0];
}

const std::u32string& ConsoleArgs::subCmd() const { return mArgs.size() >= 2 ? mArgs[1] : kEmptyString; }

unsigned ConsoleArgs::argCount() const { return static_cast<unsigned>(mArgs.size()); }

bool ConsoleArgs::isAnyArg(std::u32string_view word) const
{
    return std::find(mArgs.begin(), mArgs.end(), word) != mArgs.end();
}

bool ConsoleArgs::hasRedirect() const { return !mRedirectTarget.empty(); }

bool ConsoleArgs::hasRedirectOpen() const { return mRedirectOpen; }

std::u32string ConsoleArgs::redirectTarget() const { return mRedirectTarget; }

} // namespace zephyr::console
