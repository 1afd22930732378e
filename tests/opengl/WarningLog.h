#ifndef ZEPHYR_TESTS_OPENGL_WARNINGLOG_H
#define ZEPHYR_TESTS_OPENGL_WARNINGLOG_H

#include <QString>
#include <QStringList>

namespace zephyr::test {

/// Collects Qt's warnings while it lives. One at a time.
class WarningLog
{
public:
    WarningLog()
    {
        sWarnings.clear();
        mPrevious =
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
                if (type == QtWarningMsg) {
                    sWarnings.append(text);
                }
            });
    }

    ~WarningLog() { qInstallMessageHandler(mPrevious); }
    WarningLog(const WarningLog&) = delete;
    WarningLog& operator=(const WarningLog&) = delete;

    const QStringList& warnings() const { return sWarnings; }

private:
    static inline QStringList sWarnings;
    QtMessageHandler mPrevious;
};

} // namespace zephyr::test

#endif
