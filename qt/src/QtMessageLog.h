#ifndef ZEPHYR_CONSOLE_QT_QTMESSAGELOG_H
#define ZEPHYR_CONSOLE_QT_QTMESSAGELOG_H

#include <memory>

namespace zephyr::console::qt {

class ConsoleLender;
class LogMirror;

/// Writes Qt's own messages into a console's log while it lives, from whatever thread they come. The message handler
/// that was installed before goes on being called.
class QtMessageLog
{
public:
    explicit QtMessageLog(std::shared_ptr<ConsoleLender> console);
    ~QtMessageLog();

    QtMessageLog(const QtMessageLog&) = delete;
    QtMessageLog& operator=(const QtMessageLog&) = delete;

    /// Names the mirror of the log that is to have a message that ends the program before it does; empty for none.
    void setMirror(const std::weak_ptr<LogMirror>& mirror);

private:
    const std::shared_ptr<ConsoleLender> mConsole;
};

} // namespace zephyr::console::qt

#endif
