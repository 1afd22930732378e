#include "zephyr/console/widgets/ConsoleOverlay.h"

#include "Cover.h"
#include "zephyr/common/Assert.h"

#include <QChildEvent>
#include <QPainter>

namespace zephyr::console::widgets {

namespace {

/// Keeps the events about one child from its parent while it lives. A splitter makes a pane of each child that it is
/// told of.
class UnseenChild : public QObject
{
public:
    UnseenChild(const QObject& child, QObject& parent) : mChild(child) { parent.installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        const bool isAboutChildren =
            event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildPolished;
        return isAboutChildren && static_cast<QChildEvent*>(event)->child() == &mChild;
    }

private:
    const QObject& mChild;
};

void makeChild(QWidget& widget, QWidget& parent)
{
    const UnseenChild unseen(widget, parent);
    widget.setParent(&parent);
    widget.ensurePolished(); // later the parent would be told
}

void reportNull(const char* name)
{
    constexpr const char* kSource = "ConsoleOverlay";
    if (!Assert::notifyAssert(kSource, __LINE__, name, "", true)) {
        qt_assert(name, kSource, __LINE__);
    }
}

} // namespace

class ConsoleOverlay::Private
{
public:
    Private(ConsoleOverlay& overlay, const std::shared_ptr<Console>& console)
        : mConsole(console ? console : std::make_shared<Console>()),
          mHost(mConsole, &overlay),
          mCover(overlay)
    {}

    const std::shared_ptr<Console> mConsole;
    qt::ConsoleHost mHost;
    Cover mCover;
};

ConsoleOverlay::ConsoleOverlay(QWidget* over, const std::shared_ptr<Console>& console)
{
    if (over != nullptr) {
        makeChild(*this, *over);
    } else {
        reportNull("over");
    }
    mPrivate = std::make_unique<Private>(*this, console);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    connect(&host(), &qt::ConsoleHost::openChanged, this, &QWidget::setVisible);
    disconnect(&host(), &qt::ConsoleHost::repaintNeeded, this,
               nullptr); // which would repaint all of what lies below
    connect(&host(), &qt::ConsoleHost::repaintNeeded, this, [this] { update(host().changedRegion()); });
    ConsoleOverlay::setVisible(host().isOpen());
}

ConsoleOverlay::~ConsoleOverlay() = default;

const std::shared_ptr<Console>& ConsoleOverlay::console() const { return mPrivate->mConsole; }

qt::ConsoleHost& ConsoleOverlay::host() { return mPrivate->mHost; }

void ConsoleOverlay::setVisible(bool visible)
{
    const bool isShown = visible && mPrivate->mHost.isOpen() && parentWidget() != nullptr;
    if (isShown) {
        mPrivate->mCover.begin();
    } else {
        mPrivate->mCover.end();
    }
    QWidget::setVisible(isShown);
}

// The widget's own font stays out: what it sets beyond the console's font, such as italic letters, would be painted.
void ConsoleOverlay::initPainter(QPainter*) const {}

void ConsoleOverlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    mPrivate->mHost.paint(painter);
}

} // namespace zephyr::console::widgets
