#include "Generators.h"
#include "support/ConsoleDriver.h"
#include "zephyr/console/Console.h"

#include <algorithm>

namespace zephyr::console {
namespace {

/// The history as a user sees it: the submitted lines, and how far back the user has gone.
class HistoryModel
{
public:
    void submit(const std::string& line)
    {
        mLines.push_back(line);
        mBack = 0;
        mShown.clear();
    }

    void older()
    {
        if (!mLines.empty()) {
            mBack = std::min(mBack + 1, mLines.size());
            mShown = mLines[mLines.size() - mBack];
        }
    }

    void newer()
    {
        if (mBack > 0) {
            --mBack;
            mShown = mBack == 0 ? std::string() : mLines[mLines.size() - mBack];
        }
    }

    const std::string& shown() const { return mShown; }

private:
    std::vector<std::string> mLines;
    std::size_t mBack = 0; // 1 is the newest line
    std::string mShown;
};

enum class Walk
{
    Submit,
    Older,
    Newer
};

void walk(test::ConsoleDriver& driver, HistoryModel& model, Walk action)
{
    switch (action) {
    case Walk::Submit: {
        const std::string typed = *test::someTextOf(test::kPlainCharacters);
        const std::string line = model.shown() + typed;
        driver.type(typed);
        driver.press(Qt::Key_Return);
        model.submit(line);
        break;
    }
    case Walk::Older:
        driver.press(Qt::Key_Up);
        model.older();
        break;
    case Walk::Newer:
        driver.press(Qt::Key_Down);
        model.newer();
        break;
    }
}

RC_GTEST_PROP(HistoryProperties, AnyWalkShowsWhatTheModelShows, ())
{
    Console console;
    console.open();
    test::ConsoleDriver driver(console);
    HistoryModel model;
    const auto actions = *rc::gen::container<std::vector<Walk>>(
        rc::gen::weightedElement<Walk>({{2, Walk::Submit}, {3, Walk::Older}, {2, Walk::Newer}}));
    for (const Walk action : actions) {
        walk(driver, model, action);
        RC_ASSERT(driver.input() == model.shown());
        RC_ASSERT(console.cursorPosition() == console.activeInput().size());
    }
}

} // namespace
} // namespace zephyr::console
