#include "commands/CommandsFixture.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/commands/GlmValues.h"
#include "zephyr/console/commands/QtValues.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/commands/Variable.h"

#include <stdexcept>

namespace zephyr::test {
namespace {

using namespace console::commands;

/// What `text` becomes when it is read as a T and written again; a question mark if it is none.
template <typename T>
std::string again(const std::u32string& text)
{
    const std::optional<T> value = Value<T>::read(text);
    return value ? StringUtil::toString(Value<T>::write(*value)) : "?";
}

TEST(QtValues, AreReadAndWritten)
{
    EXPECT_EQ("\u00E9 \U0001F600", again<QString>(U"\u00E9 \U0001F600"));
    EXPECT_EQ("#4682b4", again<QColor>(U"steelblue"));
    EXPECT_EQ("#804682b4", again<QColor>(U"#804682b4"));
    EXPECT_EQ("#ffff000000010002", again<QColor>(U"#ffff000000010002"));
    EXPECT_EQ("?", again<QColor>(U"no colour"));
    EXPECT_EQ("?", again<QColor>(U"#ffff00000001000g"));
    EXPECT_EQ("1,-2", again<QPoint>(U"1,-2"));
    EXPECT_EQ("?", again<QPoint>(U"1,2,3"));
    EXPECT_EQ("?", again<QPoint>(U"1.5,2"));
    EXPECT_EQ("0.1,2", again<QPointF>(U"0.1,2"));
    EXPECT_EQ("640x480", again<QSize>(U"640x480"));
    EXPECT_EQ("?", again<QSize>(U"640"));
    EXPECT_EQ("0.5x2", again<QSizeF>(U"0.5x2"));
}

TEST(QtValues, HaveNoTextForAnInvalidColour)
{
    EXPECT_EQ(U"", Value<QColor>::write(QColor()));
    EXPECT_EQ("?", again<QColor>(U""));
}

TEST(GlmValues, AreReadAndWritten)
{
    EXPECT_EQ("1,-2.5", again<glm::vec2>(U"1,-2.5"));
    EXPECT_EQ("1,2,3", again<glm::ivec3>(U"1,2,3"));
    EXPECT_EQ("0.1,0,0,1", again<glm::dvec4>(U"0.1,0,0,1"));
    EXPECT_EQ("?", again<glm::vec3>(U"1,2"));
    EXPECT_EQ("?", again<glm::vec3>(U"1,2,x"));
    EXPECT_EQ("?", again<glm::vec2>(U""));
}

class QtAndGlmCommands : public CommandsFixture
{};

TEST_F(QtAndGlmCommands, NameWhatIsWrong)
{
    add(mConsole, U"goto", U"", [](glm::vec3) {}, argument(U"place"));
    add(mConsole, U"paint", U"", [](QColor) {});
    add(mConsole, U"size", U"", [](QSize) {});
    EXPECT_EQ(Texts({"    place: '1,2' is not a vector such as 1,2,3.", "    Usage: goto PLACE"}),
              textsOfAnswer("goto 1,2"));
    EXPECT_EQ("    colour: 'x' is not a colour such as #4682b4 or steelblue.",
              textsOfAnswer("paint x").front());
    EXPECT_EQ("    size: '3' is not a size such as 640x480.", textsOfAnswer("size 3").front());
    EXPECT_EQ(Texts({"paint steelblue"}), completionsOf("paint steel"));
}

TEST_F(QtAndGlmCommands, MayBeChoicesInAnySpelling)
{
    add(
        mConsole, U"paint", U"", [](const QColor& color) { return color; },
        argument(U"colour").choices(QColor("red"), U"blue"));
    EXPECT_EQ(Texts({"    #ff0000"}), textsOfAnswer("paint red"));
    EXPECT_EQ(Texts({"    #0000ff"}), textsOfAnswer("paint #0000FF"));
    EXPECT_EQ("    colour: 'green' is not #ff0000 or blue.", textsOfAnswer("paint green").front());
    const Variable<QColor> sky(mConsole, U"sky", QColor("red"), U"", choices(U"red", U"blue"));
    EXPECT_EQ(QColor("red"), sky.value());
}

TEST_F(QtAndGlmCommands, NeverSaveAnInvalidColourAsAnother)
{
    const TemporaryDirectory directory;
    const WorkingDirectory inside(directory.path());
    addVars(mConsole);
    Variable<QColor> sky(mConsole, U"sky", QColor("red"), U"");
    sky.set(QColor());
    EXPECT_EQ(Texts({"    Can't save sky: '' is not a colour such as #4682b4 or steelblue."}),
              textsOfAnswer("vars save mine"));
    EXPECT_FALSE(directory.has("mine.console"));
    EXPECT_THROW(Variable<QColor>(mConsole, U"sea", QColor(), U""), std::invalid_argument);
}

TEST_F(QtAndGlmCommands, MayBeBoundToAnObject)
{
    {
        const QObject owner;
        bindTo(&owner, add(mConsole, U"owned", U"", [] {}));
        EXPECT_NE(nullptr, mConsole.lookupCommand(U"owned"));
    }
    EXPECT_EQ(nullptr, mConsole.lookupCommand(U"owned"));
}

} // namespace
} // namespace zephyr::test
