#include "sandbox/program/LogPrinter.h"

#include "sandbox/program/Printing.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

namespace zephyr::sandbox {

LogPrinter::LogPrinter(const console::Console& console, std::FILE* stream)
    : mConsole(console), mLog(console.snapshot()), mStream(stream)
{}

void LogPrinter::printNew()
{
    mConsole.refresh(mLog);
    std::string text;
    for (; mPrinted < mLog.lines().size(); ++mPrinted) {
        text += StringUtil::toString(shownText(mLog.lines()[mPrinted])) + '\n';
    }
    if (mError.empty() && !text.empty()) {
        mError = print(text, mStream).value_or("");
    }
}

} // namespace zephyr::sandbox
