#include "sandbox/probe/KeyProbe.h"

#include "sandbox/probe/KeyReport.h"

#include <QColor>
#include <QFontDatabase>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QPainter>

#include <utility>

namespace zephyr::sandbox {

namespace {

constexpr char kProbeTitle[] = "zephyr-sandbox keys";
constexpr char kHint[] = "Press keys. Closing the window, or pressing Escape twice, ends this.\n"
                         "A press that went elsewhere mostly went to the input method, as an accent's does.";

constexpr QSize kSize(1000, 400); // pixels
constexpr QColor kGroundColor(11, 16, 32);
constexpr QColor kHintColor(150, 170, 195);
constexpr QColor kTextColor(0, 255, 0);
constexpr int kMargin = 12; // pixels
constexpr int kShownLines = 10;
constexpr int kEscapesToEnd = 2;

} // namespace

KeyProbe::KeyProbe(std::function<void(const QString& line)> reportLine) : mReportLine(std::move(reportLine))
{
    setTitle(kProbeTitle);
    resize(kSize);
}

bool KeyProbe::event(QEvent* event)
{
    if (event->type() == QEvent::InputMethodQuery) {
        auto& query = static_cast<QInputMethodQueryEvent&>(*event);
        query.setValue(Qt::ImEnabled, true);
        query.setValue(Qt::ImHints, static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase));
        query.accept();
        return true;
    }
    if (event->type() == QEvent::InputMethod) {
        const QString text = static_cast<QInputMethodEvent&>(*event).commitString();
        if (!text.isEmpty()) {
            report(commitReport(text));
        }
        return true;
    }
    return QRasterWindow::event(event);
}

void KeyProbe::keyPressEvent(QKeyEvent* event)
{
    if (event->isAutoRepeat()) {
        return;
    }
    mHeldKeys.insert(event->nativeScanCode());
    report(pressReport(*event));
    countEscapes(*event);
}

void KeyProbe::keyReleaseEvent(QKeyEvent* event)
{
    if (!event->isAutoRepeat() && !mHeldKeys.remove(event->nativeScanCode())) {
        report(strayReleaseReport(*event));
    }
}

void KeyProbe::focusOutEvent(QFocusEvent* event)
{
    mHeldKeys.clear(); // their releases go to another window
    QRasterWindow::focusOutEvent(event);
}

void KeyProbe::report(const QString& line)
{
    mReportLine(line);
    mLines += line;
    if (mLines.size() > kShownLines) {
        mLines.removeFirst();
    }
    update();
}

void KeyProbe::countEscapes(const QKeyEvent& event)
{
    const bool isEscape = event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier;
    mEscapes = isEscape ? mEscapes + 1 : 0;
    if (mEscapes == kEscapesToEnd) {
        close();
    }
}

void KeyProbe::paintEvent(QPaintEvent*)
{
    const QRect area = QRect(QPoint(), size());
    QPainter painter(this);
    painter.fillRect(area, kGroundColor);
    painter.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const int gap = painter.fontMetrics().height() / 2;
    QRect rest = area.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const auto write = [&](const QString& text) {
        QRect used;
        painter.drawText(rest, Qt::TextWordWrap, text, &used);
        rest.setTop(used.bottom() + gap);
    };
    painter.setPen(kHintColor);
    write(kHint);
    painter.setPen(kTextColor);
    for (const QString& text : std::as_const(mLines)) {
        write(text);
    }
}

} // namespace zephyr::sandbox
