#ifndef ZEPHYR_ATTACH_SCRIPTINPUT_H
#define ZEPHYR_ATTACH_SCRIPTINPUT_H

#include "batch/Script.h"

#include <QFile>
#include <QSocketNotifier>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace zephyr::attach {

/// The lines of a script, which are read as they are wanted, from a file or pipe without holding up the event loop.
class ScriptInput
{
public:
    /// A script that is all there.
    explicit ScriptInput(const QString& script);

    /// A script that is read from `file`, which is open. \param name what complaints call it.
    ScriptInput(std::unique_ptr<QFile> file, QString name);

    /// Calls `taken` once with the next line, or with nothing at the end or on an error: at once, or from the event loop once
    /// the line is there. One call at a time.
    void next(std::function<void(const std::optional<console::remote::ScriptLine>& line)> taken);

    /// Why the script ended before its end, a sentence; nothing if it didn't.
    const std::optional<QString>& error() const { return mError; }

    /// Where a line is, `FILE:12: `; empty for a script without a name.
    QString placeOf(const console::remote::ScriptLine& line) const;

private:
    void readMore();
    void fail(const QString& error);

    console::remote::Script mScript;
    std::unique_ptr<QFile> mFile;
    QString mName;
    std::unique_ptr<QSocketNotifier> mNotifier;
    std::function<void(const std::optional<console::remote::ScriptLine>&)> mTaken;
    std::optional<QString> mError;
    bool mIsAtEnd = false;
};

} // namespace zephyr::attach

#endif
