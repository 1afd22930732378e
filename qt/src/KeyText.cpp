#include "KeyText.h"

#include "zephyr/console/qt/KeyTraits.h"

#include <QChar>
#include <QKeyEvent>

#include <algorithm>

namespace zephyr::console::qt {

namespace {

#ifdef Q_OS_MACOS
constexpr bool kAltTypes = true;
#else
constexpr bool kAltTypes = false;
#endif

bool isCommand(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    const bool isControl = modifiers.testFlag(Qt::ControlModifier);
    const bool isAlt = modifiers.testFlag(Qt::AltModifier);
    const bool isMnemonic = isAlt && !isControl && !kAltTypes && !hasAltGr(event);
    return isMnemonic || (isControl && !isAlt) || modifiers.testFlag(Qt::MetaModifier);
}

} // namespace

std::u32string typedText(const QString& text)
{
    std::u32string typed = text.toStdU32String();
    const auto isControl = [](char32_t c) { return QChar::category(c) == QChar::Other_Control; };
    typed.erase(std::remove_if(typed.begin(), typed.end(), isControl), typed.end());
    return typed;
}

std::u32string typedText(const QKeyEvent& event)
{
    return isCommand(event) ? std::u32string() : typedText(event.text());
}

} // namespace zephyr::console::qt
