#ifndef ZEPHYR_ATTACH_LOGFOLLOWER_H
#define ZEPHYR_ATTACH_LOGFOLLOWER_H

#include "attach/Session.h"

namespace zephyr::attach {

/// Prints a program's log as it grows, until somebody ends it.
class LogFollower : public Session
{
public:
    /// \param last the number of entries of the log to begin with.
    LogFollower(const console::remote::SocketPlace& place, const QString& name, bool isJson, qint64 last)
        : Session(place, name, isJson), mLast(last)
    {}

protected:
    void greeted(const console::remote::HelloMessage& hello) override { sendFollow(hello, mLast); }
    void received(const console::remote::Message& message) override;

private:
    qint64 mLast;
};

} // namespace zephyr::attach

#endif
