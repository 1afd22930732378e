#include "sandbox/LogPrinter.h"

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <cerrno>
#include <system_error>

namespace zephyr::sandbox {

namespace {

constexpr char kPrompt[] = ">> ";

} // namespace

std::string printedEntry(const console::LogEntry& entry)
{
    const std::string text = StringUtil::toString(entry.text) + '\n';
    return entry.type == console::Input ? kPrompt + text : text;
}

LogPrinter::LogPrinter(const console::Console& console, std::FILE* stream)
    : mConsole(console), mStream(stream)
{}

void LogPrinter::printNew()
{
    const console::ConsoleSnapshot snapshot = mConsole.snapshot();
    std::string text;
    for (; mPrinted < snapshot.lines().size(); ++mPrinted) {
        text += printedEntry(snapshot.lines()[mPrinted]);
    }
    if (!mError.empty() || text.empty()) {
        return;
    }
    if (std::fwrite(text.data(), 1, text.size(), mStream) != text.size() || std::fflush(mStream) != 0) {
        mError = std::generic_category().message(errno);
    }
}

} // namespace zephyr::sandbox
