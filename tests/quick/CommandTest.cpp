#include "quick/Scene.h"
#include "support/LogOf.h"
#include "support/ScriptedCommand.h"

#include <QPointer>
#include <QSignalMapper>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>

namespace zephyr::test {
namespace {

using Lines = std::vector<std::string>;

/// Commands that QML declares.
class DeclaredCommand : public Scene
{
protected:
    /// Shows an overlay with `members` in it, the first of which is in line 4.
    void showWith(const QByteArray& members)
    {
        show("ConsoleOverlay { id: overlay; objectName: 'overlay'\n" + members + "}");
    }

    /// What `line` writes between its echo and the empty line after its answer.
    Lines answerTo(const std::u32string& line) { return textsOf(answer(line, console())); }

    /// What a key that runs `line` writes.
    Lines answerToTyped(const QString& line)
    {
        open();
        const std::size_t before = console().logSize();
        QMetaObject::invokeMethod(&overlay(), "execute", Q_ARG(QString, line));
        return textsOf(logLines(console(), before));
    }

    Lines registered()
    {
        Lines names;
        console().forEachCommand([&](const console::ConsoleCommand& command) {
            names.push_back(StringUtil::toString(command.name()));
        });
        return names;
    }
};

TEST_F(DeclaredCommand, GetsItsWordsWithoutQuotes)
{
    showWith(
        "Command { name: 'say'; onRun: (args, answer) => answer.write(args.length + ' ' + args.join('|')) }");
    EXPECT_EQ(Lines{"    0 "}, answerTo(U"say"));
    EXPECT_EQ(Lines{"    2 a|b c"}, answerTo(U"say a \"b c\""));
    EXPECT_EQ(Lines{"    1 /to=b c"}, answerTo(U"say /to=\"b c\""));
    EXPECT_EQ(Lines{"    1 a"}, answerTo(U"say a > /dev/null"));
}

TEST_F(DeclaredCommand, AnswersAnEntryALine)
{
    showWith(
        "Command { name: 'say'; onRun: (args, answer) => { answer.write('one\\ntwo'); answer.write(3) } }");
    EXPECT_EQ((std::vector<LogLine>{output("one", 4), output("two", 4), output("3", 4)}),
              answer(U"say", console()));
}

TEST_F(DeclaredCommand, MayAnswerLater)
{
    showWith(
        "property var kept\nCommand { name: 'say'; onRun: (args, answer) => { overlay.kept = answer } }\n"
        "function finish() { kept.write('done') }");
    EXPECT_EQ(Lines{}, answerTo(U"say"));
    QMetaObject::invokeMethod(&overlay(), "finish");
    EXPECT_EQ("    done", log().back());
}

TEST_F(DeclaredCommand, IsExplainedByHelp)
{
    showWith("Command { name: 'pause'; description: 'Stops the simulation.'; usage: 'pause [SECONDS]' }\n"
             "Command { name: 'plain' }");
    EXPECT_EQ((Lines{"    pause [SECONDS]: Stops the simulation.", ""}), answerTo(U"help pause"));
    EXPECT_EQ((Lines{"    plain: (No Description Provided)", ""}), answerTo(U"help plain"));
    const Lines all = answerTo(U"help *");
    const auto usage = std::find(all.begin(), all.end(), "        Usage: pause [SECONDS]");
    EXPECT_NE(all.end(), usage);
}

TEST_F(DeclaredCommand, ChangesItsHelp)
{
    showWith("Command { objectName: 'pause'; name: 'pause' }");
    find<QObject>("pause").setProperty("description", "Stops.");
    find<QObject>("pause").setProperty("usage", "pause NOW");
    EXPECT_EQ((Lines{"    pause NOW: Stops.", ""}), answerTo(U"help pause"));
}

TEST_F(DeclaredCommand, IsRegisteredWhileItLives)
{
    showWith("Command { objectName: 'pause'; name: 'pause' }");
    EXPECT_EQ((Lines{"alias", "help", "pause"}), registered());
    delete &find<QObject>("pause");
    EXPECT_EQ((Lines{"alias", "help"}), registered());
}

TEST_F(DeclaredCommand, IsFoundAtAnyDepthOfTheOverlay)
{
    showWith("Item { Command { name: 'deep' } }\n"
             "Timer { }\n"
             "property list<QtObject> kept: [Command { name: 'listed' }]\n"
             "Component.onCompleted: made.createObject(overlay)\n"
             "Component { id: made; Command { name: 'made' } }");
    EXPECT_EQ((Lines{"alias", "deep", "help", "listed", "made"}), registered());
}

TEST_F(DeclaredCommand, ChangesItsName)
{
    showWith("Command { objectName: 'pause'; name: 'pause'; onRun: (args, answer) => answer.write(name) }");
    find<QObject>("pause").setProperty("name", "halt");
    EXPECT_EQ((Lines{"alias", "halt", "help"}), registered());
    EXPECT_EQ(Lines{"    halt"}, answerTo(U"halt"));
}

TEST_F(DeclaredCommand, MayChangeItsNameWhileItRuns)
{
    showWith("Command { name: 'a'; onRun: (args, answer) => { name = 'b'; answer.write('now ' + name) } }");
    EXPECT_EQ(Lines{"    now b"}, answerTo(U"a"));
    EXPECT_EQ((Lines{"alias", "b", "help"}), registered());
}

TEST_F(DeclaredCommand, StandsInForOneOfItsNameThatWasCompletedBefore)
{
    showWith("Command { objectName: 'new'; name: 'x'; onRun: (args, answer) => answer.write('new') }\n"
             "Command { name: 'x'; onRun: (args, answer) => answer.write('old') }");
    EXPECT_EQ(Lines{"    new"}, answerTo(U"x"));
    delete &find<QObject>("new");
    EXPECT_EQ(Lines{"    old"}, answerTo(U"x"));
}

TEST_F(DeclaredCommand, LeavesTheCommandAloneThatReplacedIt)
{
    showWith("Command { objectName: 'x'; name: 'x' }");
    addCommand(console(), U"x");
    delete &find<QObject>("x");
    EXPECT_NE(nullptr, console().lookupCommand(U"x"));
}

TEST_F(DeclaredCommand, MayDestroyItself)
{
    showWith("Command { id: once; name: 'once'\n"
             "onRun: (args, answer) => { once.destroy(); answer.write('gone') } }");
    EXPECT_EQ(Lines{"    gone"}, answerTo(U"once"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ((Lines{"alias", "help"}), registered());
}

TEST_F(DeclaredCommand, MayBeDestroyedAtOnceWhileItRuns)
{
    showWith("Command { objectName: 'once'; name: 'once' }");
    auto& once = find<QObject>("once");
    QSignalMapper ender; // a slot for a signal of a class that C++ doesn't see
    ender.setMapping(&once, 1);
    QObject::connect(&once, SIGNAL(run(QStringList, zephyr::console::quick::CommandAnswer*)), &ender,
                     SLOT(map()));
    QObject::connect(&ender, &QSignalMapper::mappedInt, [this] { root.reset(); });
    const std::shared_ptr<Console> kept = overlay().property("console").value<ConsoleHandle*>()->console();
    kept->execute(U"once");
    EXPECT_EQ(nullptr, root);
    EXPECT_EQ(nullptr, kept->lookupCommand(U"once"));
}

TEST_F(DeclaredCommand, MayDestroyItsOverlay)
{
    showWith("Command { name: 'end'; onRun: (args, answer) => { overlay.destroy(); answer.write('bye') } }");
    EXPECT_EQ(Lines{"    bye"}, answerTo(U"end"));
    QPointer<QQuickItem> gone = &overlay();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(gone.isNull());
}

TEST_F(DeclaredCommand, IsRefusedWithoutAUsableName)
{
    showWith("Command { }\nCommand { objectName: 'spaced'; name: 'two words' }");
    EXPECT_EQ((Lines{"alias", "help"}), registered());
    EXPECT_EQ(
        (Lines{
            "qrc:/Scene.qml:5:1: QML Command: the name of a Command must be one word, and is \"two words\"",
            "qrc:/Scene.qml:4:1: QML Command: the name of a Command must be one word, and is \"\""}),
        warnings);
    find<QObject>("spaced").setProperty("name", "word");
    EXPECT_EQ((Lines{"alias", "help", "word"}), registered());
}

TEST_F(DeclaredCommand, IsRefusedWithoutAConsole)
{
    make("Item { Command { name: 'pause' } }");
    EXPECT_EQ(
        Lines{"qrc:/Scene.qml:2:8: QML Command: a Command must be inside a ConsoleOverlay or have a handle"},
        warnings);
}

TEST_F(DeclaredCommand, ReportsAnExceptionWithItsPlace)
{
    showWith("Command { name: 'x'; onRun: (args, answer) => {\n answer.write('so far')\n nonsense() } }");
    QSignalSpy caught(&overlay(), SIGNAL(exceptionCaught(QString)));
    const std::string line =
        "The console caught an exception: qrc:/Scene.qml:6: ReferenceError: nonsense is not defined";
    EXPECT_EQ((Lines{"x", "    so far", line}), answerToTyped("x"));
    ASSERT_EQ(1, caught.count());
    EXPECT_EQ(line, caught.front().front().toString().toStdString());
}

TEST_F(DeclaredCommand, EndsTheAliasThatRanItByAnException)
{
    showWith("Command { name: 'x'; onRun: nonsense() }\n"
             "Command { name: 'y'; onRun: (args, answer) => answer.write('reached') }");
    console().execute(U"alias both \"x; y\"");
    EXPECT_THROW(console().execute(U"both"), std::runtime_error);
    EXPECT_NE("    reached", log().back());
}

TEST_F(DeclaredCommand, ReportsAnExceptionOfABindingThatItSetsOff)
{
    showWith("property var missing: ({ a: 1 })\nproperty var value: missing.a\n"
             "Command { name: 'x'; onRun: (args, answer) => { overlay.missing = undefined; "
             "answer.write('done') } }");
    EXPECT_EQ((Lines{"x", "    done",
                     "The console caught an exception: qrc:/Scene.qml:5: TypeError: Cannot read property 'a' "
                     "of undefined"}),
              answerToTyped("x"));
}

TEST_F(DeclaredCommand, IsNotEndedByAWarning)
{
    showWith("Command { id: other; name: 'other' }\n"
             "Command { name: 'x'; onRun: (args, answer) => { other.name = ''; answer.write('done') } }");
    EXPECT_EQ(Lines{"    done"}, answerTo(U"x"));
    EXPECT_EQ(1U, warnings.size());
}

TEST_F(DeclaredCommand, HearsOfAnExceptionOfALineThatItExecutes)
{
    showWith("Command { name: 'inner'; onRun: nonsense() }\n"
             "Command { name: 'outer'; onRun: (args, answer) => { overlay.execute('inner'); "
             "answer.write('reached') } }\n"
             "Command { name: 'tries'; onRun: (args, answer) => {\n"
             "  try { overlay.execute('inner') } catch (error) { answer.write('caught') } } }");
    EXPECT_EQ(
        (Lines{"outer", "inner",
               "The console caught an exception: qrc:/Scene.qml:4: ReferenceError: nonsense is not defined"}),
        answerToTyped("outer"));
    EXPECT_EQ((Lines{"tries", "inner", "    caught", ""}), answerToTyped("tries"));
}

TEST_F(DeclaredCommand, EndsWhereItRunsItselfForEver)
{
    showWith("Command { name: 'loop'; onRun: { overlay.execute('loop'); overlay.execute('loop') } }");
    const Lines lines = answerToTyped("loop");
    EXPECT_EQ(66U, lines.size());
    EXPECT_EQ("'loop' was not run: lines are nested deeper than the limit of 64.", lines.back());
}

TEST_F(DeclaredCommand, OffersItsCandidatesForTheLastWord)
{
    showWith("Command { name: 'go'; candidates: words => ['harbour', 'hill'].filter(place =>\n"
             "  place.startsWith(words.length > 0 ? words[words.length - 1] : '')) }");
    open();
    for (const char32_t c : std::u32string(U"go hi")) {
        console().keyPressed(0, 0, std::u32string(1, c));
    }
    console().keyPressed(Qt::Key_Tab, 0, {});
    EXPECT_EQ(U"go hill", console().activeInput());
}

TEST_F(DeclaredCommand, ReportsAnExceptionOfItsCandidates)
{
    showWith("Command { name: 'go'; candidates: words => nonsense }");
    open();
    for (const char32_t c : std::u32string(U"go ")) {
        console().keyPressed(0, 0, std::u32string(1, c));
    }
    try {
        console().keyPressed(Qt::Key_Tab, 0, {});
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ("qrc:/Scene.qml:4: ReferenceError: nonsense is not defined", error.what());
    }
}

TEST_F(DeclaredCommand, RefusesCandidatesThatAreNoFunction)
{
    showWith("Command { name: 'go'; candidates: 3 }");
    EXPECT_EQ(Lines{"qrc:/Scene.qml:4:1: QML Command: candidates must be a function"}, warnings);
}

} // namespace
} // namespace zephyr::test
