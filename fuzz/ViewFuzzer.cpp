// Drives one view of a console with keys, the mouse, output, sizes and looks, in any order, and paints its frames.

#include "FramePainter.h"
#include "FuzzedConsole.h"
#include "KeyPress.h"
#include "Require.h"
#include "view/View.h"
#include "view/ViewKeys.h"
#include "view/ViewPointer.h"

#include <QImage>
#include <QObject>
#include <QPainter>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>

namespace zephyr::fuzz {
namespace {

using console::Console;
using namespace console::qt;

constexpr int kMostSteps = 60;

char32_t codePoint(FuzzedDataProvider& data)
{
    switch (data.ConsumeIntegralInRange(0, 5)) {
    case 0: return data.ConsumeIntegral<std::uint32_t>();
    case 1: return data.ConsumeIntegralInRange<std::uint32_t>(0x0300, 0x036F); // marks
    case 2: return data.ConsumeIntegralInRange<std::uint32_t>(0x0590, 0x06FF); // from right to left
    case 3: return U'\n';
    default: return data.ConsumeIntegralInRange<std::uint32_t>(U' ', U'z');
    }
}

std::u32string text(FuzzedDataProvider& data, std::size_t longest)
{
    std::u32string result(data.ConsumeIntegralInRange<std::size_t>(0, longest), U'x');
    for (char32_t& c : result) {
        c = codePoint(data);
    }
    return result;
}

/// A console, its view, and what paints it.
class FuzzedView
{
public:
    FuzzedView() { mConsole->open(); }

    void step(FuzzedDataProvider& data)
    {
        switch (data.ConsumeIntegralInRange(0, 9)) {
        case 0:
            press(data.PickValueInArray({Qt::Key_Return, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Left}), 0);
            break;
        case 1: pressUsedKey(data); break;
        case 2: type(text(data, 8)); break;
        case 3: write(data); break;
        case 4: mView.scrollBy(data.ConsumeIntegralInRange(-200, 200)); break;
        case 5: usePointer(data); break;
        case 6: mView.scrollToShare(data.ConsumeFloatingPointInRange(-1.0, 2.0)); break;
        case 7: changeLook(data); break;
        case 8: mView.setComposition(QString::fromStdU32String(text(data, 4))); break;
        default: paint(data);
        }
    }

private:
    void press(int key, int modifiers, const std::u32string& typed = {})
    {
        if (!mConsole->isOpen()) {
            mConsole->open();
            mView.reset();
        }
        const KeyPress pressed{key, modifiers, typed};
        if (!mView.press(*mConsole, pressed)) {
            mView.pressOnConsole(*mConsole, pressed);
        }
        mView.afterConsoleActed(*mConsole);
    }

    void pressUsedKey(FuzzedDataProvider& data)
    {
        const KeyUse& use = keyUses()[data.ConsumeIntegralInRange<std::size_t>(0, keyUses().size() - 1)];
        press(use.key,
              static_cast<int>(use.modifiers | (data.ConsumeBool() ? Qt::ShiftModifier : Qt::NoModifier)));
    }

    void type(const std::u32string& typed)
    {
        for (const char32_t c : typed) {
            press(0, 0, std::u32string(1, c));
        }
    }

    void write(FuzzedDataProvider& data)
    {
        std::u32string line = text(data, 30);
        for (int doublings = data.ConsumeIntegralInRange(0, 10); doublings > 0; --doublings) {
            line += line;
        }
        mConsole->writeIndented(line, data.ConsumeBool() ? console::Output : console::Input,
                                data.ConsumeIntegralInRange(0U, 90U));
        mView.onLogGrown();
    }

    void usePointer(FuzzedDataProvider& data)
    {
        const QPointF place(data.ConsumeIntegralInRange(-50, 450), data.ConsumeIntegralInRange(-50, 350));
        const Qt::MouseButton button = data.ConsumeBool() ? Qt::LeftButton : Qt::MiddleButton;
        switch (data.ConsumeIntegralInRange(0, 2)) {
        case 0:
            mPointer.press({place, button, data.ConsumeBool() ? Qt::ShiftModifier : Qt::NoModifier,
                            data.ConsumeIntegral<std::uint8_t>()});
            break;
        case 1: mPointer.move(place); break;
        default: mPointer.release(place);
        }
    }

    void changeLook(FuzzedDataProvider& data)
    {
        Look look = mView.look();
        look.fontSize = data.ConsumeFloatingPointInRange(-1.0, 40.0);
        look.part = data.ConsumeBool() ? Look::Part::Whole : Look::Part::UpperHalf;
        mView.setLook(look);
        if (data.ConsumeIntegralInRange(0, 7) == 0) {
            mView.clear();
        }
    }

    void paint(FuzzedDataProvider& data)
    {
        const QSize size(data.ConsumeIntegralInRange(1, 400), data.ConsumeIntegralInRange(1, 150));
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        mPainter.paint(*mConsole, painter, &mView.share());
        require(painter.isActive(), "a frame leaves the painter active");
        painter.end();
        checkPlan(*mView.share().plan());
        mView.searchOn();
    }

    static void checkPlan(const FramePlan& plan)
    {
        require(!plan.input.empty(), "there is a row of the input line in view");
        const Row& row = plan.cursorRow().row;
        require(plan.cursor >= row.begin && plan.cursor < row.end, "the cursor is in view");
        for (std::size_t i = 1; i < plan.log.size(); ++i) {
            const Row& before = plan.log[i - 1].row;
            const Row& after = plan.log[i].row;
            const bool follows = before.entry == after.entry
                                     ? before.end == after.begin
                                     : before.entry + 1 == after.entry && after.begin == 0;
            require(follows, "no row is left out");
        }
        require(plan.track.isEmpty() || plan.track.contains(plan.thumb), "the thumb is in its track");
    }

    std::shared_ptr<Console> mConsole = std::make_shared<Console>();
    QObject mContext;
    View mView{mContext,
               std::make_shared<ConsoleLender>(mConsole),
               {[this](const KeyPress& key) { pressOnConsole(key); }, [] {}}};
    ViewPointer mPointer{mContext,
                         mView,
                         {[](std::size_t) {}, [] {},
                          [this](const std::u32string& text) { mView.pickOffer(*mConsole, text); }}};
    FramePainter mPainter;

    void pressOnConsole(const KeyPress& key)
    {
        try {
            mConsole->keyPressed(key.key, key.modifiers, key.text);
        } catch (const std::exception&) { // the line is full
            return;
        }
    }
};

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    zephyr::fuzz::FuzzedView view;
    for (int step = 0; step < zephyr::fuzz::kMostSteps && data.remaining_bytes() > 0; ++step) {
        view.step(data);
    }
    return 0;
}
