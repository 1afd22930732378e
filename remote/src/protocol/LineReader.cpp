#include "protocol/LineReader.h"

namespace zephyr::console::remote {

std::optional<QByteArray> LineReader::next()
{
    const qsizetype end = lineEnd();
    if (end < 0 || end - mBegin > mLimit) {
        return std::nullopt;
    }
    QByteArray line = mBytes.mid(mBegin, end - mBegin);
    mBegin = end + 1;
    mSearched = 0;
    if (mBegin > mBytes.size() / 2) { // so that a byte is moved once on average
        mBytes.remove(0, mBegin);
        mBegin = 0;
    }
    return line;
}

bool LineReader::isOverLimit() const
{
    const qsizetype end = lineEnd();
    return (end < 0 ? mBytes.size() : end) - mBegin > mLimit;
}

/// Where the line feed of the line that comes next is; -1 if it hasn't come. Looks at no byte twice before it came.
qsizetype LineReader::lineEnd() const
{
    const qsizetype end = mBytes.indexOf('\n', mBegin + mSearched);
    mSearched = (end < 0 ? mBytes.size() : end) - mBegin;
    return end;
}

} // namespace zephyr::console::remote
