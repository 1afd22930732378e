#include "view/ViewPicture.h"
#include "view/FramePlan.h"
#include "view/LogRows.h"
#include "view/ViewFrames.h"
#include "view/ViewPainter.h"
#include "view/ViewState.h"
#include "zephyr/console/Console.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QPicture>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console::qt {
namespace {

/// A view and what it shows, whose frames are painted one after the other.
class PaintedView
{
public:
    PaintedView() { console.open(); }

    /// An image of a device, which shows something behind the console.
    QImage canvas() const
    {
        QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(QColor(40, 80, 120));
        return image;
    }

    /// Paints a frame as a host would.
    QImage paint()
    {
        QImage image = canvas();
        QPainter painter(&image);
        paint(painter);
        return image;
    }

    void planOnly()
    {
        plan = frames.plan(console, console.readInput(), std::make_shared<const ViewState>(state), size);
    }

    void paint(QPainter& painter)
    {
        planOnly();
        frames.paint(painter, isCursorShown);
    }

    void type(const std::u32string& text)
    {
        for (const char32_t c : text) {
            console.keyPressed(0, Qt::NoModifier, std::u32string(1, c));
        }
    }

    Console console;
    ViewState state;
    QSize size{300, 190};
    double ratio = 1.0;
    bool isCursorShown = true;
    ViewFrames frames;
    std::shared_ptr<const FramePlan> plan;
};

/// How many channels differ by more than `tolerance` in the first row of pixels of two images that has any.
int differences(const QImage& left, const QImage& right, int tolerance)
{
    int count = left.size() == right.size() ? 0 : 1;
    for (int y = 0; count == 0 && y < left.height(); ++y) {
        const uchar* const a = left.constScanLine(y);
        const uchar* const b = right.constScanLine(y);
        for (int x = 0; x < left.bytesPerLine(); ++x) {
            count += std::abs(a[x] - b[x]) > tolerance ? 1 : 0;
        }
    }
    return count;
}

/// Does what a person and a program do to a view, at random.
class Random
{
public:
    Random(PaintedView& view, unsigned seed) : mView(view), mEngine(seed) {}

    /// \return the name of what it did.
    std::string act()
    {
        using Action = std::pair<const char*, void (Random::*)()>;
        static constexpr std::array<Action, 22> kActions = {
            {{"write", &Random::write},         {"write", &Random::write},   {"write", &Random::write},
             {"writeMany", &Random::writeMany}, {"type", &Random::type},     {"type", &Random::type},
             {"move", &Random::moveCursor},     {"erase", &Random::erase},   {"run", &Random::run},
             {"blink", &Random::blink},         {"blink", &Random::blink},   {"scroll", &Random::scroll},
             {"scroll", &Random::scroll},       {"scroll", &Random::scroll}, {"follow", &Random::follow},
             {"select", &Random::select},       {"find", &Random::find},     {"list", &Random::list},
             {"compose", &Random::compose},     {"bar", &Random::bar},       {"nothing", &Random::doNothing},
             {"rarely", &Random::actRarely}}};
        const Action& action = kActions[below(kActions.size())];
        (this->*action.second)();
        return action.first;
    }

private:
    std::size_t below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(mEngine);
    }

    bool isHeads() { return below(2) == 0; }

    std::u32string text()
    {
        static const std::vector<std::u32string> kTexts = {
            U"a line",
            U"",
            U"(){}[]|_gjpqy, which leave the middle of a line",
            U"a longer line that has to be wrapped where the view is narrow, and so it is on more than one "
            U"row",
            U"tall Z\u030D\u030E\u0304\u0305\u033F\u0311\u0306\u0310\u0352\u0357\u0351\u0307\u0308 marks",
            U"deep g\u0316\u0317\u0318\u0319\u031C\u031D\u031E\u031F\u0320\u0324\u0325\u0326 marks",
            U"\u0645\u0631\u062D\u0628\u0627 \u0628\u0627\u0644\u0639\u0627\u0644\u0645 \uFDFA \uFDFD",
            U"\u6F22\u5B57 \U0001F600 \U0001D54F \u0E01\u0E49\u0E33",
            U"\ttab\tstops",
            U"first\nsecond\n\nfourth",
            U"Qt warning: colored",
            U"\u2588\u2588\u2588\u2502\u2502\u253C\u2591\u2592"};
        return kTexts[below(kTexts.size())];
    }

    void write() { mView.console.write(text(), isHeads() ? Output : Input); }

