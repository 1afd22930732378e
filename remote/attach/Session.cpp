#include "attach/Session.h"

#include "attach/Complaint.h"
#include "attach/ExitStatus.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>

namespace zephyr::attach {

using namespace console::remote;

namespace {

constexpr std::chrono::seconds kPatience(10); // a program may be busy with a line when it is asked

} // namespace

Session::Session(const SocketPlace& place, const QString& name, bool isJson)
    : mConnection(place, name,
                  {[this](const HelloMessage& hello) { greeted(hello); },
                   [this](const Message& message) { received(message); },
                   [this](const QString& reason) { fail(reason); }}),
      mOutput(isJson)
{}

int Session::run()
{
    mConnection.open(kPatience);
    const int status = QCoreApplication::exec();
    ended();
    if (mComplaint) {
        complain(*mComplaint);
    }
    return status;
}

void Session::end(int status)
{
    mHasEnded = true;
    mConnection.close();
    QCoreApplication::exit(status);
}

void Session::fail(const QString& complaint)
{
    mComplaint = complaint;
    end(kNoAnswer);
}

void Session::print(const Entry& entry)
{
    if (!mHasEnded && !mOutput.print(entry)) {
        end(kNoAnswer);
    }
}

qint64 Session::sendRun(const QString& line)
{
    mConnection.send(RunRequest{++mLastId, line});
    return mLastId;
}

qint64 Session::sendComplete(const QString& beforeCursor)
{
    mConnection.send(CompleteRequest{++mLastId, beforeCursor});
    return mLastId;
}

void Session::sendFollow(const HelloMessage& hello, qint64 last)
{
    mConnection.send(FollowRequest{++mLastId, true, std::max(hello.logSize - last, qint64{0})});
}

} // namespace zephyr::attach
