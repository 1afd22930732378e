#ifndef ZEPHYR_SANDBOX_PROBE_KEYPROBE_H
#define ZEPHYR_SANDBOX_PROBE_KEYPROBE_H

#include <QRasterWindow>
#include <QSet>
#include <QStringList>

#include <functional>

namespace zephyr::sandbox {

/// The window of `--probe-keys`: tells what each key sends, as an open console would get it, the input method included.
///
/// - It is: a window that shows the last lines and hands each of them on. It is not: a sandbox; nothing else happens in
///   it. A second press of Escape in a row closes it.
/// - Threads: the application's main thread.
/// - Ownership: owns what it shows.
/// - Failure: none.
class KeyProbe : public QRasterWindow
{
public:
    /// `report` is called with each line, which has no line feed.
    explicit KeyProbe(std::function<void(const QString& line)> report);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void tell(const QString& line);
    void countEscapes(const QKeyEvent& event);

    std::function<void(const QString& line)> mReport;
    QStringList mLines;
    QSet<quint32> mHeldKeys; // scan codes
    int mEscapes = 0;        // in a row
};

} // namespace zephyr::sandbox

#endif
