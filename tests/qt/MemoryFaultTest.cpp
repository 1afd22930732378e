#include "ChangeWatch.h"
#include "ConsoleLender.h"
#include "FramePainter.h"
#include "KeyDelivery.h"
#include "LogMirror.h"
#include "MirrorFile.h"
#include "SnapshotRefresh.h"
#include "faults/FailingAllocation.h"
#include "support/TemporaryDirectory.h"
#include "view/ViewShare.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QCoreApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QWindow>
#include <Qt>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string_view>

namespace zephyr::console::qt {
namespace {

// Too long for a string to hold without an allocation.
const std::u32string kLongText = U"a text that needs memory of its own";

void type(Console& console, const std::u32string& text)
{
    for (const char32_t c : text) {
        console.keyPressed(0, Qt::NoModifier, std::u32string(1, c));
    }
}

/// Calls `attempt` with 0, 1, 2 ... successful allocations before one that fails, until none fails. \return how many
/// calls met a failure.
int failAtEachAllocation(const std::function<void(std::size_t successes)>& attempt)
{
    constexpr int kMany = 10000;
    for (int i = 0; i < kMany; ++i) {
        bool hasFailed = false;
        {
            const test::FailingAllocation failing(static_cast<std::size_t>(i));
            EXPECT_NO_THROW(attempt(static_cast<std::size_t>(i)));
            hasFailed = failing.hasFailed();
        }
        if (!hasFailed) {
            return i;
        }
    }
    return kMany;
}

class MemoryFault : public testing::Test
{
protected:
    MemoryFault()
    {
        mConsole.open();
        mConsole.write(kLongText, Output);
        type(mConsole, kLongText);
    }

