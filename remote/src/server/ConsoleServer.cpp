#include "zephyr/console/remote/ConsoleServer.h"

#include "server/Server.h"
#include "zephyr/console/Console.h"

namespace zephyr::console::remote {

class ConsoleServer::Private
{
public:
    explicit Private(Console& console) : server(std::make_shared<Server>(console)) {}

    std::shared_ptr<Server> server;
    QString error;
};

ConsoleServer::ConsoleServer(Console& console, const QString& name, Naming naming)
    : mPrivate(std::make_unique<Private>(console))
{
    mPrivate->error = mPrivate->server->listen(name, naming);
    if (!isListening()) {
        console.write("The console can't be served. " + mPrivate->error.toStdString(), Output);
    }
}

ConsoleServer::~ConsoleServer() { mPrivate->server->stop(); }

bool ConsoleServer::isListening() const { return mPrivate->server->isListening(); }
QString ConsoleServer::name() const { return mPrivate->server->name(); }
QString ConsoleServer::error() const { return mPrivate->error; }
std::size_t ConsoleServer::clientCount() const { return mPrivate->server->clientCount(); }

} // namespace zephyr::console::remote