    void writeMany()
    {
        for (std::size_t i = below(30); i > 0; --i) {
            write();
        }
    }

    void type() { mView.type(text().substr(0, 1 + below(12))); }

    void press(int key) { mView.console.keyPressed(key, Qt::NoModifier, {}); }

    void moveCursor() { press(isHeads() ? Qt::Key_Left : Qt::Key_Home); }
    void erase() { press(Qt::Key_Backspace); }
    void run() { press(Qt::Key_Return); }
    void blink() { mView.isCursorShown = !mView.isCursorShown; }
    void follow() { mView.state.top.reset(); }
    void doNothing() {}

    void scroll()
    {
        const std::shared_ptr<const FramePlan>& plan = mView.plan;
        if (plan == nullptr || plan->log.empty()) {
            return;
        }
        mRows.setFormat(plan->font, rowWidth(plan->size));
        Row row = plan->log.front().row;
        const bool isUp = below(3) > 0;
        for (std::size_t i = 1 + below(isHeads() ? 2 : 12); i > 0; --i) {
            const std::optional<Row> next = isUp ? mRows.rowBefore(mView.console, row, mView.state.firstEntry)
                                                 : mRows.rowAfter(mView.console, row);
            row = next.value_or(row);
        }
        mView.state.top = row.place();
    }

    TextPlace place() { return {below(mView.console.logSize()), below(20)}; }

    void select()
    {
        const auto range = std::minmax({place(), isHeads() ? TextPlace{kInputLine, below(10)} : place()});
        mView.state.selection = isHeads() ? TextRange{range.first, range.second} : TextRange{};
    }

    void find()
    {
        mView.state.find.query = isHeads() ? U"" : isHeads() ? U"li" : U"a";
        mView.state.find.current.reset();
        if (mView.plan != nullptr && !mView.plan->hits.empty()) {
            mView.state.find.current = mView.plan->hits[below(mView.plan->hits.size())].from;
        }
    }

    void list()
    {
        mView.state.list = {};
        for (std::size_t i = below(isHeads() ? 1 : 12); i > 0; --i) {
            mView.state.list.offers.push_back({text(), text()});
        }
        mView.state.list.count = mView.state.list.offers.size();
        if (mView.state.list.count > 0 && isHeads()) {
            mView.state.list.selected = below(mView.state.list.count);
        }
    }

    void compose() { mView.state.composition = isHeads() ? QString() : QStringLiteral("gj\u00C5"); }

    void bar()
    {
        mView.state.bar.reset();
        if (isHeads()) {
            mView.state.bar = ViewState::Bar{U"Find: ", text(), 0, U"1 of 2"};
            mView.state.bar->cursor = below(mView.state.bar->text.size() + 1);
        }
    }

    void actRarely()
    {
        constexpr std::array<double, 4> kRatios = {1.0, 1.25, 1.5, 2.0};
        constexpr std::array<double, 5> kSizes = {7.0, 10.0, 11.3, 16.0, 60.0};
        switch (below(8)) {
        case 0: mView.ratio = kRatios[below(kRatios.size())]; break;
        case 1: mView.size = {20 + static_cast<int>(below(400)), 20 + static_cast<int>(below(300))}; break;
        case 2: mView.state.look.fontSize = kSizes[below(kSizes.size())]; break;
        case 3: mView.state.look.background.setAlpha(static_cast<int>(below(256))); break;
        case 4: mView.state.look.text = isHeads() ? QColor(Qt::green) : QColor(200, 100, 50, 128); break;
        case 5: mView.state.look.part = isHeads() ? Look::Part::Whole : Look::Part::UpperHalf; break;
        case 6: mView.state.firstEntry = mView.console.logSize(); break;
        default: mView.state.look.fontFamily = isHeads() ? "Consolas" : "DejaVu Sans"; break;
        }
    }

    PaintedView& mView;
    std::mt19937 mEngine;
    LogRows mRows;
};

std::vector<PaintItem> itemsOf(PaintedView& view, ViewPainter& painter)
{
    view.planOnly();
    return painter.itemsOf(*view.plan, view.state, view.isCursorShown);
}

