#ifndef ZEPHYR_TESTS_MINIMAL_HOSTPROGRAM_H
#define ZEPHYR_TESTS_MINIMAL_HOSTPROGRAM_H

#include "support/VirtualDisplay.h"
#include "support/WindowManager.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <xcb/xcb.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace zephyr::test {

/// A program with one window on a display of its own, seen and used as by a person in front of it.
class HostProgram
{
public:
    /// Starts the program, with OpenGL in software, and gives its window the keyboard, the one called `title` if it has
    /// several. `usesOpenGL` tells whether the program draws with OpenGL. A window manager runs if one is named.
    HostProgram(const QString& program, int scale, bool usesOpenGL, QString title = {},
                const QString& windowManager = {})
        : mTitle(std::move(title))
    {
        QProcessEnvironment environment = mDisplay.environment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("QT_SCALE_FACTOR", QString::number(scale));
        environment.insert("QT_IM_MODULE", "compose");
        environment.insert("LC_ALL", "C.UTF-8");
        environment.insert("LIBGL_ALWAYS_SOFTWARE", "1");
        environment.insert("QSG_RENDER_LOOP", "threaded");
        environment.insert("QSG_INFO", "1");
        environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // keeps Qt from starting a message bus
        if (usesOpenGL) {
            // Mesa unloads its driver without freeing all memory; the leaks can't be told from the program's.
            environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":detect_leaks=0");
        }
        if (!windowManager.isEmpty()) {
            mWindowManager.emplace(mDisplay, windowManager);
        }
        mProcess.setProcessEnvironment(environment);
        mProcess.start(program, {});
        // Twice, since a window that becomes one of its own, as a dock widget does, is made anew.
        QByteArray before;
        waitUntil([&] { return takeFocus() && std::exchange(before, mWindow) == mWindow; });
    }

    ~HostProgram()
    {
        mProcess.kill();
        mProcess.waitForFinished(kProcessTimeoutMs);
    }

    HostProgram(const HostProgram&) = delete;
    HostProgram& operator=(const HostProgram&) = delete;

    /// Presses and releases keys, given by their names in xdotool or their key codes.
    void press(const QStringList& keys) { mDisplay.send(QStringList("key") + keys); }

    /// Types a line and runs it.
    void enter(const QString& line)
    {
        type(line);
        press({"Return"});
    }

    void type(const QString& text) { mDisplay.send({"type", text}); }

    /// Clicks a button of the mouse at a place in the window, in the display's pixels. Buttons 4 and 5 are the wheel.
    void click(QPoint place, int button)
    {
        mDisplay.send({"mousemove", "--window", mWindow, QString::number(place.x()),
                       QString::number(place.y()), "click", QString::number(button)});
    }

    /// Takes pictures of the window until one is right or the time is up. \return the last one.
    QImage pictureThat(const std::function<bool(const QImage&)>& isRight)
    {
        QImage picture;
        const QDeadlineTimer deadline(kProcessTimeoutMs);
        waitUntil([&] {
            picture = takePicture();
            return isRight(picture) || deadline.hasExpired();
        });
        return picture;
    }

    /// Closes the window as the button in its title bar does. \return the program's exit code.
    int close()
    {
        sendDeleteWindow();
        if (!mProcess.waitForFinished(kProcessTimeoutMs) || mProcess.exitStatus() != QProcess::NormalExit) {
            throw std::runtime_error("the program hung or crashed: " + errors());
        }
        return mProcess.exitCode();
    }

    /// What the program has written to standard error since the last call.
    std::string errors() { return mProcess.readAllStandardError().toStdString(); }

private:
    void waitUntil(const std::function<bool()>& isSo)
    {
        while (!isSo()) {
            if (mProcess.waitForFinished(1)) {
                throw std::runtime_error("the program ended: " + errors());
            }
        }
    }

    bool takeFocus()
    {
        QStringList search{"search", "--all", "--onlyvisible", "--pid",
                           QString::number(mProcess.processId())};
        if (!mTitle.isEmpty()) {
            search << "--name"
                   << "^" + mTitle + "$";
        }
        mWindow = mDisplay.answerOf(XDOTOOL_PROGRAM, search).trimmed();
        if (!mWindow.isEmpty() &&
            mDisplay.answerOf(XDOTOOL_PROGRAM, {"getwindowfocus", "-f"}).trimmed() == mWindow) {
            return true;
        }
        mDisplay.answerOf(XDOTOOL_PROGRAM, {mWindowManager ? "windowactivate" : "windowfocus", mWindow});
        return false;
    }

    QImage takePicture() const
    {
        const QByteArray png = mDisplay.answerOf(IMPORT_PROGRAM, {"-silent", "-window", mWindow, "png:-"});
        const QImage picture = QImage::fromData(png, "PNG");
        if (picture.isNull()) {
            throw std::runtime_error("no picture of the window");
        }
        return picture;
    }

    void sendDeleteWindow() const
    {
        const QByteArray name = mDisplay.environment().value("DISPLAY").toLatin1();
        const std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection(
            xcb_connect(name.constData(), nullptr), xcb_disconnect);
        xcb_client_message_event_t event = {};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = mWindow.toUInt();
        event.type = atom(*connection, "WM_PROTOCOLS");
        event.data.data32[0] = atom(*connection, "WM_DELETE_WINDOW");
        const std::unique_ptr<xcb_generic_error_t, void (*)(void*)> error(
            xcb_request_check(connection.get(), // waits until the display is done
                              xcb_send_event_checked(connection.get(), 0, event.window,
                                                     XCB_EVENT_MASK_NO_EVENT,
                                                     reinterpret_cast<const char*>(&event))),
            std::free);
        if (error) {
            throw std::runtime_error("the display refuses to close the window");
        }
    }

    static xcb_atom_t atom(xcb_connection_t& connection, const QByteArray& name)
    {
        const auto length = static_cast<std::uint16_t>(name.size());
        const std::unique_ptr<xcb_intern_atom_reply_t, void (*)(void*)> reply(
            xcb_intern_atom_reply(&connection, xcb_intern_atom(&connection, 1, length, name.constData()),
                                  nullptr),
            std::free);
        if (!reply) {
            throw std::runtime_error("the display does not answer");
        }
        return reply->atom;
    }

    const QString mTitle;
    VirtualDisplay mDisplay;
    std::optional<WindowManager> mWindowManager;
    QProcess mProcess;
    QByteArray mWindow; // the window's number as xdotool prints it
};

} // namespace zephyr::test

#endif
