#include "Command.h"

#include "ConsoleOverlay.h"
#include "DeclaredCommands.h"
#include "ScriptErrors.h"

#include <QQmlEngine>
#include <QQmlInfo>

#include <algorithm>
#include <utility>

namespace zephyr::console::quick {

namespace {

ConsoleOverlay* overlayAround(const QObject& object)
{
    ConsoleOverlay* overlay = nullptr;
    for (QObject* outer = object.parent(); outer != nullptr && overlay == nullptr; outer = outer->parent()) {
        overlay = qobject_cast<ConsoleOverlay*>(outer);
    }
    return overlay;
}

} // namespace

Command::Command(QObject* parent) : QObject(parent) {}

Command::~Command() { leave(); }

void Command::setName(const QString& name)
{
    if (name != mName) {
        mName = name;
        enroll();
        emit nameChanged();
    }
}

void Command::setDescription(const QString& description)
{
    if (description != mDescription) {
        mDescription = description;
        enroll();
        emit descriptionChanged();
    }
}

void Command::setUsage(const QString& usage)
{
    if (usage != mUsage) {
        mUsage = usage;
        enroll();
        emit usageChanged();
    }
}

void Command::setCandidates(const QJSValue& candidates)
{
    if (!candidates.isCallable() && !candidates.isUndefined() && !candidates.isNull()) {
        qmlWarning(this) << "candidates must be a function";
        return;
    }
    mCandidates = candidates;
    emit candidatesChanged();
}

void Command::setHandle(ConsoleHandle* handle)
{
    if (handle != mHandle) {
        mHandle = handle;
        enroll();
        emit handleChanged();
    }
}

void Command::componentComplete()
{
    mIsComplete = true;
    if (const ConsoleOverlay* overlay = overlayAround(*this)) {
        connect(overlay, &ConsoleOverlay::consoleChanged, this, &Command::enroll);
    }
    enroll();
}

/// Makes the command known under its present name, and under no other, to the console that it belongs to now.
void Command::enroll()
{
    leave();
    if (!mIsComplete) {
        return;
    }
    if (!hasUsableName()) {
        qmlWarning(this) << "the name of a Command must be one word, and is \"" + mName + "\"";
        return;
    }
    const ConsoleHandle* const handle = usedHandle();
    if (handle == nullptr) {
        qmlWarning(this) << "a Command must be inside a ConsoleOverlay or have a handle";
        return;
    }
    mCommands = DeclaredCommands::of(*handle);
    mAnswer = std::make_shared<CommandAnswer>(handle->console());
    mCommands->add(*this, mName);
}

void Command::leave()
{
    if (const std::shared_ptr<DeclaredCommands> commands = std::exchange(mCommands, nullptr)) {
        commands->remove(*this);
    }
}

ConsoleHandle* Command::usedHandle() const
{
    if (!mHandle.isNull()) {
        return mHandle;
    }
    ConsoleOverlay* const overlay = overlayAround(*this);
    return overlay == nullptr ? nullptr : overlay->handle();
}

bool Command::hasUsableName() const
{
    return !mName.isEmpty() && std::none_of(mName.begin(), mName.end(), [](QChar c) { return c.isSpace(); });
}

void Command::runWith(const QStringList& words)
{
    if (!mCommands) {
        return;
    }
    const std::shared_ptr<CommandAnswer> answer = mAnswer;
    const ScriptErrors errors(qmlEngine(this), mCommands);
    emit run(words, answer.get());
    errors.throwFirst();
}

QStringList Command::candidatesFor(const QStringList& words)
{
    QJSEngine* const engine = qmlEngine(this);
    if (engine == nullptr || !mCandidates.isCallable()) {
        return {};
    }
    const QJSValue result = QJSValue(mCandidates).call({engine->toScriptValue(words)});
    ScriptErrors::throwIfError(result);
    return result.toVariant().toStringList();
}

} // namespace zephyr::console::quick