/// Or else a line that was added would have all of the picture painted.
TEST(PaintItem, IsAfterAMoveEqualToTheOneThatStandsThere)
{
    PaintedView view;
    view.console.write(U"row", Output);
    view.type(U"typed");
    ViewPainter painter;
    std::vector<PaintItem> items = itemsOf(view, painter);
    const std::vector<PaintItem> before = items;
    for (PaintItem& item : items) {
        item.moveUp(-view.plan->font->lineHeight());
        item.moveUp(view.plan->font->lineHeight());
    }
    EXPECT_EQ(before, items);
    const std::size_t row = 2; // of the log, below the two that every console writes
    items[row].moveUp(-view.plan->font->lineHeight());
    view.console.write(U"row", Output);
    EXPECT_EQ(itemsOf(view, painter)[row + 1], items[row]);
}

/// A picture of a view, and all of the same frame painted anew. Both are painted of the same layouts: where Qt lays a
/// text out a second time, marks on letters may get slightly different pixels.
struct Pictures
{
    void update(PaintedView& view)
    {
        view.planOnly();
        const std::vector<PaintItem> items = painter.itemsOf(*view.plan, view.state, view.isCursorShown);
        ASSERT_TRUE(picture.update(view.plan, view.state.look.background, view.ratio, items));
        shown = picture.image();
        shown.fill(Qt::transparent);
        QPainter device(&shown);
        device.scale(view.ratio, view.ratio);
        picture.draw(device);
        const QSize size = view.plan->size;
        anew = QImage(QSize(qRound(size.width() * view.ratio), qRound(size.height() * view.ratio)),
                      QImage::Format_ARGB32_Premultiplied);
        anew.fill(Qt::transparent);
        anew.setDevicePixelRatio(view.ratio);
        QPainter plain(&anew);
        plain.fillRect(QRect(QPoint(0, 0), size), view.state.look.background);
        for (const PaintItem& item : items) {
            item.paint(plain);
        }
    }

    ViewPainter painter;
    ViewPicture picture;
    QImage shown; // as a device shows the picture that has nothing behind it
    QImage anew;
};

class ViewPictureProperty : public testing::TestWithParam<unsigned>
{};

TEST_P(ViewPictureProperty, HasThePixelsOfAFrameThatIsPaintedAnew)
{
    constexpr int kActions = 200;
    PaintedView view;
    Pictures pictures;
    Random random(view, GetParam());
    std::string done;
    for (int i = 0; i < kActions; ++i) {
        done += random.act() + ' ';
        ASSERT_NO_FATAL_FAILURE(pictures.update(view));
        ASSERT_EQ(0, differences(pictures.anew, pictures.shown, 0))
            << "ratio " << view.ratio << ", font size " << view.state.look.fontSize << ", after: " << done;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ViewPictureProperty, testing::Range(0U, 8U));

TEST(ViewPicture, LooksAsTheFramePaintedDirectly)
{
    for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
        PaintedView view;
        view.ratio = ratio;
        view.console.write(U"a line of text", Output);
        view.type(U"typed");
        const QImage painted = view.paint();
        ASSERT_EQ(painted.size(), view.frames.picture().size()) << ratio;
        QImage direct = view.canvas();
        QPainter painter(&direct);
        ViewPainter().paint(painter, *view.plan, view.state, view.isCursorShown);
        painter.end();
        constexpr int kRoundings = 2; // on the picture, and of it on the frame
        EXPECT_EQ(0, differences(direct, painted, kRoundings)) << ratio;
    }
}

TEST(ViewPicture, IsLeftAloneWhileNothingChanges)
{
    PaintedView view;
    view.paint();
    const std::shared_ptr<const FramePlan> plan = view.plan;
    const qint64 key = view.frames.picture().cacheKey();
    view.paint();
    EXPECT_EQ(plan, view.plan);
    EXPECT_EQ(key, view.frames.picture().cacheKey());
    view.type(U"x");
    view.paint();
    EXPECT_NE(plan, view.plan);
    EXPECT_NE(key, view.frames.picture().cacheKey());
}

TEST(ViewPicture, KeepsThePlanWhileTheCursorBlinks)
{
    PaintedView view;
    view.paint();
    const std::shared_ptr<const FramePlan> plan = view.plan;
    const QImage shown = view.frames.picture().copy();
    view.isCursorShown = false;
    view.paint();
    EXPECT_EQ(plan, view.plan);
    EXPECT_NE(shown, view.frames.picture());
}

TEST(ViewPicture, FollowsAPainterThatWasMovedByWholePixels)
{
    PaintedView view;
    QImage image = view.canvas();
    QPainter painter(&image);
    painter.translate(7.0, 5.0);
    view.paint(painter);
    painter.end();
    EXPECT_FALSE(view.frames.picture().isNull());
    EXPECT_EQ(view.paint().copy(0, 0, 100, 100), image.copy(7, 5, 100, 100));
}

