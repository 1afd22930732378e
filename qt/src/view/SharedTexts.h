#ifndef ZEPHYR_CONSOLE_QT_VIEW_SHAREDTEXTS_H
#define ZEPHYR_CONSOLE_QT_VIEW_SHAREDTEXTS_H

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

/// A list of texts that never change, or a part of one. Copies share the texts, so that a copy of 100,000 costs no more
/// than one of three.
class SharedTexts
{
public:
    /// No texts.
    SharedTexts() = default;

    explicit SharedTexts(std::vector<std::u32string>&& texts)
        : mOwner(std::make_shared<const std::vector<std::u32string>>(std::move(texts))), mPart(*mOwner)
    {}

    /// `count` of these texts, from index `first` on; both must lie within.
    SharedTexts part(std::size_t first, std::size_t count) const
    {
        SharedTexts texts(*this);
        texts.mPart = mPart.subspan(first, count);
        return texts;
    }

    bool empty() const { return mPart.empty(); }
    std::size_t size() const { return mPart.size(); }
    const std::u32string& operator[](std::size_t index) const { return mPart[index]; }
    auto begin() const { return mPart.begin(); }
    auto end() const { return mPart.end(); }

private:
    std::shared_ptr<const std::vector<std::u32string>> mOwner;
    std::span<const std::u32string> mPart;
};

} // namespace zephyr::console::qt

#endif