    Console mConsole;
};

TEST_F(MemoryFault, LeavesASnapshotForTheNextTime)
{
    std::optional<ConsoleSnapshot> snapshot;
    const int failures = failAtEachAllocation([&](std::size_t) {
        if (!takeOrRefresh(snapshot, mConsole)) {
            EXPECT_FALSE(snapshot);
        }
    });
    EXPECT_GT(failures, 0);
    ASSERT_TRUE(snapshot);
    const std::size_t before = snapshot->lines().size();
    mConsole.write(kLongText, Output);
    failAtEachAllocation([&](std::size_t) {
        if (!takeOrRefresh(snapshot, mConsole)) {
            EXPECT_EQ(before, snapshot->lines().size());
        }
    });
    EXPECT_EQ(before + 1, snapshot->lines().size());
}

TEST_F(MemoryFault, LeavesAChangeForTheNextLook)
{
    ChangeWatch watch;
    int seen = 0;
    const auto look = [&](std::size_t) { seen += watch.lookForChange(mConsole) ? 1 : 0; };
    EXPECT_GT(failAtEachAllocation(look), 0);
    EXPECT_EQ(1, seen);
    mConsole.write(kLongText, Output);
    EXPECT_GT(failAtEachAllocation(look), 0);
    EXPECT_EQ(2, seen) << "once, and not again";
}

/// Whether a frame is painted by ConsoleRenderer or as a view.
class FrameMemoryFault : public MemoryFault, public testing::WithParamInterface<bool>
{};

TEST_P(FrameMemoryFault, LeavesAFrameForTheNextTime)
{
    ViewShare share;
    ViewShare* const view = GetParam() ? &share : nullptr;
    QImage expected(200, 90, QImage::Format_ARGB32_Premultiplied);
    QImage image(expected.size(), expected.format());
    expected.fill(Qt::white);
    {
        QPainter painter(&expected);
        FramePainter().paint(mConsole, painter, view);
    }
    FramePainter frames;
    QPainter painter(&image);
    const int failures = failAtEachAllocation([&](std::size_t) {
        image.fill(Qt::white);
        frames.beginAnew(); // or the cursor would blink with the time that the attempts take
        frames.paint(mConsole, painter, view);
        EXPECT_TRUE(expected == image || frames.secondsToBlink()) << "nothing would mend the frame";
    });
    EXPECT_GT(failures, 0);
    EXPECT_EQ(expected, image);
}

TEST_F(MemoryFault, HasAllPaintedThatAPreparedFrameLeftOut)
{
    ViewShare share;
    QImage image(200, 90, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    int incomplete = 0;
    FramePainter frames;
    frames.paint(mConsole, painter, &share);
    mConsole.write(kLongText, Output);
    ASSERT_TRUE(frames.prepare(mConsole, share));
    failAtEachAllocation([&](std::size_t) {
        frames.paint(mConsole, painter, &share);
        if (frames.secondsToBlink()) { // which the steady cursor doesn't ask for
            ++incomplete;
            EXPECT_FALSE(frames.prepare(mConsole, share)) << "its region would be lost";
        }
    });
    EXPECT_GT(incomplete, 0);
    EXPECT_TRUE(frames.prepare(mConsole, share));
}

INSTANTIATE_TEST_SUITE_P(, FrameMemoryFault, testing::Bool(),
                         [](const auto& tested) { return tested.param ? "OfAView" : "OfTheRenderer"; });

TEST_F(MemoryFault, EndsNoKey)
{
    KeyDelivery keys([](const QString&) {});
    const auto press = [&](int key, const std::u32string& text) {
        return [&, key, text](std::size_t) { keys.press(mConsole, key, Qt::NoModifier, text); };
    };
    failAtEachAllocation(press(Qt::Key_Backspace, {}));
    failAtEachAllocation(press(0, kLongText));
    EXPECT_GT(failAtEachAllocation(press(Qt::Key_Return, {})), 0);
    mConsole.open();
    keys.press(mConsole, 0, Qt::NoModifier, U"x");
    EXPECT_EQ(U"x", mConsole.activeInput());
}

TEST_F(MemoryFault, EndsNoStartOfAMirror)
{
    const test::TemporaryDirectory directory;
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    const QString file = QString::fromStdString((directory.path() / "log").string());
    bool isMirrored = false;
    EXPECT_GT(failAtEachAllocation([&](std::size_t) { isMirrored = host.mirrorLog(file); }), 0);
    EXPECT_TRUE(isMirrored);
    console->write(kLongText, Output);
    EXPECT_EQ("Zephyr Console:\n\n" + StringUtil::toString(kLongText) + "\n", directory.read("log"));
}

/// A file whose thread has no memory for a while after each write: the allocation after the next `successes` fails.
class FileWithoutMemory : public MirrorFile
{
public:
    FileWithoutMemory(const QString& name, std::size_t successes) : MirrorFile(name), mSuccesses(successes) {}

    bool write(std::string_view text) override
    {
        mFailing.reset();
        const bool isWritten = MirrorFile::write(text);
        mFailing.emplace(mSuccesses);
        return isWritten;
    }

private:
    const std::size_t mSuccesses;
    std::optional<test::FailingAllocation> mFailing;
};

TEST_F(MemoryFault, LeavesEntriesOfAMirrorForTheNextTime)
{
    const test::TemporaryDirectory directory;
    const QString name = QString::fromStdString((directory.path() / "log").string());
    for (const std::size_t successes : {0U, 1U, 2U, 3U}) {
        const auto console = std::make_shared<Console>();
        LogMirror mirror(std::make_shared<ConsoleLender>(console));
        ASSERT_TRUE(mirror.start(name, std::make_unique<FileWithoutMemory>(name, successes)));
        console->write(kLongText, Output);
        EXPECT_EQ("Zephyr Console:\n\n" + StringUtil::toString(kLongText) + "\n", directory.read("log"));
    }
}

TEST_F(MemoryFault, EndsNoEventOfAWindow)
{
    const auto console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host(console, &window);
    host.setOpen(true);
    const QString text(200, 'x');
    const auto send = [&](QEvent& event) { EXPECT_NO_THROW(QCoreApplication::sendEvent(&window, &event)); };
    for (const bool isCommit : {false, true}) {
        const int failures = failAtEachAllocation([&](std::size_t i) {
            try {
                if (isCommit) {
                    QInputMethodEvent event;
                    event.setCommitString(text);
                    send(event);
                } else {
                    const auto scanCode = static_cast<quint32>(100 + i); // a key that isn't held yet
                    QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, scanCode, 0, 0, text);
                    send(event);
                }
            } catch (const std::bad_alloc&) { // the event itself had no memory
            }
        });
        EXPECT_GT(failures, 0);
    }
    EXPECT_FALSE(console->activeInput().empty());
}

} // namespace
} // namespace zephyr::console::qt
