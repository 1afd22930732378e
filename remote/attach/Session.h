#ifndef ZEPHYR_ATTACH_SESSION_H
#define ZEPHYR_ATTACH_SESSION_H

#include "attach/Output.h"
#include "client/Connection.h"
#include "protocol/Message.h"
#include "protocol/SocketPlace.h"

#include <QString>
#include <QtGlobal>

#include <optional>

namespace zephyr::attach {

/// What zephyr-attach does with a program, from the connection to an exit status.
class Session
{
public:
    Session(const console::remote::SocketPlace& place, const QString& name, bool isJson);
    virtual ~Session() = default;

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Connects and runs the application's event loop until the session has ended, and says why if that is a failure.
    /// \return the exit status.
    int run();

protected:
    /// Called once, when there is a connection.
    virtual void greeted(const console::remote::HelloMessage& hello) = 0;

    /// Called for what the program says after that.
    virtual void received(const console::remote::Message& message) = 0;

    /// Called when the event loop has ended, before anything is said about a failure.
    virtual void ended() {}

    /// Ends the session with an exit status. No more is received.
    void end(int status);

    /// Ends it with kNoAnswer and a complaint.
    void fail(const QString& complaint);

    /// Prints an entry unless the session has ended, and ends it if that isn't possible.
    void print(const console::remote::Entry& entry);

    /// Sends a request that runs a line. \return its id.
    qint64 sendRun(const QString& line);

    /// Sends a request for what completes a line. \return its id.
    qint64 sendComplete(const QString& beforeCursor);

    /// Sends a request to follow the log, beginning with its last `last` entries.
    void sendFollow(const console::remote::HelloMessage& hello, qint64 last);

    /// Where entries are printed.
    const Output& output() const { return mOutput; }

private:
    console::remote::Connection mConnection;
    Output mOutput;
    std::optional<QString> mComplaint;
    qint64 mLastId = 0;
    bool mHasEnded = false;
};

} // namespace zephyr::attach

#endif
