#ifndef ZEPHYR_SANDBOX_PROBE_KEYPROBE_H
#define ZEPHYR_SANDBOX_PROBE_KEYPROBE_H

#include <QRasterWindow>
#include <QSet>
#include <QStringList>

#include <functional>

namespace zephyr::sandbox {

/// The window of `--probe-keys`. It reports what each key sends, just as an open console would receive it, the input
/// method included. It shows the last lines and passes each to a callback. Pressing Escape twice in a row closes it.
/// Belongs to the application's main thread.
class KeyProbe : public QRasterWindow
{
public:
    /// `reportLine` is called with each line, which has no line feed.
    explicit KeyProbe(std::function<void(const QString& line)> reportLine);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void report(const QString& line);
    void countEscapes(const QKeyEvent& event);

    std::function<void(const QString& line)> mReportLine;
    QStringList mLines;
    QSet<quint32> mHeldKeys; // scan codes
    int mEscapes = 0;        // in a row
};

} // namespace zephyr::sandbox

#endif
