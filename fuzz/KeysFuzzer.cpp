// Drives one console with keys, modifiers, texts, wheel turns, window sizes, the clipboard, lines, opening and closing,
// in any order.

#include "FuzzedConsole.h"
#include "Require.h"
#include "support/KeyTable.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace zephyr::fuzz {
namespace {

using console::Console;

constexpr int kMostSteps = 150;
constexpr std::array<const char32_t*, 18> kWords{U"say",  U"many", U"fail", U"pick",  U"nest",   U"press",
                                                 U"swap", U"quit", U"run",  U"alias", U"reopen", U"help",
                                                 U"*",    U">",    U">!",   U"out",   U"list",   U"\"a b\""};

/// A code point, usually a small one, or a value that is none. Never a slash: a typed line can redirect, and must
/// not write outside the current directory.
char32_t codePoint(FuzzedDataProvider& data)
{
    const char32_t value = data.ConsumeBool() ? data.ConsumeIntegralInRange<std::uint32_t>(U' ', U'z')
                                              : data.ConsumeIntegral<std::uint32_t>();
    return value == U'/' ? U'|' : value;
}

std::u32string text(FuzzedDataProvider& data, std::size_t longest)
{
    std::u32string result(data.ConsumeIntegralInRange<std::size_t>(0, longest), U'x');
    for (char32_t& c : result) {
        c = codePoint(data);
    }
    return result;
}

std::u32string line(FuzzedDataProvider& data)
{
    std::u32string result;
    for (int words = data.ConsumeIntegralInRange(1, 5); words > 0; --words) {
        result += data.ConsumeIntegralInRange(0, 3) == 0 ? text(data, 4) : data.PickValueInArray(kWords);
        result += words > 1 ? U" " : U"";
    }
    return result;
}

void type(Console& console, const std::u32string& typed)
{
    for (const char32_t c : typed) {
        console.keyPressed(test::KeyA, 0, std::u32string(1, c));
    }
}

void pressAnyKey(Console& console, FuzzedDataProvider& data)
{
    const int key = data.ConsumeBool() ? data.PickValueInArray(test::kKeys) : data.ConsumeIntegral<int>();
    const int modifiers = data.ConsumeBool() ? test::kControl : data.ConsumeIntegral<int>();
    const bool wasOpen = console.isOpen();
    const std::u32string typed = text(data, 2);
    const bool consumed = console.keyPressed(key, modifiers, typed);
    if (!wasOpen) {
        require(consumed == (key == test::KeyBackQuote), "a closed console takes the back-quote only");
    } else if (key != test::KeyTab && key != test::KeyBacktab) {
        require(consumed, "an open console takes every key but those that complete");
    }
    require(console.keyReleased(key, modifiers, typed) == console.isOpen(), "a released key changes nothing");
}

void turnWheel(Console& console, FuzzedDataProvider& data)
{
    const double degrees = data.ConsumeBool() ? data.ConsumeFloatingPointInRange<double>(-500.0, 500.0)
                                              : data.ConsumeFloatingPoint<double>();
    require(console.mouseWheel(Angle(degrees), Angle(-degrees)) == console.isOpen(),
            "an open console takes the wheel");
}

void resize(Console& console, FuzzedDataProvider& data)
{
    const auto largest = data.ConsumeBool() ? 2000U : 0xFFFFFFFFU;
    console.setWindowSize(
        {data.ConsumeIntegralInRange(0U, largest), data.ConsumeIntegralInRange(0U, largest)});
}

void fillClipboard(FuzzedDataProvider& data)
{
    const std::u32string copied = text(data, 6);
    QGuiApplication::clipboard()->setText(
        QString::fromUcs4(copied.data(), static_cast<qsizetype>(copied.size())).remove(u'/'));
}

void act(Console& console, FuzzedDataProvider& data)
{
    switch (data.ConsumeIntegralInRange(0, 10)) {
    case 0: return turnWheel(console, data);
    case 1: return resize(console, data);
    case 2: return fillClipboard(data);
    case 3: return console.execute(line(data));
    case 4: return data.ConsumeBool() ? console.open() : console.close();
    case 5: return console.writeIndented(text(data, 8), data.ConsumeIntegralInRange(0U, 50U));
    case 6: return type(console, line(data));
    case 7: return type(console, std::u32string(data.ConsumeIntegralInRange<std::size_t>(0, 2100), U'w'));
    default: return pressAnyKey(console, data);
    }
}

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    zephyr::fuzz::FuzzedConsole fuzzed;
    fuzzed.console().open();
    for (int step = 0; step < zephyr::fuzz::kMostSteps && data.remaining_bytes() > 0; ++step) {
        fuzzed.step([&data](zephyr::console::Console& console) { zephyr::fuzz::act(console, data); });
    }
    return 0;
}
