#include "Log.h"

#include "zephyr/common/StringUtil.h"

#include <algorithm>
#include <string>

namespace zephyr::console {

void Log::append(LogEntry&& entry)
{
    mLog.add(std::move(entry));
    // good() alone isn't enough: a stream that was never opened is good too.
    if (mRedirectStream.is_open() && mRedirectStream.good()) {
        const std::string line = StringUtil::toString(mLog[mLog.size() - 1].text);
        mRedirectStream.write(line.data(), static_cast<std::streamsize>(line.size())).put('\n');
    }
}

void Log::read(std::size_t first, std::size_t count, std::vector<LogEntry>& entries) const
{
    const std::size_t begin = std::min(first, mLog.size());
    entries.resize(std::min(count, mLog.size() - begin)); // entries that were there keep their memory
    auto to = entries.begin();
    mLog.forEachPiece(begin, entries.size(),
                      [&to](const LogEntry* from, const LogEntry* end) { to = std::copy(from, end, to); });
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
