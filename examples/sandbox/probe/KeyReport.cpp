#include "sandbox/probe/KeyReport.h"

#include "zephyr/console/qt/KeyTraits.h"
#include "zephyr/console/qt/ToggleKeys.h"

#include <QKeyEvent>
#include <QMetaEnum>
#include <QStringList>

#include <array>
#include <utility>

namespace zephyr::sandbox {

using console::qt::hasAltGr;
using console::qt::isDeadKey;
using console::qt::ToggleKeys;

namespace {

constexpr char kPress[] = "press: %1: %2";
constexpr char kStrayRelease[] = "release whose press went elsewhere: %1: %2";
constexpr char kCommit[] = "commit: text %1";
constexpr char kKey[] = "key %1 (0x%2), text %3, modifiers %4, scan code %5";
constexpr char kToggles[] = "toggles the console";
constexpr char kDoesNotToggle[] = "does not toggle the console";
constexpr char kUnnamed[] = "without a name";
constexpr char kNoModifiers[] = "none";

QString hex(quint32 value, int digits) { return QString::number(value, 16).rightJustified(digits, '0'); }

QString escaped(char32_t c)
{
    if (c == U'"' || c == U'\\') {
        return '\\' + QString(QChar(c));
    }
    if (c >= U' ' && c < U'\x7f') {
        return QChar(c);
    }
    return c < 0x10000 ? "\\u" + hex(c, 4) : "\\U" + hex(c, 8);
}

/// `text` in quotes, with escapes for characters that aren't printable ASCII.
QString quoted(const QString& text)
{
    QString quoted = "\"";
    for (const char32_t c : text.toStdU32String()) {
        quoted += escaped(c);
    }
    return quoted + '"';
}

QString keyName(int key)
{
    const char* const name = QMetaEnum::fromType<Qt::Key>().valueToKey(key);
    return name != nullptr ? name : kUnnamed;
}

QString modifierNames(const QKeyEvent& event)
{
    constexpr std::array kNames{
        std::pair(Qt::ShiftModifier, "Shift"),   std::pair(Qt::ControlModifier, "Ctrl"),
        std::pair(Qt::AltModifier, "Alt"),       std::pair(Qt::MetaModifier, "Meta"),
        std::pair(Qt::KeypadModifier, "Keypad"), std::pair(Qt::GroupSwitchModifier, "GroupSwitch")};
    QStringList names;
    for (const auto& [modifier, name] : kNames) {
        if (event.modifiers().testFlag(modifier)) {
            names += name;
        }
    }
    if (hasAltGr(event)) {
        names += "AltGr";
    }
    return names.isEmpty() ? kNoModifiers : names.join('+');
}

QString keyReport(const QKeyEvent& event)
{
    return QString(kKey).arg(keyName(event.key()), hex(static_cast<quint32>(event.key()), 0),
                             quoted(event.text()), modifierNames(event),
                             QString::number(event.nativeScanCode()));
}

const char* toggleReport(bool toggles) { return toggles ? kToggles : kDoesNotToggle; }

} // namespace

QString pressReport(const QKeyEvent& event)
{
    return QString(kPress).arg(keyReport(event), toggleReport(ToggleKeys().matches(event)));
}

QString strayReleaseReport(const QKeyEvent& event)
{
    const bool toggles = isDeadKey(event.key()) && ToggleKeys().matches(event);
    return QString(kStrayRelease).arg(keyReport(event), toggleReport(toggles));
}

QString commitReport(const QString& text) { return QString(kCommit).arg(quoted(text)); }

} // namespace zephyr::sandbox
