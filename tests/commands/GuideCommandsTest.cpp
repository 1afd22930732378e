// The commands of the guides' hosts, and how many lines each takes.

#include "commands/CommandsFixture.h"
#include "zephyr/console/commands/GlmValues.h"

#include <fstream>
#include <map>

namespace zephyr::test {
namespace {

using namespace console::commands;

/// What the guides' hosts show: a picture that turns, a place in it, and a window.
struct Host
{
    void rotate(double degrees) { angle += degrees; }
    void setSpinning(bool on) { isSpinning = on; }
    void go(const glm::vec2& place) { position = place; }
    void setSetting(const std::u32string& name, double value) { settings[name] = value; }
    void quit() { hasQuit = true; }

    double angle = 0;
    bool isSpinning = false;
    glm::vec2 position{};
    std::map<std::u32string, double> settings;
    int fps = 60;
    std::u32string title;
    bool hasQuit = false;
};

void addGuideCommands(console::Console& console, Host& host)
{
    // begin rotate
    add(
        console, U"rotate", U"Turns the picture.", [&](double degrees) { host.rotate(degrees); },
        argument(U"degrees").between(-360, 360));
    // begin spin
    add(console, U"spin", U"Starts or stops the turning.", [&](bool on) { host.setSpinning(on); });
    // begin goto
    add(console, U"goto", U"Shows a place.", [&](glm::vec2 place) { host.go(place); }, argument(U"place"));
    // begin set
    add(
        console, U"set", U"Changes a setting.",
        [&](std::u32string name, double value) { host.setSetting(name, value); },
        argument(U"name").choices(U"gravity", U"drag"), argument(U"value").between(0, 10));
    // begin fps
    add(
        console, U"fps", U"Shows or limits the frames drawn in a second.",
        [&](std::optional<int> limit) { return host.fps = limit.value_or(host.fps); },
        argument(U"limit").between(1, 240).unit(U"Hz"));
    // begin title
    add(console, U"title", U"Names the window.", [&](std::u32string text) { host.title = text; });
    // begin quit
    add(console, U"quit", U"Ends the program.", [&] { host.quit(); });
    // end
}

class GuideCommands : public CommandsFixture
{
protected:
    GuideCommands() { addGuideCommands(mConsole, mHost); }

    Host mHost;
};

TEST_F(GuideCommands, TakeFiveLinesAtMostEach)
{
    std::ifstream source(GUIDE_COMMANDS);
    ASSERT_TRUE(source.is_open());
    std::map<std::string, int> lines;
    std::string command;
    for (std::string line; std::getline(source, line) && line != "    // end";) {
        const std::string begin = "    // begin ";
        if (line.rfind(begin, 0) == 0) {
            command = line.substr(begin.size());
        } else if (!command.empty()) {
            ++lines[command];
        }
    }
    ASSERT_EQ(7U, lines.size());
    int sum = 0;
    for (const auto& [name, count] : lines) {
        EXPECT_GE(count, 1) << name;
        EXPECT_LE(count, 5) << name;
        sum += count;
    }
    EXPECT_EQ(15, sum);
}

TEST_F(GuideCommands, DoWhatTheySay)
{
    for (const char* line :
         {"rotate 90", "spin on", "goto 1,2", "set gravity 9.81", "title \"My world\"", "quit"}) {
        EXPECT_EQ(Texts(), textsOfAnswer(line)) << line;
    }
    EXPECT_EQ(Texts({"    60"}), textsOfAnswer("fps"));
    EXPECT_EQ(Texts({"    30"}), textsOfAnswer("fps 30"));
    EXPECT_EQ(90, mHost.angle);
    EXPECT_TRUE(mHost.isSpinning);
    EXPECT_EQ(glm::vec2(1, 2), mHost.position);
    EXPECT_EQ(9.81, mHost.settings[U"gravity"]);
    EXPECT_EQ(30, mHost.fps);
    EXPECT_EQ(U"My world", mHost.title);
    EXPECT_TRUE(mHost.hasQuit);
}

TEST_F(GuideCommands, AnswerWhatIsWrong)
{
    EXPECT_EQ(Texts({"    degrees: 400 is above 360.", "    Usage: rotate DEGREES"}),
              textsOfAnswer("rotate 400"));
    EXPECT_EQ(Texts({"    switch: 'maybe' is not on or off.", "    Usage: spin SWITCH"}),
              textsOfAnswer("spin maybe"));
    EXPECT_EQ(Texts({"    place: '1' is not a vector such as 1,2.", "    Usage: goto PLACE"}),
              textsOfAnswer("goto 1"));
    EXPECT_EQ(Texts({"    name: 'mass' is not gravity or drag.", "    Usage: set NAME VALUE"}),
              textsOfAnswer("set mass 1"));
    EXPECT_EQ(Texts({"    limit: 0 is below 1 Hz.", "    Usage: fps [LIMIT]"}), textsOfAnswer("fps 0"));
    EXPECT_EQ(Texts({"    title: 'world' is one word too many; quote words that belong together.",
                     "    Usage: title TEXT"}),
              textsOfAnswer("title My world"));
}

TEST_F(GuideCommands, OfferWhatFits)
{
    EXPECT_EQ(Texts({"spin on", "spin off"}), completionsOf("spin "));
    EXPECT_EQ(Texts({"set gravity", "set drag"}), completionsOf("set "));
    EXPECT_EQ(Texts(), completionsOf("rotate "));
}

} // namespace
} // namespace zephyr::test
