#include "client/RunningPrograms.h"

#include "client/Connection.h"

#include <QEventLoop>
#include <QStringList>

#include <deque>
#include <memory>

namespace zephyr::console::remote {

namespace {

/// One program that is asked whether it runs.
struct Asked
{
    QString name;
    std::unique_ptr<Connection> connection;
    bool answers = false;
};

} // namespace

std::vector<RunningProgram> runningPrograms(const SocketPlace& place, std::chrono::milliseconds limit)
{
    QEventLoop loop;
    std::deque<Asked> asked; // a reference into it lasts
    std::size_t settled = 0;
    const auto settle = [&] {
        if (++settled == asked.size()) {
            loop.quit();
        }
    };
    for (const QString& name : place.names().mid(0, kMaxLookedAt)) {
        Asked& one = asked.emplace_back(Asked{name, nullptr, false});
        const auto greeted = [&one, &settle](const HelloMessage&) {
            one.answers = true;
            settle();
        };
        const auto lost = [&one, &settle](const QString&) {
            if (!one.answers) {
                settle();
            }
        };
        one.connection = std::make_unique<Connection>(
            place, name, ConnectionCallbacks{greeted, [](const Message&) {}, lost});
        one.connection->open(limit);
    }
    if (!asked.empty()) {
        loop.exec();
    }
    std::vector<RunningProgram> running;
    for (const Asked& one : asked) {
        if (const std::optional<qint64> pid = one.connection->pid()) {
            running.push_back({one.name, *pid, one.answers});
        }
    }
    return running;
}

} // namespace zephyr::console::remote
