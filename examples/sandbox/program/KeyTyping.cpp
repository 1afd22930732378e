#include "sandbox/program/KeyTyping.h"

#include <QChar>
#include <QCoreApplication>
#include <QKeyEvent>

#include <string>

namespace zephyr::sandbox {

namespace {

constexpr char kWrittenLineFeed[] = "\\n";
constexpr char kEnterText[] = "\r"; // the text of an Enter key

void pressAndRelease(QObject& window, int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        QCoreApplication::sendEvent(&window, &event);
    }
}

void typeCharacter(QObject& window, char32_t c)
{
    if (c == U'\n') {
        pressAndRelease(window, Qt::Key_Return, Qt::NoModifier, kEnterText);
        return;
    }
    // Qt numbers a letter's key by its capital.
    const int key = static_cast<int>(QChar::toUpper(c));
    const bool isShifted = QChar::isUpper(c);
    pressAndRelease(window, key, isShifted ? Qt::ShiftModifier : Qt::NoModifier, QString::fromUcs4(&c, 1));
}

} // namespace

void typeInto(QObject& window, const QString& text)
{
    const QString keys = QString(text).replace(QLatin1String(kWrittenLineFeed), QLatin1String("\n"));
    for (const char32_t c : keys.toStdU32String()) {
        typeCharacter(window, c);
    }
}

} // namespace zephyr::sandbox
