// Compares how words are read as switches with a plain version of the same rules.

#include "Require.h"
#include "zephyr/console/ConsoleArgs.h"
#include "zephyr/console/ConsoleSwitchArg.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::fuzz {
namespace {

constexpr char32_t kMask = 0xFFFF;

char32_t codePoint(FuzzedDataProvider& data)
{
    constexpr char32_t kTelling[] = {U'/', U'=', U'"', U' ', U'a', U'\0', kMask};
    return data.ConsumeIntegralInRange(0, 4) > 0 ? data.PickValueInArray(kTelling)
                                                 : data.ConsumeIntegral<std::uint32_t>();
}

std::u32string word(FuzzedDataProvider& data)
{
    std::u32string result(data.ConsumeIntegralInRange<std::size_t>(0, 16), U'a');
    for (char32_t& c : result) {
        c = codePoint(data);
    }
    return result;
}

/// The first two parts of a switch, read one code point at a time.
std::pair<std::u32string, std::u32string> plainlyRead(const std::u32string& word)
{
    std::u32string parts[3];
    if (word.empty() || word.front() != U'/') {
        return {};
    }
    std::size_t part = 0;
    bool quoted = false;
    for (const char32_t c : word) {
        if (c == U'"') {
            quoted = !quoted;
        } else if (c == U'=' && !quoted) {
            part = part < 2 ? part + 1 : 2;
        } else {
            parts[part] += quoted && c == kMask ? U'=' : c; // a literal mask reads like a masked `=`
        }
    }
    return {parts[0], parts[1]};
}

void checkSwitch(const console::ConsoleArgs& args, unsigned which)
{
    const console::ConsoleSwitchArg read(args, which);
    const auto [name, value] =
        which < args.argCount() ? plainlyRead(args.arg(which)) : std::pair<std::u32string, std::u32string>();
    require(read.switchArg() == name, "the switch is what stands before the first equals sign");
    require(read.value() == value, "the value is what stands before the second equals sign");
}

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace zephyr;
    FuzzedDataProvider data(bytes, size);
    std::vector<std::u32string> words(data.ConsumeIntegralInRange<std::size_t>(0, 5));
    for (std::u32string& word : words) {
        word = fuzz::word(data);
    }
    const console::ConsoleArgs args(std::move(words));
    for (unsigned which = 0; which < args.argCount() + 2; ++which) {
        fuzz::checkSwitch(args, which);
    }
    fuzz::checkSwitch(args, 0xFFFFFFFF);
    return 0;
}
