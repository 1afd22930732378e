#ifndef ZEPHYR_CONSOLE_QUICK_SCRIPTERRORS_H
#define ZEPHYR_CONSOLE_QUICK_SCRIPTERRORS_H

#include <QList>
#include <QObject>
#include <QQmlError>
#include <QString>

#include <exception>
#include <memory>

class QJSValue;
class QQmlEngine;

namespace zephyr::console::quick {

class DeclaredCommands;

/// Hears of the exceptions that signal handlers of QML let out while this object is on the stack: QML's engine has no
/// other way to tell of them. Of nested objects the innermost hears them alone.
class ScriptErrors
{
public:
    /// `engine` may be null, if the command is not QML's.
    ScriptErrors(QQmlEngine* engine, std::shared_ptr<DeclaredCommands> commands);
    ~ScriptErrors();

    ScriptErrors(const ScriptErrors&) = delete;
    ScriptErrors& operator=(const ScriptErrors&) = delete;

    /// Throws `exception` in the script that is running, which may catch it.
    void passOn(const std::exception_ptr& exception);

    /// Throws the exception that was heard of first, if any: as it was if it was passed on, else as a
    /// `std::runtime_error` that names file, line and error.
    void throwFirst() const;

    /// Throws the same if `result`, which a function of a script returned, is an exception.
    static void throwIfError(const QJSValue& result);

private:
    void note(const QList<QQmlError>& errors);

    const std::shared_ptr<DeclaredCommands> mCommands;
    ScriptErrors* const mOuter;
    QQmlEngine* const mEngine;
    QString mFirst;
    QString mPassedOnText;
    std::exception_ptr mPassedOn;
    QObject mConnection; // ends with this object
};

} // namespace zephyr::console::quick

#endif
