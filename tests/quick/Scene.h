#ifndef ZEPHYR_TESTS_QUICK_SCENE_H
#define ZEPHYR_TESTS_QUICK_SCENE_H

#include "support/ConsoleDriver.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/quick/ConsoleHandle.h"

#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace zephyr::test {

using console::Console;
using console::quick::ConsoleHandle;

/// A window that shows a scene written in QML. Objects are found by their objectName.
class Scene : public testing::Test
{
protected:
    Scene()
    {
        window.resize(320, 200);
        window.setColor(Qt::white);
        QObject::connect(&engine, &QQmlEngine::warnings, [this](const QList<QQmlError>& errors) {
            for (const QQmlError& error : errors) {
                warnings.push_back(error.toString().toStdString());
            }
        });
    }

    /// Makes an object of QML, whose first line is the one after its imports.
    std::unique_ptr<QObject> make(const QByteArray& qml)
    {
        QQmlComponent component(&engine);
        component.setData("import QtQuick; import Zephyr.Console\n" + qml, QUrl("qrc:/Scene.qml"));
        std::unique_ptr<QObject> object(component.create());
        if (!object) {
            throw std::runtime_error(component.errorString().toStdString());
        }
        return object;
    }

    /// Shows an item that is as large as the window and has `children` in it.
    void show(const QByteArray& children)
    {
        root = make("Item { width: 320; height: 200\n" + children + "}");
        rootItem().setParentItem(window.contentItem());
        window.show();
        window.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    template <typename T = QQuickItem>
    T& find(const QString& name)
    {
        auto* const found = root->findChild<T*>(name);
        if (found == nullptr) {
            throw std::runtime_error("no object is called " + name.toStdString());
        }
        return *found;
    }

    QQuickItem& rootItem() { return *qobject_cast<QQuickItem*>(root.get()); }
    QQuickItem& overlay() { return find("overlay"); }

    Console& consoleOf(const QObject& object)
    {
        return *object.property("console").value<ConsoleHandle*>()->console();
    }

    Console& console() { return consoleOf(overlay()); }

    void open() { ASSERT_TRUE(overlay().setProperty("open", true)); }

    /// The texts of the log, without its first two lines, which every console writes.
    std::vector<std::string> log() { return ConsoleDriver(console()).log(); }

    /// Presses and releases the keys that type `text`, on whatever has the focus.
    void type(const QByteArray& text)
    {
        for (const char c : text) {
            c == '\n' ? QTest::keyClick(&window, Qt::Key_Return) : QTest::keyClick(&window, c);
        }
    }

    void pressToggle() { QTest::keyClick(&window, Qt::Key_QuoteLeft); }

    /// What the window shows.
    QImage picture() { return window.grabWindow(); }

    QQmlEngine engine;
    std::vector<std::string> warnings;
    QQuickWindow window;
    std::unique_ptr<QObject> root; // destroyed before the window
};

} // namespace zephyr::test

#endif
