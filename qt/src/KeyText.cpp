#include "KeyText.h"

#include <QChar>
#include <QKeyEvent>

#include <algorithm>

namespace zephyr::console::qt {

std::u32string typedText(const QString& text)
{
    std::u32string typed = text.toStdU32String();
    const auto isControl = [](char32_t c) { return QChar::category(c) == QChar::Other_Control; };
    typed.erase(std::remove_if(typed.begin(), typed.end(), isControl), typed.end());
    return typed;
}

std::u32string typedText(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    const bool isCommand = modifiers.testFlag(Qt::ControlModifier) && !modifiers.testFlag(Qt::AltModifier);
    return isCommand || modifiers.testFlag(Qt::MetaModifier) ? std::u32string() : typedText(event.text());
}

} // namespace zephyr::console::qt
