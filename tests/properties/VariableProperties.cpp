#include "support/TemporaryDirectory.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/commands/GlmValues.h"
#include "zephyr/console/commands/QtValues.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/commands/Variable.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h> // needs the header above

#include <array>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <limits>

namespace zephyr::console::commands {
namespace {

enum class Weather
{
    Sun,
    Rain
};

std::vector<EnumName<Weather>> enumNames(Weather)
{
    return {{Weather::Sun, U"sun"}, {Weather::Rain, U"light rain"}};
}

/// Any bits, so that limits, zeros, infinities and the tiniest numbers come up.
template <typename T>
T anyBits()
{
    T value{};
    if (*rc::gen::inRange(0, 4) == 0) {
        const T special[] = {T(0),
                             T(-T(0)),
                             std::numeric_limits<T>::max(),
                             std::numeric_limits<T>::lowest(),
                             std::numeric_limits<T>::min(),
                             std::numeric_limits<T>::denorm_min(),
                             std::numeric_limits<T>::infinity()};
        return special[*rc::gen::inRange<std::size_t>(0, std::size(special))];
    }
    const auto bytes =
        *rc::gen::container<std::array<unsigned char, sizeof(T)>>(rc::gen::arbitrary<unsigned char>());
    std::memcpy(&value, bytes.data(), sizeof(T));
    return value;
}

char32_t anyCodePoint()
{
    const char32_t telling[] = {U'"',  U' ',  U'/',   U'=',   U'>', U'\\', U'\n',
                                U'\r', U'\0', 0xFFFF, 0xFEFF, 0x85, 0x2028};
    switch (*rc::gen::inRange(0, 3)) {
    case 0: return telling[*rc::gen::inRange<std::size_t>(0, std::size(telling))];
    case 1: return static_cast<char32_t>(*rc::gen::inRange(0x20, 0x7F));
    default: return static_cast<char32_t>(*rc::gen::arbitrary<std::uint32_t>());
    }
}

std::u32string anyText()
{
    std::u32string text(*rc::gen::inRange<std::size_t>(0, 12), U' ');
    for (char32_t& c : text) {
        c = anyCodePoint();
    }
    return text;
}

/// Text that UTF-8 can hold.
std::string anyUtf8() { return StringUtil::toString(anyText()); }

template <typename T>
bool same(const T& left, const T& right)
{
    if constexpr (std::is_floating_point_v<T>) {
        return Value<T>::write(left) == Value<T>::write(right) &&
               (left == right || (left != left && right != right));
    } else {
        return left == right;
    }
}

/// Sets a variable to `value`, saves it, changes it, runs the file, and expects the value again.
template <typename T>
void expectRestored(const T& value, const T& byDefault)
{
    const test::TemporaryDirectory directory;
    const std::string file = (directory.path() / "vars.console").string();
    Console console;
    addVars(console);
    Variable<T> variable(console, U"variable", byDefault, U"");
    variable.set(value);
    console.execute(U"vars save " + StringUtil::toU32String(file));
    variable.reset();
    RC_ASSERT(console.runFile(file));
    if (Value<T>::write(value) != Value<T>::write(byDefault)) {
        RC_ASSERT(same(variable.value(), value));
    }
}

RC_GTEST_PROP(VariableProperties, EveryNumberIsRestored, ())
{
    expectRestored(*rc::gen::arbitrary<bool>(), false);
    expectRestored(*rc::gen::arbitrary<signed char>(), static_cast<signed char>(0));
    expectRestored(*rc::gen::arbitrary<std::int64_t>(), std::int64_t{0});
    expectRestored(*rc::gen::arbitrary<std::uint64_t>(), std::uint64_t{0});
    expectRestored(std::numeric_limits<std::int64_t>::min(), std::int64_t{0});
    expectRestored(anyBits<float>(), 0.0F);
    expectRestored(anyBits<double>(), 0.0);
    expectRestored(static_cast<long double>(anyBits<double>()) / 3, 0.0L);
}

RC_GTEST_PROP(VariableProperties, EveryTextIsRestored, ())
{
    expectRestored(anyCodePoint(), U'a');
    expectRestored(anyText(), std::u32string(U"a"));
    expectRestored(anyUtf8(), std::string("a"));
    expectRestored(std::filesystem::path(anyUtf8()), std::filesystem::path("a"));
    expectRestored(QString::fromStdString(anyUtf8()), QString("a"));
    expectRestored(*rc::gen::element(Weather::Sun, Weather::Rain), Weather::Sun);
}

RC_GTEST_PROP(VariableProperties, EveryDurationIsRestored, ())
{
    expectRestored(std::chrono::milliseconds(*rc::gen::arbitrary<std::int64_t>()),
                   std::chrono::milliseconds(0));
    expectRestored(std::chrono::minutes(*rc::gen::arbitrary<int>()), std::chrono::minutes(0));
    using Frames = std::chrono::duration<int, std::ratio<1, 60>>;
    expectRestored(Frames(*rc::gen::arbitrary<int>()), Frames(0));
    const double seconds = anyBits<double>();
    RC_PRE(seconds == seconds);
    expectRestored(std::chrono::duration<double>(seconds), std::chrono::duration<double>(0));
}

RC_GTEST_PROP(VariableProperties, EveryValueOfQtAndGlmIsRestored, ())
{
    const auto any = [] { return *rc::gen::arbitrary<int>(); };
    expectRestored(QPoint(any(), any()), QPoint());
    expectRestored(QSize(any(), any()), QSize());
    const auto channel = [] { return static_cast<ushort>(*rc::gen::arbitrary<std::uint16_t>()); };
    expectRestored(QColor::fromRgba64(channel(), channel(), channel(), channel()), QColor(Qt::black));
    expectRestored(glm::ivec3(any(), any(), any()), glm::ivec3(0));
    const glm::dvec2 vector(anyBits<double>(), anyBits<double>());
    RC_PRE(vector == vector);
    expectRestored(vector, glm::dvec2(0));
}

} // namespace
} // namespace zephyr::console::commands
