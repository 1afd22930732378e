#include "Log.h"

#include "zephyr/common/StringUtil.h"

#include <algorithm>
#include <exception>
#include <string>

namespace zephyr::console {

void Log::append(LogEntry&& entry)
{
    mLog.add(std::move(entry));
    // good() alone isn't enough: a stream that was never opened is good too.
    if (mRedirectStream.is_open() && mRedirectStream.good()) {
        mirror(mLog[mLog.size() - 1].text);
    }
}

/// Writes `text` and a line feed to the redirect file.
void Log::mirror(const std::u32string& text)
{
    const std::string line = StringUtil::toString(text);
    const auto length = static_cast<std::streamsize>(line.size());
    std::filebuf& file =
        *mRedirectStream.rdbuf(); // the stream's own functions ask for its state at each call
    try {
        if (file.sputn(line.data(), length) == length &&
            file.sputc('\n') != std::filebuf::traits_type::eof()) {
            return;
        }
    } catch (const std::exception&) { // of which a stream's own functions make a bad stream too
    }
    mRedirectStream.setstate(std::ios::badbit);
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
