#include "ScriptErrors.h"

#include "DeclaredCommands.h"

#include <QJSValue>
#include <QQmlEngine>

#include <stdexcept>
#include <utility>

namespace zephyr::console::quick {

namespace {

QString textOf(const std::exception_ptr& exception)
{
    try {
        std::rethrow_exception(exception);
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return "unknown exception";
    }
}

} // namespace

ScriptErrors::ScriptErrors(QQmlEngine* engine, std::shared_ptr<DeclaredCommands> commands)
    : mCommands(std::move(commands)), mOuter(std::exchange(mCommands->mErrors, this)), mEngine(engine)
{
    if (engine != nullptr) {
        QObject::connect(engine, &QQmlEngine::warnings, &mConnection,
                         [this](const QList<QQmlError>& errors) { note(errors); });
    }
}

ScriptErrors::~ScriptErrors() { mCommands->mErrors = mOuter; }

void ScriptErrors::note(const QList<QQmlError>& errors)
{
    for (const QQmlError& error : errors) {
        const bool isWarning =
            error.description().startsWith("QML "); // of qmlWarning(), which ends no handler
        if (mCommands->mErrors == this && mFirst.isEmpty() && !isWarning) {
            mFirst = error.toString();
        }
    }
}

void ScriptErrors::passOn(const std::exception_ptr& exception)
{
    mPassedOn = exception;
    mPassedOnText = textOf(exception);
    if (mEngine != nullptr) {
        mEngine->throwError(mPassedOnText);
    }
}

void ScriptErrors::throwFirst() const
{
    if (!mFirst.isEmpty() && mPassedOn && mFirst.endsWith(mPassedOnText)) {
        std::rethrow_exception(mPassedOn);
    }
    if (!mFirst.isEmpty()) {
        throw std::runtime_error(mFirst.toStdString());
    }
}

void ScriptErrors::throwIfError(const QJSValue& result)
{
    if (result.isError()) {
        const QString place =
            result.property("fileName").toString() + ':' + result.property("lineNumber").toString();
        throw std::runtime_error((place + ": " + result.toString()).toStdString());
    }
}

} // namespace zephyr::console::quick
