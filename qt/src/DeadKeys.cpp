#include "DeadKeys.h"

#include <QString>
#include <Qt>

#include <algorithm>
#include <array>
#include <utility>

namespace zephyr::console::qt {

namespace {

/// What a dead key stands for. The accents are those of the Unicode standard.
struct Accent
{
    int key;
    char32_t combining; // follows the letter
    char32_t alone;
};

constexpr std::array kAccents{
    Accent{Qt::Key_Dead_Grave, U'\u0300', U'`'},
    Accent{Qt::Key_Dead_Acute, U'\u0301', U'\u00b4'},
    Accent{Qt::Key_Dead_Circumflex, U'\u0302', U'^'},
    Accent{Qt::Key_Dead_Tilde, U'\u0303', U'~'},
    Accent{Qt::Key_Dead_Macron, U'\u0304', U'\u00af'},
    Accent{Qt::Key_Dead_Breve, U'\u0306', U'\u02d8'},
    Accent{Qt::Key_Dead_Abovedot, U'\u0307', U'\u02d9'},
    Accent{Qt::Key_Dead_Diaeresis, U'\u0308', U'\u00a8'},
    Accent{Qt::Key_Dead_Hook, U'\u0309', U'\u02c0'},
    Accent{Qt::Key_Dead_Abovering, U'\u030a', U'\u02da'},
    Accent{Qt::Key_Dead_Doubleacute, U'\u030b', U'\u02dd'},
    Accent{Qt::Key_Dead_Caron, U'\u030c', U'\u02c7'},
    Accent{Qt::Key_Dead_Horn, U'\u031b', U'\u031b'},
    Accent{Qt::Key_Dead_Belowdot, U'\u0323', U'\u0323'},
    Accent{Qt::Key_Dead_Cedilla, U'\u0327', U'\u00b8'},
    Accent{Qt::Key_Dead_Ogonek, U'\u0328', U'\u02db'},
    Accent{Qt::Key_Dead_Iota, U'\u0345', U'\u037a'},
    Accent{Qt::Key_Dead_Voiced_Sound, U'\u3099', U'\u309b'},
    Accent{Qt::Key_Dead_Semivoiced_Sound, U'\u309a', U'\u309c'},
};

} // namespace

std::u32string DeadKeys::compose(const std::u32string& text)
{
    if (text.empty()) {
        return text;
    }
    const int key = std::exchange(mKey, 0);
    const auto* const accent =
        std::find_if(kAccents.begin(), kAccents.end(), [key](const Accent& a) { return a.key == key; });
    if (accent == kAccents.end()) {
        return text;
    }
    if (text == U" ") {
        return {accent->alone};
    }
    const QString letter = QString::fromStdU32String({text.front(), accent->combining});
    const std::u32string composed = letter.normalized(QString::NormalizationForm_C).toStdU32String();
    return (composed.size() == 1 ? composed : accent->alone + text.substr(0, 1)) + text.substr(1);
}

} // namespace zephyr::console::qt
