#ifndef ZEPHYR_TESTS_QT_VIEW_VIEWEDCONSOLE_H
#define ZEPHYR_TESTS_QT_VIEW_VIEWEDCONSOLE_H

#include "ConsoleLender.h"
#include "KeyPress.h"
#include "view/FramePlan.h"
#include "view/View.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <QObject>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace zephyr::console::qt {

/// An open console with a view, of which frames are planned but not painted.
class ViewedConsole : public testing::Test
{
protected:
    ViewedConsole()
    {
        console->open();
        frame();
    }

    /// Plans a frame, as painting one does.
    std::shared_ptr<const FramePlan> frame()
    {
        const auto state = view.share().state();
        const auto font = std::make_shared<const ViewFont>(state->look.fontFamily, state->look.fontSize);
        const auto plan = std::make_shared<const FramePlan>(
            planFrame(*state, *console, console->readInput(), font, rows, size));
        view.share().setPlan(plan);
        return plan;
    }

    const ViewState& state()
    {
        current = view.share().state();
        return *current;
    }

    /// Presses a key as the host does.
    void press(int key, int modifiers = Qt::NoModifier, const std::u32string& text = {})
    {
        const KeyPress pressed{key, modifiers, text};
        if (!view.press(*console, pressed)) {
            view.pressOnConsole(*console, pressed);
        }
        view.afterConsoleActed(*console);
        frame();
    }

    void type(const std::u32string& text)
    {
        for (const char32_t c : text) {
            c == U'\n' ? press(Qt::Key_Return) : press(0, Qt::NoModifier, {c});
        }
    }

    void write(int lines)
    {
        for (int i = 0; i < lines; ++i) {
            console->write(StringUtil::toU32String("line " + std::to_string(written++)), Output);
        }
        view.onLogGrown();
        frame();
    }

    /// The texts of the rows of the log in the last frame.
    std::vector<std::string> shown()
    {
        std::vector<std::string> texts;
        for (const FramePlan::PlacedRow& placed : frame()->log) {
            texts.push_back(StringUtil::toString(placed.row.text));
        }
        return texts;
    }

    std::string first() { return shown().front(); }
    std::string last() { return shown().back(); }

    /// Runs the search of the find bar to its end.
    void search()
    {
        while (view.searchOn()) {
        }
        frame();
    }

    static constexpr int kCtrl = Qt::ControlModifier;

    std::shared_ptr<Console> console = std::make_shared<Console>();
    QSize size{640, 400};
    QObject context;
    int changes = 0;
    int written = 0;
    View view{context,
              std::make_shared<ConsoleLender>(console),
              {[this](const KeyPress& key) { console->keyPressed(key.key, key.modifiers, key.text); },
               [this] { ++changes; }}};
    LogRows rows;
    std::shared_ptr<const ViewState> current;
};

} // namespace zephyr::console::qt

#endif
