#include "sandbox/program/LogPrinter.h"

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
    : mConsole(console), mLog(console.snapshot()), mStream(stream)
{}

void LogPrinter::printNew()
{
    mConsole.refresh(mLog);
    std::string text;
    for (; mPrinted < mLog.lines().size(); ++mPrinted) {
        text += printedEntry(mLog.lines()[mPrinted]);
    }
    if (!mError.empty() || text.empty()) {
        return;
    }
    if (std::fwrite(text.data(), 1, text.size(), mStream) != text.size() || std::fflush(mStream) != 0) {
        mError = std::generic_category().message(errno);
    }
}

} // namespace zephyr::sandbox
