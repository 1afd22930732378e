#include "Log.h"

#include "zephyr/common/StringUtil.h"

#include <algorithm>
#include <utility>

namespace zephyr::console {

namespace {

constexpr std::size_t kReserve = 2048; // entries

} // namespace

Log::Log() { mLog.reserve(kReserve); }

void Log::append(std::u32string&& text, ConsoleMessageType type, unsigned indent)
{
    mLog.push_back({std::move(text), type, indent});
    // good() alone isn't enough: a stream that was never opened is good too.
    if (mRedirectStream.is_open() && mRedirectStream.good()) {
        const std::string line = StringUtil::toString(mLog.back().text);
        mRedirectStream.write(line.data(), static_cast<std::streamsize>(line.size())).put('\n');
    }
}

void Log::read(std::size_t first, std::size_t count, std::vector<LogEntry>& entries) const
{
    const std::size_t begin = std::min(first, mLog.size());
    const std::size_t end = begin + std::min(count, mLog.size() - begin);
    entries.assign(mLog.begin() + static_cast<std::ptrdiff_t>(begin),
                   mLog.begin() + static_cast<std::ptrdiff_t>(end));
}

LogPart Log::readPart(std::size_t index, std::size_t first, std::size_t count) const
{
    if (index >= mLog.size()) {
        return {};
    }
    const LogEntry& entry = mLog[index];
    const std::size_t begin = std::min(first, entry.text.size());
    return {entry.text.substr(begin, count), entry.text.size(), entry.type, entry.indent};
}

void Log::endRedirection()
{
    if (mRedirectStream.is_open()) {
        mRedirectStream.close();
    }
}

} // namespace zephyr::console
