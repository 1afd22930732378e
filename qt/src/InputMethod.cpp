#include "InputMethod.h"

#include "Gui.h"
#include "HostedObject.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodQueryEvent>
#include <QTransform>
#include <QWindow>

#include <algorithm>

namespace zephyr::console::qt {

namespace {

constexpr int kPlaces = 2048; // of the input line

/// The first `codePoints` code points of `text`, as Qt counts.
QString head(const std::u32string& text, std::size_t codePoints)
{
    return QString::fromStdU32String(text.substr(0, codePoints));
}

/// The number of code points in the first `units` code units of `text`.
std::size_t codePointsIn(const QString& text, qsizetype units)
{
    return text.first(std::clamp<qsizetype>(units, 0, text.size())).toStdU32String().size();
}

/// The answer to one question, or an invalid value if the console has none.
QVariant answerTo(Qt::InputMethodQuery question, const InputMethod::Answers& answers)
{
    const QString line = QString::fromStdU32String(answers.input);
    const QString before = head(answers.input, answers.cursor);
    switch (question) {
    case Qt::ImEnabled: return answers.isWanted;
    case Qt::ImHints: return static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    case Qt::ImSurroundingText: return line;
    case Qt::ImCursorPosition:
    case Qt::ImAnchorPosition:
    case Qt::ImAbsolutePosition: return static_cast<int>(before.size());
    case Qt::ImTextBeforeCursor: return before;
    case Qt::ImTextAfterCursor: return line.sliced(before.size());
    case Qt::ImCurrentSelection: return QString();
    case Qt::ImMaximumTextLength: return kPlaces;
    case Qt::ImReadOnly: return false;
    case Qt::ImCursorRectangle:
    case Qt::ImAnchorRectangle: return answers.cursorRectangle;
    case Qt::ImInputItemClipRectangle: return answers.consoleRectangle;
    default: return {};
    }
}

} // namespace

InputMethod::InputMethod(const HostedObject& object) : mObject(object) {}

bool InputMethod::isOn() { return QInputMethod::queryFocusObject(Qt::ImEnabled, {}).toBool(); }

void InputMethod::answer(QInputMethodQueryEvent& query, const Answers& answers) const
{
    Answers local = answers;
    local.cursorRectangle = inFocusObject(answers.cursorRectangle);
    local.consoleRectangle = inFocusObject(answers.consoleRectangle);
    const auto asked = static_cast<quint32>(query.queries());
    for (quint32 bit = 1; bit != 0; bit <<= 1U) {
        if ((asked & bit) != 0) {
            const auto question = static_cast<Qt::InputMethodQuery>(bit);
            query.setValue(question, answerTo(question, local));
        }
    }
}

/// Qt takes rectangles as being in the coordinates of the object that has the focus.
QRectF InputMethod::inFocusObject(const QRectF& onScreen) const
{
    const QWindow* const window = mObject.window();
    if (!hasGui() || window == nullptr || onScreen.isNull()) {
        return onScreen;
    }
    const QRectF inWindow(window->mapFromGlobal(onScreen.topLeft()), onScreen.size());
    return QGuiApplication::inputMethod()->inputItemTransform().inverted().mapRect(inWindow);
}

bool InputMethod::servesWindow() const
{
    const QObject* const focused = hasGui() ? QGuiApplication::focusObject() : nullptr;
    return focused != nullptr && mObject.sharesWindowWith(*focused);
}

void InputMethod::restart() const
{
    if (servesWindow()) {
        QGuiApplication::inputMethod()->reset();
        QGuiApplication::inputMethod()->update(Qt::ImQueryAll);
    }
}

void InputMethod::update() const
{
    if (servesWindow()) {
        QGuiApplication::inputMethod()->update(Qt::ImQueryInput);
    }
}

ReplacedText replacedText(const std::u32string& input, std::size_t cursor, int start, int length)
{
    const QString line = QString::fromStdU32String(input);
    const qsizetype from = head(input, cursor).size() + start;
    const std::size_t first = codePointsIn(line, from);
    const std::size_t last = codePointsIn(line, from + std::max(0, length));
    return {first, last - first};
}

} // namespace zephyr::console::qt
