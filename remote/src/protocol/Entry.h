#ifndef ZEPHYR_CONSOLE_REMOTE_PROTOCOL_ENTRY_H
#define ZEPHYR_CONSOLE_REMOTE_PROTOCOL_ENTRY_H

#include <QJsonObject>
#include <QString>
#include <QtGlobal>

#include <optional>

namespace zephyr::console::remote {

/// An entry of a console's log, as it goes over a connection.
struct Entry
{
    /// What kind of entry it is.
    enum class Type
    {
        Input,  ///< The echo of a line that was run, shown behind the prompt.
        Output, ///< Ordinary output.
        Prompt  ///< A question to the user.
    };

    qint64 index = 0;         ///< Its place in the log, counted from 0.
    Type type = Type::Output; ///< What kind it is.
    QString text; ///< The whole text, without a prompt. It may hold line feeds and control characters.

    bool operator==(const Entry&) const = default;
};

/// The prompt in front of the input line and of an entry of type Input: ">> ".
extern const char kPromptText[];

/// The text as a user sees it: with the prompt in front if it is of type Input.
QString shownText(const Entry& entry);

/// The entry as an object `{"index": 12, "type": "output", "text": "..."}`.
QJsonObject toJson(const Entry& entry);

/// The entry that toJson() made the object of, or nothing if the object is none such.
std::optional<Entry> entryFrom(const QJsonObject& object);

} // namespace zephyr::console::remote

#endif
