#ifndef ZEPHYR_CONSOLE_REMOTE_PROTOCOL_SOCKETPLACE_H
#define ZEPHYR_CONSOLE_REMOTE_PROTOCOL_SOCKETPLACE_H

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <optional>
#include <utility>

namespace zephyr::console::remote {

/// The folder in which a user's programs have their sockets, `NAME.socket` each. Nobody else may enter it.
class SocketPlace
{
public:
    /// A folder that need not exist. \param folder an absolute path.
    explicit SocketPlace(QString folder) : mFolder(std::move(folder)) {}

    /// The place of the user who runs this process: `$XDG_RUNTIME_DIR/zephyr-console` where that variable names a
    /// folder that belongs to the user alone, and `/tmp/zephyr-console-UID` otherwise. Makes no folder.
    static SocketPlace ofUser();

    /// The folder, an absolute path.
    const QString& folder() const { return mFolder; }

    /// The socket of the program `name`, a path. The name must have no error.
    QString socketOf(const QString& name) const;

    /// The file that the program `name` locks while it runs, a path. The name must have no error.
    QString lockOf(const QString& name) const;

    /// Why no program can be called `name` here, a sentence; nothing if one can. A name has letters, digits, '-', '_'
    /// and '.', of ASCII each, begins with a letter or digit, and has maxNameLength() of them at most.
    std::optional<QString> errorInName(const QString& name) const;

    /// The number of characters that a name may have, so that the system takes the socket's path. Below 1 if the
    /// folder's own path is too long.
    qsizetype maxNameLength() const;

    /// Makes the folder, for the user alone, if it isn't there. \return why it can't be used, a sentence: it can't be
    /// made, is another user's, a symbolic link, no folder, or others may enter it. Nothing if all is well.
    std::optional<QString> make() const;

    /// Why the folder can't be used, a sentence, as make() says it. Nothing if all is well, or there is no folder.
    std::optional<QString> error() const;

    /// The names for which the folder has a socket, sorted. Whether a program listens there is another question.
    QStringList names() const;

private:
    QString mFolder;
};

} // namespace zephyr::console::remote

#endif
