// Converts between UTF-8 and code points in both directions, and trims.

#include "Require.h"
#include "zephyr/common/StringUtil.h"

#include <QByteArrayView>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace zephyr::fuzz {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isScalarValue(char32_t value) { return value < 0xD800 || (value > 0xDFFF && value <= 0x10FFFF); }

bool isWellFormed(std::string_view bytes)
{
    return QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())).isValidUtf8();
}

void checkDecoding(std::string_view bytes)
{
    const std::u32string decoded = StringUtil::toU32String(bytes);
    require(std::all_of(decoded.begin(), decoded.end(), isScalarValue), "decoding yields scalar values");
    require(decoded.size() <= bytes.size(), "each code point stands for one byte at least");
    const std::string encoded = StringUtil::toString(decoded);
    require(isWellFormed(encoded), "what is encoded is well-formed");
    require(StringUtil::toU32String(encoded) == decoded, "decoding again yields the same");
    require(!isWellFormed(bytes) || encoded == bytes, "well-formed text survives both ways");
}

/// Expects that text can be converted in pieces, cut at line feeds: a line feed ends an incomplete sequence.
void checkParting(std::string_view bytes, std::size_t at)
{
    const std::string_view left = bytes.substr(0, at);
    const std::string_view right = bytes.substr(at);
    const std::string whole = std::string(left) + '\n' + std::string(right);
    require(StringUtil::toU32String(whole) ==
                StringUtil::toU32String(left) + U'\n' + StringUtil::toU32String(right),
            "both sides of a line feed are decoded by themselves");
}

void checkEncoding(const std::u32string& values)
{
    std::u32string expected = values;
    std::replace_if(
        expected.begin(), expected.end(), [](char32_t c) { return !isScalarValue(c); }, kReplacement);
    const std::string encoded = StringUtil::toString(values);
    require(isWellFormed(encoded), "any code points are encoded as well-formed text");
    require(StringUtil::toU32String(encoded) == expected, "every scalar value survives, and nothing else");
}

/// Expects that trimming removes only from the ends, and that a second trimming removes nothing.
template <typename Text>
void checkTrimming(const Text& text)
{
    const Text trimmed = StringUtil::trim(text);
    require(text.find(trimmed) != Text::npos, "trimming takes from the ends only");
    require(StringUtil::trim(trimmed) == trimmed, "what is trimmed has nothing left to trim");
}

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace zephyr;
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    fuzz::checkDecoding(text);
    fuzz::checkParting(text, size == 0 ? 0 : bytes[0] % size);
    fuzz::checkTrimming(text);

    std::u32string values(size / sizeof(char32_t), U'\0');
    std::memcpy(values.data(), bytes, values.size() * sizeof(char32_t));
    fuzz::checkEncoding(values);
    fuzz::checkTrimming(values);
    fuzz::checkTrimming(StringUtil::toU32String(text));
    return 0;
}
