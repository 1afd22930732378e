#ifndef ZEPHYR_CONSOLE_QUICK_CONSOLEOVERLAY_H
#define ZEPHYR_CONSOLE_QUICK_CONSOLEOVERLAY_H

#include "zephyr/console/qt/Look.h"
#include "zephyr/console/quick/ConsoleHandle.h"

#include <QColor>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <exception>
#include <memory>

namespace zephyr::console::qt {
class ConsoleHost;
}

namespace zephyr::console::quick {

/// A console over a Qt Quick scene: `ConsoleOverlay { }` in any item of a window.
///
/// - It is as large as its parent, unless it gets anchors or a size, and lies above its siblings.
/// - It never has the focus. While it is closed it draws nothing and lets mouse and keys through.
/// - It is drawn by the scene graph, in the one picture that updatePaintNode() makes. That runs on the render thread
///   while the GUI thread waits.
class ConsoleOverlay : public QQuickItem
{
    Q_OBJECT
    Q_CLASSINFO("ZephyrConsole", "overlay") // to assistive technology it is the console and nothing else
    QML_ELEMENT

    /// The console that is shown. By default one of the overlay's own; null brings that back. In the overlay's own
    /// handlers, and in a file whose root is an overlay, it hides the object that `console.log()` belongs to: write
    /// `print()` there.
    Q_PROPERTY(zephyr::console::quick::ConsoleHandle* console READ handle WRITE setHandle NOTIFY
                   consoleChanged FINAL)

    /// Whether the console is open.
    Q_PROPERTY(bool open READ isOpen WRITE setOpen NOTIFY openChanged FINAL)

    /// The path of a file that mirrors the log as it grows; empty for none, the default. The file is overwritten.
    Q_PROPERTY(QString mirrorFile READ mirrorFile WRITE setMirrorFile NOTIFY mirrorFileChanged FINAL)

    /// The path of a file that keeps the history from one run of the program to the next; empty for none, the default.
    /// Several programs may use it at once. What goes wrong with it is one line in the log.
    Q_PROPERTY(QString historyFile READ historyFile WRITE setHistoryFile NOTIFY historyFileChanged FINAL)

    /// Whether Qt's own messages, such as those of `console.log()`, become lines of the log. False by default.
    Q_PROPERTY(bool captureQtMessages READ captureQtMessages WRITE setCaptureQtMessages NOTIFY
                   captureQtMessagesChanged FINAL)

    /// Whether the open console keeps the mouse and touches from what lies below it. True by default.
    Q_PROPERTY(bool takesMouse READ takesMouse WRITE setTakesMouse NOTIFY takesMouseChanged FINAL)

    /// Whether the console is drawn without the view: nothing wraps, and there is nothing to select, to find or to choose
    /// from. False by default.
    Q_PROPERTY(bool plain READ isPlain WRITE setPlain NOTIFY plainChanged FINAL)

    /// The font's family. "Consolas" by default, or the system's monospaced font where there is none.
    Q_PROPERTY(QString fontFamily READ fontFamily WRITE setFontFamily NOTIFY lookChanged FINAL)

    /// The font's size in points. 10 by default.
    Q_PROPERTY(double fontSize READ fontSize WRITE setFontSize NOTIFY lookChanged FINAL)

    /// The colour of what commands and the program wrote. Green by default.
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY lookChanged FINAL)

    /// The colour of the line being typed and of those that were run. Green by default.
    Q_PROPERTY(QColor inputColor READ inputColor WRITE setInputColor NOTIFY lookChanged FINAL)

    /// The colour behind the text, translucent black by default. Its alpha decides how much of the scene shows.
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY lookChanged FINAL)

    /// The colour of Qt's warnings, where its messages are captured. Amber by default.
    Q_PROPERTY(QColor warningColor READ warningColor WRITE setWarningColor NOTIFY lookChanged FINAL)

    /// The colour of Qt's graver messages, where its messages are captured. Red by default.
    Q_PROPERTY(QColor errorColor READ errorColor WRITE setErrorColor NOTIFY lookChanged FINAL)

    /// What the console covers of the item: `ConsoleOverlay.Whole`, the default, or `ConsoleOverlay.UpperHalf`.
    Q_PROPERTY(Part part READ part WRITE setPart NOTIFY lookChanged FINAL)

