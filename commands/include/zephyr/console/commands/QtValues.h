#ifndef ZEPHYR_CONSOLE_COMMANDS_QTVALUES_H
#define ZEPHYR_CONSOLE_COMMANDS_QTVALUES_H

#include "zephyr/console/commands/Registration.h"
#include "zephyr/console/commands/Value.h"

#include <QColor>
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QSize>
#include <QSizeF>
#include <QString>

#include <memory>

namespace zephyr::console::commands {

/// Any text.
template <>
struct Value<QString>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"text";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<QString> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(const QString& value);
    /// \endcond
};

/// `#rrggbb`, `#aarrggbb`, or a name such as `steelblue`. A colour that isn't of 8 bits a channel is written as
/// `#aaaarrrrggggbbbb`. All colours are read as RGB. An invalid colour is no value: it is written as an empty text, which
/// isn't read, and so `vars save` refuses it.
template <>
struct Value<QColor>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"colour";
    static constexpr std::u32string_view kExample = U"#4682b4 or steelblue";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<QColor> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(const QColor& value);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::vector<std::u32string> candidates();
    /// \endcond
};

/// `x,y`.
template <>
struct Value<QPoint>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"point";
    static constexpr std::u32string_view kExample = U"3,-4";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<QPoint> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(QPoint value);
    /// \endcond
};

/// `x,y`.
template <>
struct Value<QPointF>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"point";
    static constexpr std::u32string_view kExample = U"3,-4";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<QPointF> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(QPointF value);
    /// \endcond
};

/// `640x480`.
template <>
struct Value<QSize>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"size";
    static constexpr std::u32string_view kExample = U"640x480";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<QSize> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(QSize value);
    /// \endcond
};

/// `1.5x2`.
template <>
struct Value<QSizeF>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    static constexpr std::u32string_view kName = U"size";
    static constexpr std::u32string_view kExample = U"640x480";
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::optional<QSizeF> read(const std::u32string& text);
    ZEPHYR_CONSOLE_COMMANDS_EXPORT static std::u32string write(QSizeF value);
    /// \endcond
};

/// Removes a command when `owner` is destroyed, which must be on the console's thread.
inline void bindTo(const QObject* owner, Added added)
{
    auto bound = std::make_shared<Registration>(std::move(added));
    QObject::connect(owner, &QObject::destroyed, [bound] { bound->remove(); });
}

} // namespace zephyr::console::commands

#endif
