#ifndef ZEPHYR_BENCHMARKS_SUPPORT_TEXTEDIT_H
#define ZEPHYR_BENCHMARKS_SUPPORT_TEXTEDIT_H

#include "support/Workload.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QPlainTextEdit>
#include <QString>

#include <cstddef>
#include <memory>

namespace zephyr::bench {

constexpr int kWidth = 1920;  // pixels
constexpr int kHeight = 1080; // pixels
inline const QColor kText(0, 255, 0, 255);
inline const QColor kBackground(0, 0, 0, 204);

/// The alternative for a host: a read-only text field with the same lines, looking the same.
inline std::unique_ptr<QPlainTextEdit> filledTextEdit(std::size_t lines)
{
    QString text;
    for (std::size_t i = 0; i < lines; ++i) {
        text += QString::fromStdU32String(lineText(i)) + QLatin1Char(i + 1 == lines ? ' ' : '\n');
    }
    auto edit = std::make_unique<QPlainTextEdit>(text);
    QPalette palette;
    palette.setColor(QPalette::Base, kBackground);
    palette.setColor(QPalette::Text, kText);
    edit->setPalette(palette);
    edit->setFont(*console::Console().snapshot().font());
    edit->setReadOnly(true);
    edit->setUndoRedoEnabled(false);
    edit->setFrameShape(QFrame::NoFrame);
    edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit->resize(kWidth, kHeight);
    edit->show(); // otherwise it does not know how many lines fit
    return edit;
}

} // namespace zephyr::bench

#endif
