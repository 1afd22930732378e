#include "zephyr/console/commands/Failure.h"

#include "FailureNotice.h"
#include "zephyr/common/StringUtil.h"

namespace zephyr::console::commands {

namespace {

// The counters of a thread form a stack, as their scopes do. A command finds them here, since it is passed nothing but the
// console, which knows none of this library.
thread_local FailureCounter* innermost = nullptr;

} // namespace

CommandError::CommandError(const std::u32string& line) : CommandError(StringUtil::toString(line)) {}
CommandError::CommandError(const std::string& line) : std::runtime_error(line) {}
CommandError::~CommandError() = default;

void fail(const std::u32string& line) { throw CommandError(line); }
void fail(const std::string& line) { throw CommandError(line); }

FailureCounter::FailureCounter(const Console& console) : mConsole(&console), mOuter(innermost)
{
    innermost = this;
}

FailureCounter::~FailureCounter()
{
    FailureCounter** link = &innermost;
    while (*link != nullptr && *link != this) { // one that isn't the innermost may be a member of an object
        link = &(*link)->mOuter;
    }
    if (*link != nullptr) {
        *link = mOuter;
    }
}

void FailureNotice::note(const Console& console, const std::u32string& line)
{
    for (FailureCounter* counter = innermost; counter != nullptr; counter = counter->mOuter) {
        if (counter->mConsole == &console) {
            ++counter->mCount;
            counter->mLastLine = line;
        }
    }
}

} // namespace zephyr::console::commands
