#ifndef ZEPHYR_CONSOLE_QT_INPUTMETHOD_H
#define ZEPHYR_CONSOLE_QT_INPUTMETHOD_H

#include <QRectF>
#include <QString>

#include <string>

class QInputMethodQueryEvent;

namespace zephyr::console::qt {

class HostedObject;

/// The platform's input method, as far as it serves the console. Its events come to the object that has the focus,
/// whichever that is, and are answered in that object's place.
class InputMethod
{
public:
    /// What an open console answers.
    struct Answers
    {
        bool isWanted;           ///< Whether keys are to be composed.
        std::u32string input;    ///< The input line.
        std::size_t cursor;      ///< In code points from the line's start; may lie past its end.
        QRectF cursorRectangle;  ///< On the screen, in logical pixels.
        QRectF consoleRectangle; ///< On the screen, in logical pixels.
    };

    explicit InputMethod(const HostedObject& object);

    /// Whether the object that has the focus wants the input method.
    static bool isOn();

    /// Answers everything that `query` asks.
    void answer(QInputMethodQueryEvent& query, const Answers& answers) const;

    /// Has the input method discard what is being composed and ask again whether it is wanted.
    void restart() const;

    /// Tells the input method that the line or its cursor changed.
    void update() const;

private:
    bool servesWindow() const;
    QRectF inFocusObject(const QRectF& onScreen) const;

    const HostedObject& mObject;
};

/// What a commit replaces: `length` code points from the code point `first` on.
struct ReplacedText
{
    std::size_t first;
    std::size_t length;
};

/// Converts a commit's replacement, which counts UTF-16 code units from the cursor, to code points of `input`. What
/// reaches beyond the line is cut.
ReplacedText replacedText(const std::u32string& input, std::size_t cursor, int start, int length);

} // namespace zephyr::console::qt

#endif
