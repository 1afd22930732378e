#include "KeyText.h"

#include <QChar>

#include <algorithm>

namespace zephyr::console::qt {

std::u32string typedText(const QString& text)
{
    std::u32string typed = text.toStdU32String();
    const auto isControl = [](char32_t c) { return QChar::category(c) == QChar::Other_Control; };
    typed.erase(std::remove_if(typed.begin(), typed.end(), isControl), typed.end());
    return typed;
}

} // namespace zephyr::console::qt
