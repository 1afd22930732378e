#include "CodePoints.h"

#include <QChar>

#include <algorithm>

namespace zephyr::console::qt {

namespace {

char32_t scalarValue(char32_t c)
{
    const bool isScalar = c <= QChar::LastValidCodePoint && !QChar::isSurrogate(c);
    return isScalar ? c : U'\uFFFD';
}

} // namespace

LaidOutText::LaidOutText(std::u32string_view codePoints) : mSize(codePoints.size())
{
    mText.reserve(static_cast<qsizetype>(codePoints.size()));
    const bool isPlain = std::all_of(codePoints.begin(), codePoints.end(),
                                     [](char32_t c) { return !QChar::requiresSurrogates(c); });
    for (const char32_t c : codePoints) {
        if (!isPlain) {
            mUnits.push_back(static_cast<int>(mText.size()));
        }
        mText.append(QChar::fromUcs4(scalarValue(c)));
    }
}

int LaidOutText::unitAt(std::size_t index) const
{
    return mUnits.empty()  ? static_cast<int>(index)
           : index < mSize ? mUnits[index]
                           : static_cast<int>(mText.size());
}

std::size_t LaidOutText::indexAt(int unit) const
{
    if (mUnits.empty()) {
        return static_cast<std::size_t>(unit);
    }
    if (unit >= mText.size()) {
        return mSize;
    }
    const auto after = std::upper_bound(mUnits.begin(), mUnits.end(), unit);
    return static_cast<std::size_t>(after - mUnits.begin()) - 1;
}

} // namespace zephyr::console::qt
