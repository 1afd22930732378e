#include "terminal/LineEditor.h"

#include "terminal/EditedLines.h"
#include "terminal/PlainLines.h"

#include <QByteArray>

#include <utility>

#include <unistd.h>

namespace zephyr::console::remote {

namespace {

bool isTerminal(std::FILE* stream) { return ::isatty(::fileno(stream)) == 1; }

bool canMoveItsCursor()
{
    const QByteArray terminal = qgetenv("TERM");
    return !terminal.isEmpty() && terminal != "dumb";
}

std::unique_ptr<LineSource> sourceFor(std::FILE* in, std::FILE* out, const QString& prompt,
                                      LineCallbacks callbacks)
{
    if (!isTerminal(in) || !isTerminal(out) || !canMoveItsCursor()) {
        return std::make_unique<PlainLines>(in, out, std::move(callbacks), true);
    }
    if (std::unique_ptr<LineSource> source = EditedLines::create(in, out, prompt, callbacks)) {
        return source;
    }
    return std::make_unique<PlainLines>(in, out, std::move(callbacks), false);
}

} // namespace

LineEditor::LineEditor(std::FILE* in, std::FILE* out, const QString& prompt, LineCallbacks callbacks)
    : mSource(sourceFor(in, out, prompt, std::move(callbacks)))
{}

LineEditor::~LineEditor() = default;

void LineEditor::setHistoryFile(const QString& path) { mSource->setHistoryFile(path); }
void LineEditor::print(const QString& text) { mSource->print(text); }
void LineEditor::setPromptShown(bool shown) { mSource->setPromptShown(shown); }
bool LineEditor::isInteractive() const { return mSource->isInteractive(); }

} // namespace zephyr::console::remote