/// Paints on a painter that was prepared so. \return whether a picture served.
bool servesAfter(const std::function<void(QPainter&)>& prepare)
{
    PaintedView view;
    QImage image = view.canvas();
    QPainter painter(&image);
    prepare(painter);
    view.paint(painter);
    return !view.frames.picture().isNull();
}

TEST(ViewPicture, ServesWhereItsPixelsAreTheDevices)
{
    EXPECT_TRUE(servesAfter([](QPainter&) {}));
    EXPECT_TRUE(servesAfter([](QPainter& painter) { painter.scale(1.5, 1.5); }));
    EXPECT_TRUE(servesAfter([](QPainter& painter) { painter.setWindow(0, 0, 150, 95); }));
}

TEST(ViewPicture, DoesNotServeWhereItsPixelsAreNotTheDevices)
{
    EXPECT_FALSE(servesAfter([](QPainter& painter) { painter.rotate(10.0); }));
    EXPECT_FALSE(servesAfter([](QPainter& painter) { painter.shear(0.1, 0.0); }));
    EXPECT_FALSE(servesAfter([](QPainter& painter) { painter.translate(0.5, 0.0); }));
    EXPECT_FALSE(servesAfter([](QPainter& painter) { painter.scale(2.0, 1.0); }));
    EXPECT_FALSE(servesAfter([](QPainter& painter) { painter.scale(1.0, -1.0); }));
}

TEST(ViewPicture, DoesNotServeOnPaperAndInRecordings)
{
    PaintedView view;
    view.paint();
    {
        QPicture recording;
        QPainter painter(&recording);
        view.paint(painter);
    }
    EXPECT_TRUE(view.frames.picture().isNull());
    view.paint();
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    {
        QPdfWriter paper(&file);
        QPainter painter(&paper);
        view.paint(painter);
    }
    EXPECT_TRUE(view.frames.picture().isNull());
    EXPECT_GT(file.size(), 0);
    view.paint();
    EXPECT_FALSE(view.frames.picture().isNull()) << "and serves again after that";
}

TEST(ViewPicture, DoesNotServeForFramesThatAreLargerThanADisplay)
{
    PaintedView view;
    view.paint();
    view.size = {100000, 1000};
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    view.paint(painter);
    EXPECT_TRUE(view.frames.picture().isNull());
}

TEST(ViewFrames, KeepTheirFontWhereTheLookNamesSeveralFamilies)
{
    Console console;
    ViewFrames frames;
    const auto state = std::make_shared<ViewState>();
    state->look.fontFamily = "DejaVu Sans Mono, monospace";
    const auto font = frames.plan(console, {}, state, {400, 200})->font;
    EXPECT_EQ(font, frames.plan(console, {}, state, {400, 210})->font);
}

TEST(ViewPainter, PutsTheListAndTheBarOnALightGroundInALightLook)
{
    PaintedView view;
    view.state.look.background = Qt::white;
    view.state.look.text = view.state.look.input = Qt::black;
    view.state.list.offers = {{U"help", U"Says what there is."}};
    view.state.list.count = 1;
    view.state.bar = ViewState::Bar{U"Find: ", U"row", 3, U"1 of 1"};
    const QImage frame = view.paint();
    EXPECT_GT(qGray(frame.pixel(view.plan->list.bottomRight() * view.ratio)), 150);
    EXPECT_GT(qGray(frame.pixel(view.plan->bar.center() * view.ratio)), 150);
}

TEST(PaintItem, PaintsEachLetterOnceWhateverIsMarked)
{
    const ViewFont font("monospace", 10.0);
    PaintItem item;
    item.text = std::make_shared<const PaintedText>(U"a-b-c \u05d0\u05d1 d-e", font);
    item.place = {10.5, 8.0};
    item.ink = Qt::green;
    const auto painted = [&item] {
        QImage image(200, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        item.paint(painter);
        return image;
    };
    const QImage plain = painted();
    for (int unit = 1; unit < 12; unit += 2) {
        item.marks.push_back({unit, 1, {}, Qt::green});
    }
    EXPECT_EQ(plain, painted()) << "in the same colour";
    item.marks.back().ink = Qt::red;
    const QImage colored = painted();
    EXPECT_NE(plain, colored);
    item.marks[0].ground = Qt::blue;
    EXPECT_NE(colored, painted());
}

} // namespace
} // namespace zephyr::console::qt
