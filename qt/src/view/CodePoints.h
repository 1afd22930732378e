#ifndef ZEPHYR_CONSOLE_QT_VIEW_CODEPOINTS_H
#define ZEPHYR_CONSOLE_QT_VIEW_CODEPOINTS_H

#include <QString>

#include <cstddef>
#include <string_view>
#include <vector>

namespace zephyr::console::qt {

/// Text as Qt lays it out, which counts UTF-16 code units, of a text that counts code points. What is no Unicode scalar
/// value becomes U+FFFD, so that each code point has units of its own.
class LaidOutText
{
public:
    /// Makes the text of `codePoints`.
    explicit LaidOutText(std::u32string_view codePoints);

    /// The text in UTF-16.
    const QString& text() const { return mText; }

    /// The number of code points.
    std::size_t size() const { return mSize; }

    /// The position in text() of the code point `index`, which may be size().
    int unitAt(std::size_t index) const;

    /// The index of the code point that holds the code unit `unit` of text(), which may be its length.
    std::size_t indexAt(int unit) const;

private:
    QString mText;
    std::size_t mSize;
    std::vector<int> mUnits; // of each code point, if any takes two; else empty
};

} // namespace zephyr::console::qt

#endif
