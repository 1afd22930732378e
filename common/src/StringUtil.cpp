#include "zephyr/common/StringUtil.h"

#include <QByteArrayView>
#include <QChar>
#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>
#include <numeric>
#include <type_traits>

namespace zephyr {

namespace {

constexpr std::string_view kUtf8ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf8Replacement = "\xEF\xBF\xBD";
constexpr char32_t kReplacement = QChar::ReplacementCharacter;
constexpr std::size_t kLongestSequence = 4; // bytes

// Nearly all text is ASCII, which is the same in every form of Unicode. It is checked and converted by whole blocks: the
// compiler makes a few vector instructions of a loop whose length it knows.
constexpr std::size_t kBlock = 16; // characters

template <typename Char>
using Block = std::array<std::make_unsigned_t<Char>, kBlock>;

// A copy of the block at `from`, of which the compiler knows that nothing else changes it.
template <typename Char>
Block<Char> blockAt(const Char* from)
{
    Block<Char> block;
    std::copy_n(from, kBlock, block.begin());
    return block;
}

// Calls `step` with the position of each block of `text`, which must have one. The last block ends with the text and so may
// overlap the one before.
template <typename Char, typename Step>
void forEachBlock(std::basic_string_view<Char> text, const Step& step)
{
    const std::size_t last = text.size() - kBlock;
    for (std::size_t position = 0; position < last; position += kBlock) {
        step(position);
    }
    step(last);
}

template <typename Char>
bool isAscii(std::basic_string_view<Char> text)
{
    constexpr unsigned kBeyond = 0x80;
    if (text.size() < kBlock) {
        return std::all_of(text.begin(), text.end(),
                           [](Char c) { return static_cast<std::make_unsigned_t<Char>>(c) < kBeyond; });
    }
    Block<Char> bits{};
    forEachBlock(text, [&](std::size_t position) {
        const Block<Char> block = blockAt(text.data() + position);
        for (std::size_t i = 0; i < kBlock; ++i) {
            bits[i] |= block[i];
        }
    });
    return std::accumulate(bits.begin(), bits.end(), 0U, std::bit_or<>()) < kBeyond;
}

// ASCII `text` in characters of another width.
template <typename To, typename From>
std::basic_string<To> converted(std::basic_string_view<From> text)
{
    if (text.size() < kBlock) {
        return {text.begin(), text.end()};
    }
    std::basic_string<To> result(text.size(), To{});
    forEachBlock(text, [&](std::size_t position) {
        const Block<From> block = blockAt(text.data() + position);
        std::transform(block.begin(), block.end(), result.data() + position,
                       [](auto c) { return static_cast<To>(c); });
    });
    return result;
}

bool isWellFormed(std::string_view utf8)
{
    return QByteArrayView(utf8.data(), static_cast<qsizetype>(utf8.size())).isValidUtf8();
}

// The length in bytes of the well-formed sequence that `utf8` starts with, 0 when there is none.
std::size_t sequenceLength(std::string_view utf8)
{
    const std::size_t longest = std::min(kLongestSequence, utf8.size());
    for (std::size_t length = 1; length <= longest; ++length) {
        if (isWellFormed(utf8.substr(0, length))) {
            return length;
        }
    }
    return 0;
}

// Whether `part`, of at least two bytes, is the start of a well-formed sequence. From its third byte on, a
// sequence may have any continuation byte, so 80 is as good as any.
bool isBrokenOff(std::string_view part)
{
    std::string whole(part);
    while (whole.size() < kLongestSequence) {
        whole += '\x80';
        if (isWellFormed(whole)) {
            return true;
        }
    }
    return false;
}

// The length in bytes of the maximal ill-formed part at the start of `utf8`, which starts with no well-formed
// sequence.
std::size_t illFormedLength(std::string_view utf8)
{
    for (std::size_t length = kLongestSequence - 1; length > 1; --length) {
        if (length <= utf8.size() && isBrokenOff(utf8.substr(0, length))) {
            return length;
        }
    }
    return 1;
}

// `utf8` with one U+FFFD for each ill-formed part. Qt would write one for each byte of the part.
std::string repaired(std::string_view utf8)
{
    std::string wellFormed;
    wellFormed.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::size_t length = sequenceLength(utf8);
        wellFormed += length > 0 ? utf8.substr(0, length) : kUtf8Replacement;
        utf8.remove_prefix(length > 0 ? length : illFormedLength(utf8));
    }
    return wellFormed;
}

std::u32string decoded(std::string_view wellFormed)
{
    // Without the flag, Qt would drop a byte order mark at the start.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::ConvertInitialBom | QStringDecoder::Flag::Stateless);
    const QString text =
        decoder(QByteArrayView(wellFormed.data(), static_cast<qsizetype>(wellFormed.size())));
    return text.toStdU32String();
}

bool isScalarValue(char32_t value)
{
    return value <= QChar::LastValidCodePoint && !QChar::isSurrogate(value);
}

bool isAsciiWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The length in bytes of the blank that `text` starts with, 0 when there is none.
std::size_t leadingBlank(std::string_view text)
{
    if (!text.empty() && isAsciiWhiteSpace(text.front())) {
        return 1;
    }
    return text.starts_with(kUtf8ByteOrderMark) ? kUtf8ByteOrderMark.size() : 0;
}

// The length in bytes of the blank that `text` ends with, 0 when there is none.
std::size_t trailingBlank(std::string_view text)
{
    if (!text.empty() && isAsciiWhiteSpace(text.back())) {
        return 1;
    }
    return text.ends_with(kUtf8ByteOrderMark) ? kUtf8ByteOrderMark.size() : 0;
}

bool isBlank(char32_t value) { return value == QChar::ByteOrderMark || QChar::isSpace(value); }

} // namespace

std::string StringUtil::trim(std::string_view text)
{
    while (const std::size_t blank = leadingBlank(text)) {
        text.remove_prefix(blank);
    }
    while (const std::size_t blank = trailingBlank(text)) {
        text.remove_suffix(blank);
    }
    return std::string(text);
}

std::u32string StringUtil::trim(std::u32string_view text)
{
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    return std::u32string(first, last);
}

std::string StringUtil::toString(std::u32string_view text)
{
    if (isAscii(text)) {
        return converted<char>(text);
    }
    QString utf16;
    utf16.reserve(static_cast<qsizetype>(text.size()));
    for (const char32_t value : text) {
        utf16 += QChar::fromUcs4(isScalarValue(value) ? value : kReplacement);
    }
    return utf16.toStdString();
}

std::u32string StringUtil::toU32String(std::string_view text)
{
    if (isAscii(text)) {
        return converted<char32_t>(text);
    }
    if (isWellFormed(text)) {
        return decoded(text);
    }
    return decoded(repaired(text));
}

} // namespace zephyr
