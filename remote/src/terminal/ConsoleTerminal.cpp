#include "zephyr/console/remote/ConsoleTerminal.h"

#include "terminal/TerminalSession.h"

namespace zephyr::console::remote {

class ConsoleTerminal::Private
{
public:
    Private(Console& console, const ConsoleTerminalOptions& options)
        : session(std::make_shared<TerminalSession>(console, options))
    {}

    std::shared_ptr<TerminalSession> session;
};

ConsoleTerminal::ConsoleTerminal(Console& console, const ConsoleTerminalOptions& options)
    : mPrivate(std::make_unique<Private>(console, options))
{
    mPrivate->session->start();
}

ConsoleTerminal::~ConsoleTerminal() { mPrivate->session->stop(); }

} // namespace zephyr::console::remote
