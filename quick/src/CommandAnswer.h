#ifndef ZEPHYR_CONSOLE_QUICK_COMMANDANSWER_H
#define ZEPHYR_CONSOLE_QUICK_COMMANDANSWER_H

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::quick {

/// What a Command's `onRun` writes its answer to. It may be kept for an answer that comes later, as long as the Command
/// lives.
class CommandAnswer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The signal run() of a Command passes one.")

public:
    /// Writes to `console` as long as that exists.
    explicit CommandAnswer(std::weak_ptr<Console> console);

    /// Writes each line of `text` to the log, indented by four spaces like other answers.
    Q_INVOKABLE void write(const QString& text);

private:
    const std::weak_ptr<Console> mConsole;
};

} // namespace zephyr::console::quick

#endif
