#include "attach/Answer.h"

#include <algorithm>
#include <utility>

namespace zephyr::attach {

using console::remote::Entry;

namespace {

constexpr qsizetype kRemembered = 16; // entries

} // namespace

std::vector<Entry> Answer::add(const Entry& entry)
{
    mLast.append(entry.text);
    if (mLast.size() > kRemembered) {
        mLast.removeFirst();
    }
    if (entry.type == Entry::Type::Input) {
        mHeldBack.clear();
        return {};
    }
    std::vector<Entry> printed = std::exchange(mHeldBack, {});
    (entry.text.isEmpty() ? mHeldBack : printed).push_back(entry);
    return printed;
}

bool Answer::says(const QString& reason) const
{
    return std::any_of(mLast.begin(), mLast.end(),
                       [&](const QString& text) { return text.contains(reason); });
}

} // namespace zephyr::attach
