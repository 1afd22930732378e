#include "quick/Scene.h"
#include "support/AssertRecorder.h"

#include <QSignalSpy>

namespace zephyr::test {
namespace {

class ConsoleHandles : public Scene
{
protected:
    const std::shared_ptr<Console> shared = std::make_shared<Console>();
};

TEST_F(ConsoleHandles, HandAProgramsConsoleToQml)
{
    ConsoleHandle handle(shared);
    engine.rootContext()->setContextProperty("appConsole", &handle);
    show("ConsoleOverlay { objectName: 'overlay'; console: appConsole; Command { name: 'pause' } }");
    EXPECT_EQ(shared.get(), &console());
    EXPECT_NE(nullptr, shared->lookupCommand(U"pause"));
    shared->open();
    EXPECT_TRUE(QTest::qWaitFor([this] { return overlay().property("open").toBool(); }));
    root.reset();
    EXPECT_EQ(nullptr, shared->lookupCommand(U"pause"));
}

TEST_F(ConsoleHandles, MoveAnOverlayAndItsCommandsToAnotherConsole)
{
    show("ConsoleOverlay { objectName: 'overlay'; Command { name: 'pause' } }");
    const std::shared_ptr<Console> own = overlay().property("console").value<ConsoleHandle*>()->console();
    shared->open();
    ConsoleHandle handle(shared);
    QSignalSpy changes(&overlay(), SIGNAL(consoleChanged()));
    QSignalSpy toggles(&overlay(), SIGNAL(openChanged()));
    overlay().setProperty("console", QVariant::fromValue(&handle));
    EXPECT_EQ(shared.get(), &console());
    EXPECT_TRUE(overlay().property("open").toBool());
    EXPECT_EQ(nullptr, own->lookupCommand(U"pause"));
    EXPECT_NE(nullptr, shared->lookupCommand(U"pause"));

    overlay().setProperty("console", QVariant::fromValue<ConsoleHandle*>(nullptr));
    EXPECT_EQ(own.get(), &console());
    EXPECT_FALSE(overlay().property("open").toBool());
    EXPECT_NE(nullptr, own->lookupCommand(U"pause"));
    EXPECT_EQ(nullptr, shared->lookupCommand(U"pause"));
    EXPECT_EQ(2, changes.count());
    EXPECT_EQ(2, toggles.count());
}

TEST_F(ConsoleHandles, MayGoBeforeTheOverlay)
{
    auto handle = std::make_unique<ConsoleHandle>(shared);
    show("ConsoleOverlay { objectName: 'overlay'; Command { name: 'pause' } }");
    overlay().setProperty("console", QVariant::fromValue(handle.get()));
    ASSERT_NE(nullptr, shared->lookupCommand(U"pause"));
    handle.reset();
    EXPECT_NE(shared.get(), &console());
    EXPECT_NE(nullptr, console().lookupCommand(U"pause"));
    EXPECT_EQ(nullptr, shared->lookupCommand(U"pause"));
    open();
    EXPECT_TRUE(console().isOpen());
}

TEST_F(ConsoleHandles, LetOverlaysOfQmlShareAConsole)
{
    show("ConsoleHandle { id: shared }\n"
         "ConsoleOverlay { objectName: 'overlay'; console: shared }\n"
         "ConsoleOverlay { objectName: 'other'; console: shared }\n"
         "Command { name: 'pause'; handle: shared }");
    EXPECT_EQ(&consoleOf(find("other")), &console());
    EXPECT_NE(nullptr, console().lookupCommand(U"pause"));
    open();
    EXPECT_TRUE(QTest::qWaitFor([this] { return find("other").property("open").toBool(); }));
}

TEST_F(ConsoleHandles, ReportANullConsoleAndHoldANewOne)
{
    const AssertRecorder recorder;
    const ConsoleHandle handle(std::shared_ptr<Console>{});
    ASSERT_EQ(1U, recorder.failures().size());
    EXPECT_NE(std::string::npos, recorder.failures().front().find("ConsoleHandle"));
    ASSERT_NE(nullptr, handle.console());
    handle.console()->execute(U"help");
}

} // namespace
} // namespace zephyr::test
