#include "support/LogOf.h"
#include "zephyr/console/quick/ConsoleHandle.h"

#include <QQmlApplicationEngine>

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

TEST(QmlGuide, DeclaresACommand)
{
    const QQmlApplicationEngine engine(QUrl::fromLocalFile(QML_EXAMPLE));
    ASSERT_EQ(1, engine.rootObjects().size());
    QObject& window = *engine.rootObjects().front();
    const auto handles = window.findChildren<QObject*>();
    const console::quick::ConsoleHandle* handle = nullptr;
    for (const QObject* object : handles) {
        if (auto* const found = object->property("console").value<console::quick::ConsoleHandle*>()) {
            handle = found;
        }
    }
    ASSERT_NE(nullptr, handle);
    EXPECT_EQ(answer(U"pause 10", *handle->console()), std::vector<LogLine>{output("Paused for 10 s.", 4)});
    EXPECT_TRUE(window.property("isPaused").toBool());
}

} // namespace
} // namespace zephyr::test
