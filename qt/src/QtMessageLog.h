#ifndef ZEPHYR_CONSOLE_QT_QTMESSAGELOG_H
#define ZEPHYR_CONSOLE_QT_QTMESSAGELOG_H

#include <memory>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Writes Qt's own messages into a console's log while it lives, from whatever thread they come. The message handler
/// that was installed before goes on being called.
class QtMessageLog
{
public:
    explicit QtMessageLog(std::weak_ptr<Console> console);
    ~QtMessageLog();

    QtMessageLog(const QtMessageLog&) = delete;
    QtMessageLog& operator=(const QtMessageLog&) = delete;

private:
    std::weak_ptr<Console> mConsole;
};

} // namespace zephyr::console::qt

#endif
