#ifndef ZEPHYR_CONSOLE_QUICK_COMMAND_H
#define ZEPHYR_CONSOLE_QUICK_COMMAND_H

#include "CommandAnswer.h"
#include "zephyr/console/quick/ConsoleHandle.h"

#include <QJSValue>
#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace zephyr::console::quick {

class DeclaredCommands;

/// A command that QML declares:
///
///     Command {
///         name: "pause"
///         description: "Stops the simulation."
///         usage: "pause [SECONDS]"
///         onRun: (args, answer) => answer.write("Paused.")
///     }
///
/// - Inside a ConsoleOverlay, at any depth, it belongs to the overlay's console. Elsewhere, `handle` names the console.
/// - The console knows it from its completion until its destruction. Of several commands with one name the one that was
///   completed last runs, and once that is gone, the one before it. QML completes the objects of a file from its end to
///   its beginning.
/// - It may call `destroy()` on itself and on its overlay while it runs.
/// - An exception that onRun, a binding that it sets off, or candidates lets out becomes one line in the log, with file
///   and line number, and ends the alias or the console file that ran the command.
class Command : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT

    /// The word that runs the command. A name that is empty or has white space in it is refused with a warning.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged FINAL)

    /// What the command does, for `help`.
    Q_PROPERTY(QString description READ description WRITE setDescription NOTIFY descriptionChanged FINAL)

    /// The form of a line that runs the command, such as `pause [SECONDS]`, for `help`. If it is empty, the name stands
    /// in for it.
    Q_PROPERTY(QString usage READ usage WRITE setUsage NOTIFY usageChanged FINAL)

    /// A function that is called at Tab, with the words after the command's name, and returns the list of candidates for
    /// the last word. All are offered, as they are: words with spaces need quotes. The words have the quotes that were
    /// typed, and end at every space. Unset, there are no candidates.
    Q_PROPERTY(QJSValue candidates READ candidates WRITE setCandidates NOTIFY candidatesChanged FINAL)

    /// The console to add the command to. Null, the default, stands for that of the ConsoleOverlay around this object.
    /// It isn't called `console`, so that `console.log()` works in onRun.
    Q_PROPERTY(
        zephyr::console::quick::ConsoleHandle* handle READ handle WRITE setHandle NOTIFY handleChanged FINAL)

public:
    /// \cond ACCESSORS The properties' functions and signals are documented with the properties.
    explicit Command(QObject* parent = nullptr);
    ~Command() override;

    const QString& name() const { return mName; }
    void setName(const QString& name);

    const QString& description() const { return mDescription; }
    void setDescription(const QString& description);

    const QString& usage() const { return mUsage; }
    void setUsage(const QString& usage);

    const QJSValue& candidates() const { return mCandidates; }
    void setCandidates(const QJSValue& candidates);

    ConsoleHandle* handle() const { return mHandle.data(); }
    void setHandle(ConsoleHandle* handle);

    void classBegin() override {}
    void componentComplete() override;
    /// \endcond

    /// Runs the command with the words after its name. Throws what onRun does, as a `std::runtime_error`. This object
    /// may be destroyed meanwhile.
    void runWith(const QStringList& words);

    /// What `candidates` returns for `words`. Throws what it does, as a `std::runtime_error`.
    QStringList candidatesFor(const QStringList& words);

signals:
    /// A line runs the command. `args` are the words after its name, without their quotes and without a redirection.
    void run(const QStringList& args, zephyr::console::quick::CommandAnswer* answer);

    /// \cond ACCESSORS
    void nameChanged();
    void descriptionChanged();
    void usageChanged();
    void candidatesChanged();
    void handleChanged();
    /// \endcond

private:
    void enroll();
    void leave();
    ConsoleHandle* usedHandle() const;
    bool hasUsableName() const;

    QString mName;
    QString mDescription;
    QString mUsage;
    QJSValue mCandidates;
    QPointer<ConsoleHandle> mHandle;
    bool mIsComplete = false;

    std::shared_ptr<DeclaredCommands> mCommands; // null while no console knows the command
    std::shared_ptr<CommandAnswer> mAnswer;
};

} // namespace zephyr::console::quick

#endif
