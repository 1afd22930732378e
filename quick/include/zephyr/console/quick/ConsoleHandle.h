#ifndef ZEPHYR_CONSOLE_QUICK_CONSOLEHANDLE_H
#define ZEPHYR_CONSOLE_QUICK_CONSOLEHANDLE_H

#include "zephyr/console/Console.h"
#include "zephyr/console/quick/detail/Export.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace zephyr::console::quick {

class DeclaredCommands;

/// A console as QML sees it. A C++ program that owns a console hands it to QML in one of these:
///
///     auto console = std::make_shared<Console>();
///     ConsoleHandle handle(console);
///     engine.setInitialProperties({{"appConsole", QVariant::fromValue(&handle)}});
///
/// In QML, `ConsoleOverlay { console: root.appConsole }` then shows the program's console. Don't call a property of your
/// own `console`: it would hide the object that `console.log()` belongs to.
///
/// - QML may make a handle too: `ConsoleHandle { id: shared }` holds a new console, which several overlays may show and
///   to which commands may be added from anywhere in the QML.
/// - Threads: the thread of the console.
/// - Ownership: it shares the console. An overlay whose handle is destroyed goes on with a console of its own, and the
///   commands that QML added are removed from the console as they are destroyed.
class ZEPHYR_CONSOLE_QUICK_EXPORT ConsoleHandle : public QObject
{
    Q_OBJECT
    QML_ELEMENT

public:
    /// Holds a new console.
    explicit ConsoleHandle(QObject* parent = nullptr);

    /// Holds `console`. Null reports the assertion `console`, and the handle holds a new console.
    explicit ConsoleHandle(std::shared_ptr<Console> console, QObject* parent = nullptr);

    ~ConsoleHandle() override;

    /// The console, never null.
    const std::shared_ptr<Console>& console() const;

private:
    friend class DeclaredCommands;

    std::shared_ptr<Console> mConsole;
    std::shared_ptr<DeclaredCommands> mCommands; // a running command shares it
};

} // namespace zephyr::console::quick

#endif
