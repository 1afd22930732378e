#ifndef ZEPHYR_CONSOLE_QT_QTMESSAGELOG_H
#define ZEPHYR_CONSOLE_QT_QTMESSAGELOG_H

#include <memory>

namespace zephyr::console::qt {

class ConsoleLender;

/// Writes Qt's own messages into a console's log while it lives, whatever thread they come from. The message handler
/// that was installed before is still called.
class QtMessageLog
{
public:
    explicit QtMessageLog(std::shared_ptr<ConsoleLender> console);
    ~QtMessageLog();

    QtMessageLog(const QtMessageLog&) = delete;
    QtMessageLog& operator=(const QtMessageLog&) = delete;

    /// Begins anew in a process that fork() made, where messages aren't written otherwise, and after another message
    /// handler was installed, which needn't call this object's.
    void begin();

private:
    const std::shared_ptr<ConsoleLender> mConsole;
};

} // namespace zephyr::console::qt

#endif
