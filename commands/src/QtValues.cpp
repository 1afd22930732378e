#include "zephyr/console/commands/QtValues.h"

#include "zephyr/console/commands/GlmValues.h"

#include <QRgba64>

#include <array>

namespace zephyr::console::commands {

namespace {

constexpr std::size_t kLongColour = 17; // `#` and four channels of four digits
constexpr int kHexadecimal = 16;
constexpr int kChannelDigits = 4;

template <typename Number>
struct Two
{
    Number first;
    Number second;
};

template <typename Number>
std::optional<Two<Number>> readTwo(const std::u32string& text, char32_t separator)
{
    const std::vector<std::u32string> both = detail::parts(text, 2, separator);
    if (both.empty()) {
        return std::nullopt;
    }
    const std::optional<Number> first = Value<Number>::read(both[0]);
    const std::optional<Number> second = Value<Number>::read(both[1]);
    return first && second ? std::optional(Two<Number>{*first, *second}) : std::nullopt;
}

template <typename Number>
std::u32string writeTwo(Number first, char32_t separator, Number second)
{
    return Value<Number>::write(first) + separator + Value<Number>::write(second);
}

std::optional<QColor> readLongColour(const QString& text)
{
    std::array<quint16, 4> channels{};
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const qsizetype at = 1 + static_cast<qsizetype>(i) * kChannelDigits;
        bool isNumber = false;
        channels[i] = text.mid(at, kChannelDigits).toUShort(&isNumber, kHexadecimal);
        if (!isNumber) {
            return std::nullopt;
        }
    }
    return QColor::fromRgba64(channels[1], channels[2], channels[3], channels[0]);
}

QString digits(quint16 channel)
{
    return QStringLiteral("%1").arg(channel, kChannelDigits, kHexadecimal, QLatin1Char('0'));
}

} // namespace

std::vector<std::u32string> detail::parts(const std::u32string& text, std::size_t count, char32_t separator)
{
    std::vector<std::u32string> result;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::u32string::npos;
         end = text.find(separator, begin)) {
        result.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    result.push_back(text.substr(begin));
    return result.size() == count ? result : std::vector<std::u32string>();
}

/// \cond SPECIALISATIONS The members are as Value says.

std::optional<QString> Value<QString>::read(const std::u32string& text)
{
    return QString::fromStdU32String(text);
}
std::u32string Value<QString>::write(const QString& value) { return value.toStdU32String(); }

std::optional<QColor> Value<QColor>::read(const std::u32string& text)
{
    const QString name = QString::fromStdU32String(text);
    if (text.size() == kLongColour && text.front() == U'#') {
        return readLongColour(name);
    }
    const QColor color = QColor::fromString(name);
    return color.isValid() ? std::optional(color) : std::nullopt;
}

std::u32string Value<QColor>::write(const QColor& value)
{
    if (!value.isValid()) {
        return {};
    }
    const QRgba64 exact = value.rgba64();
    if (QColor::fromRgba(value.rgba()).rgba64() == exact) {
        return value.name(value.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb).toStdU32String();
    }
    const QString text =
        digits(exact.alpha()) + digits(exact.red()) + digits(exact.green()) + digits(exact.blue());
    return U'#' + text.toStdU32String();
}

std::vector<std::u32string> Value<QColor>::candidates()
{
    std::vector<std::u32string> names;
    for (const QString& name : QColor::colorNames()) {
        names.push_back(name.toStdU32String());
    }
    return names;
}

std::optional<QPoint> Value<QPoint>::read(const std::u32string& text)
{
    const auto both = readTwo<int>(text, U',');
    return both ? std::optional(QPoint(both->first, both->second)) : std::nullopt;
}

std::u32string Value<QPoint>::write(QPoint value) { return writeTwo(value.x(), U',', value.y()); }

std::optional<QPointF> Value<QPointF>::read(const std::u32string& text)
{
    const auto both = readTwo<qreal>(text, U',');
    return both ? std::optional(QPointF(both->first, both->second)) : std::nullopt;
}

std::u32string Value<QPointF>::write(QPointF value) { return writeTwo(value.x(), U',', value.y()); }

std::optional<QSize> Value<QSize>::read(const std::u32string& text)
{
    const auto both = readTwo<int>(text, U'x');
    return both ? std::optional(QSize(both->first, both->second)) : std::nullopt;
}

std::u32string Value<QSize>::write(QSize value) { return writeTwo(value.width(), U'x', value.height()); }

std::optional<QSizeF> Value<QSizeF>::read(const std::u32string& text)
{
    const auto both = readTwo<qreal>(text, U'x');
    return both ? std::optional(QSizeF(both->first, both->second)) : std::nullopt;
}

std::u32string Value<QSizeF>::write(QSizeF value) { return writeTwo(value.width(), U'x', value.height()); }

/// \endcond

} // namespace zephyr::console::commands
