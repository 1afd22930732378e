#include "zephyr/console/qt/ToggleKeys.h"

#include "zephyr/console/qt/KeyTraits.h"

#include <QKeyEvent>

namespace zephyr::console::qt {

namespace {

constexpr Qt::KeyboardModifiers kShortcutModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
constexpr Qt::KeyboardModifiers kModifiers = Qt::ShiftModifier | kShortcutModifiers;

bool isPlain(const QKeyEvent& event) { return (event.modifiers() & kModifiers) == 0 && !hasAltGr(event); }

bool isShortcut(const QKeyEvent& event) { return (event.modifiers() & kShortcutModifiers) != 0; }

bool isShiftEscape(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Escape && (event.modifiers() & kModifiers) == Qt::ShiftModifier;
}

} // namespace

ToggleKeys::ToggleKeys() : ToggleKeys({Qt::Key_QuoteLeft}, {kKeyLeftOfOne}) {}

ToggleKeys::ToggleKeys(const QSet<int>& keys, const QSet<quint32>& scanCodes)
    : mKeys(keys), mScanCodes(scanCodes)
{}

bool ToggleKeys::typesWhileOpen(const QKeyEvent& event) const
{
    if (isShiftEscape(event) || mKeys.contains(event.key())) {
        return false;
    }
    const QString text = event.text();
    const QChar typed = text.isEmpty() ? QChar() : text.front();
    const bool isPlain = typed.decompositionTag() == QChar::NoDecomposition ||
                         typed.decompositionTag() == QChar::Canonical; // and not raised, nor a fraction
    return (typed.isLetterOrNumber() && isPlain) || typed == u';';
}

bool ToggleKeys::matches(const QKeyEvent& event) const
{
    return isShiftEscape(event) || (mKeys.contains(event.key()) && !isShortcut(event)) ||
           (mScanCodes.contains(event.nativeScanCode()) && isPlain(event));
}

} // namespace zephyr::console::qt