public:
    /// What part of the item a console covers.
    enum Part
    {
        Whole,    ///< All of it.
        UpperHalf ///< The upper half. Below it, the mouse is the scene's.
    };
    Q_ENUM(Part)

    /// \cond ACCESSORS The properties' functions and signals are documented with the properties.
    explicit ConsoleOverlay(QQuickItem* parent = nullptr);
    ~ConsoleOverlay() override;

    ConsoleHandle* handle();
    void setHandle(ConsoleHandle* handle);

    bool isOpen() const;
    void setOpen(bool open);

    const QString& mirrorFile() const { return mMirrorFile; }
    void setMirrorFile(const QString& file);

    const QString& historyFile() const { return mHistoryFile; }
    void setHistoryFile(const QString& file);

    bool captureQtMessages() const { return mCapturesQtMessages; }
    void setCaptureQtMessages(bool capture);

    bool takesMouse() const { return mTakesMouse; }
    void setTakesMouse(bool take);

    bool isPlain() const { return mIsPlain; }
    void setPlain(bool plain);

    const QString& fontFamily() const { return mLook.fontFamily; }
    void setFontFamily(const QString& family) { setLook(&qt::Look::fontFamily, family); }

    double fontSize() const { return mLook.fontSize; }
    void setFontSize(double points) { setLook(&qt::Look::fontSize, points); }

    const QColor& textColor() const { return mLook.text; }
    void setTextColor(const QColor& color) { setLook(&qt::Look::text, color); }

    const QColor& inputColor() const { return mLook.input; }
    void setInputColor(const QColor& color) { setLook(&qt::Look::input, color); }

    const QColor& backgroundColor() const { return mLook.background; }
    void setBackgroundColor(const QColor& color) { setLook(&qt::Look::background, color); }

    const QColor& warningColor() const { return mLook.warning; }
    void setWarningColor(const QColor& color) { setLook(&qt::Look::warning, color); }

    const QColor& errorColor() const { return mLook.error; }
    void setErrorColor(const QColor& color) { setLook(&qt::Look::error, color); }

    Part part() const { return mLook.part == qt::Look::Part::Whole ? Whole : UpperHalf; }
    void setPart(Part part);

    bool contains(const QPointF& point) const override;
    /// \endcond

    /// Writes each line of `text` to the log.
    Q_INVOKABLE void write(const QString& text);

    /// Runs `line` as if it had been typed, but leaves it out of the history. An exception becomes one line in the log;
    /// in a Command's onRun it is thrown there instead.
    Q_INVOKABLE void execute(const QString& line);

    /// Copies the whole log to the clipboard.
    Q_INVOKABLE void copyLog();

    /// Hides what the log holds so far. The log itself keeps it.
    Q_INVOKABLE void clear();

signals:
    /// \cond ACCESSORS
    void consoleChanged();
    void openChanged();
    void mirrorFileChanged();
    void historyFileChanged();
    void captureQtMessagesChanged();
    void takesMouseChanged();
    void plainChanged();
    void lookChanged();
    /// \endcond

    /// A command, a completion or the console threw an exception. `message` is the line in the log that says so.
    void exceptionCaught(const QString& message);

    /// \cond ACCESSORS
protected:
    void componentComplete() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData*) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void mousePressEvent(QMouseEvent*) override {} // an event that is not ignored goes no further
    void mouseMoveEvent(QMouseEvent*) override {}
    void mouseReleaseEvent(QMouseEvent*) override {}
    void mouseDoubleClickEvent(QMouseEvent*) override {}
    void touchEvent(QTouchEvent*) override {}
    void hoverEnterEvent(QHoverEvent*) override {}
    void hoverMoveEvent(QHoverEvent*) override {}
    void hoverLeaveEvent(QHoverEvent*) override {}
    void wheelEvent(QWheelEvent* event) override;
    /// \endcond

private:
    template <typename Value>
    void setLook(Value qt::Look::* member, const Value& value)
    {
        if (mLook.*member != value) {
            mLook.*member = value;
            followLook();
        }
    }

    void followLook();
    void useHandle(ConsoleHandle* handle);
    void showConsole();
    void showToAssistiveTechnology();
    void startMirror();
    void syncOpen();
    void followParent();
    void fillParent();
    bool keepsMouse() const { return isOpen() && mTakesMouse; }
    QSize pixels() const;
    void report(Console& console, const std::exception_ptr& exception);

    QPointer<ConsoleHandle> mHandle; // null for one of its own
    std::unique_ptr<ConsoleHandle> mOwnHandle;
    QPointer<QQuickItem> mFilled; // the parent whose size it takes
    qt::Look mLook;
    QString mMirrorFile;
    QString mHistoryFile;
    bool mOpensAtStart = false;
    bool mCapturesQtMessages = false;
    bool mTakesMouse = true;
    bool mIsPlain = false;
    bool mIsShownOpen = false; // what openChanged() last announced

    std::unique_ptr<qt::ConsoleHost> mHost; // null until the component is complete
};

} // namespace zephyr::console::quick

#endif
