#include "client/RunningPrograms.h"

#include "client/Connection.h"

#include <QEventLoop>
#include <QStringList>

#include <deque>
#include <functional>
#include <optional>

namespace zephyr::console::remote {

namespace {

/// A program that is asked whether it runs.
class Asked
{
public:
    /// Calls `settled` once, when it has answered, or is known not to.
    Asked(const SocketPlace& place, const QString& name, const std::function<void()>& settled)
        : mName(name),
          mConnection(place, name,
                      {[this, settled](const HelloMessage&) {
                           mAnswers = true;
                           settled();
                       },
                       [](const Message&) {},
                       [this, settled](const QString&) {
                           if (!mAnswers) {
                               settled();
                           }
                       }})
    {}

    void ask(std::chrono::milliseconds limit) { mConnection.open(limit); }

    /// The program, if something listens there.
    std::optional<RunningProgram> program() const
    {
        return mConnection.pid() ? std::optional(RunningProgram{mName, *mConnection.pid(), mAnswers})
                                 : std::nullopt;
    }

private:
    QString mName;
    Connection mConnection;
    bool mAnswers = false;
};

/// Those of `names` that are running. Asks all of them at once.
std::vector<RunningProgram> runningOf(const QStringList& names, const SocketPlace& place,
                                      std::chrono::milliseconds limit)
{
    QEventLoop loop;
    std::deque<Asked> asked;
    std::size_t settled = 0;
    for (const QString& name : names) {
        asked.emplace_back(place, name, [&] {
            if (++settled == asked.size()) {
                loop.quit();
            }
        });
        asked.back().ask(limit);
    }
    if (!asked.empty()) {
        loop.exec();
    }
    std::vector<RunningProgram> running;
    for (const Asked& one : asked) {
        if (const std::optional<RunningProgram> program = one.program()) {
            running.push_back(*program);
        }
    }
    return running;
}

} // namespace

std::vector<RunningProgram> runningPrograms(const SocketPlace& place, std::chrono::milliseconds limit)
{
    const QStringList names = place.names();
    std::vector<RunningProgram> running;
    for (qsizetype next = 0, wanted = kMaxFound; next < names.size() && wanted > 0;) {
        const std::vector<RunningProgram> more = runningOf(names.mid(next, wanted), place, limit);
        running.insert(running.end(), more.begin(), more.end());
        next += wanted;
        wanted -= static_cast<qsizetype>(more.size());
    }
    return running;
}

} // namespace zephyr::console::remote
