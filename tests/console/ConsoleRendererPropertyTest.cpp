#include "support/ComparedRenderers.h"

#include <array>
#include <limits>
#include <random>

namespace zephyr::test {
namespace {

using console::LogEntry;

/// Pseudo-random choices, the same in every run.
class Dice
{
public:
    explicit Dice(std::uint32_t seed) : mEngine(seed) {}

    int upTo(int most) { return static_cast<int>(mEngine() % (static_cast<std::uint32_t>(most) + 1)); }
    bool oneIn(int count) { return upTo(count - 1) == 0; }

    template <typename T, std::size_t Count>
    T oneOf(const std::array<T, Count>& choices)
    {
        return choices[static_cast<std::size_t>(upTo(static_cast<int>(Count) - 1))];
    }

private:
    std::mt19937 mEngine;
};

std::u32string randomText(Dice& dice, int longest)
{
    constexpr std::array<char32_t, 24> kCodePoints{
        U'a',      U'W',      U'g',      U'|',          U'_',      U' ',   U' ',   U'\n',
        U'\n',     U'\t',     U'\r',     U'\0',         U'<',      U'>',   U'&',   U'\u00C5',
        U'\u0301', U'\u0323', U'\u4E2D', U'\U0001F600', U'\u05D0', 0xD800, 0xFFFF, 0x110000};
    std::u32string text(static_cast<std::size_t>(dice.upTo(longest)), U' ');
    for (char32_t& c : text) {
        c = dice.oneOf(kCodePoints);
    }
    return text;
}

LogEntry randomEntry(Dice& dice)
{
    constexpr std::array<console::ConsoleMessageType, 3> kTypes{console::Input, console::Output,
                                                                console::Prompt};
    const int longest = dice.oneIn(4) ? 60 : 12;
    return {randomText(dice, longest), dice.oneOf(kTypes), static_cast<std::uint32_t>(dice.upTo(9))};
}

std::uint32_t randomScroll(Dice& dice, std::size_t entries)
{
    if (dice.oneIn(3)) {
        return 0;
    }
    if (dice.oneIn(12)) {
        return std::numeric_limits<std::uint32_t>::max();
    }
    return static_cast<std::uint32_t>(dice.upTo(static_cast<int>(entries) + 2));
}

void changeView(Dice& dice, ConsoleView& view)
{
    for (int count = dice.upTo(5); count > 0; --count) {
        view.log.push_back(randomEntry(dice));
    }
    view.scroll = randomScroll(dice, view.log.size());
    if (dice.oneIn(2)) {
        view.input = randomText(dice, 12);
        view.cursor = static_cast<std::uint32_t>(dice.upTo(14));
    }
}

QImage randomCanvas(Dice& dice)
{
    constexpr std::array<double, 6> kRatios{1.0, 1.0, 0.75, 1.25, 1.5, 2.0};
    return scene(QSize(1 + dice.upTo(150), 1 + dice.upTo(250)), dice.oneOf(kRatios));
}

std::shared_ptr<QFont> randomFont(Dice& dice)
{
    const std::array<QString, 4> families{QStringLiteral("Consolas"), QStringLiteral("DejaVu Sans"),
                                          QStringLiteral("DejaVu Sans Mono"), QStringLiteral("DejaVu Serif")};
    auto font = std::make_shared<QFont>(dice.oneOf(families));
    font->setPointSizeF(6.0 + dice.upTo(20) / 2.0);
    font->setItalic(dice.oneIn(4));
    font->setBold(dice.oneIn(4));
    return font;
}

PainterSetUp randomTransformation(Dice& dice)
{
    const double scale = 0.5 + dice.upTo(4) / 4.0;
    const double angle = dice.oneIn(3) ? dice.upTo(360) : 0.0;
    const double dy = dice.upTo(400) - 350.0;
    return [scale, angle, dy](QPainter& p) {
        p.rotate(angle);
        p.scale(scale, scale);
        p.translate(0.0, dy);
    };
}

/// Draws a random log as it grows, each frame on a canvas of its own.
void compareFrames(Dice& dice, bool transformed)
{
    constexpr int kFrames = 5;
    ComparedRenderers renderers;
    ConsoleView view{.font = randomFont(dice)};
    for (int frame = 0; frame < kFrames; ++frame) {
        changeView(dice, view);
        const QImage canvas = randomCanvas(dice);
        const PainterSetUp setUp = transformed ? randomTransformation(dice) : PainterSetUp();
        ASSERT_TRUE(renderers.agreeOn(view, canvas, dice.upTo(40) / 100.0, setUp)) << "in frame " << frame;
    }
}

constexpr std::uint32_t kLogs = 200;

TEST(ConsoleRendererProperty, DrawsWhatThePlainRendererDrawsWhileAnyLogGrows)
{
    for (std::uint32_t seed = 0; seed < kLogs; ++seed) {
        Dice dice(seed);
        ASSERT_NO_FATAL_FAILURE(compareFrames(dice, false)) << "of the log with seed " << seed;
    }
}

TEST(ConsoleRendererProperty, DrawsWhatThePlainRendererDrawsUnderAnyTransformation)
{
    for (std::uint32_t seed = 0; seed < kLogs; ++seed) {
        Dice dice(seed);
        ASSERT_NO_FATAL_FAILURE(compareFrames(dice, true)) << "of the log with seed " << seed;
    }
}

} // namespace
} // namespace zephyr::test
