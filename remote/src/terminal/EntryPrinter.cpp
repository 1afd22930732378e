#include "terminal/EntryPrinter.h"

#include <QByteArray>
#include <QChar>

#include <unistd.h>

namespace zephyr::console::remote {

namespace {

constexpr char kBold[] = "\x1b[1m";
constexpr char kYellow[] = "\x1b[33m";
constexpr char kPlain[] = "\x1b[0m";

bool isTerminalWithColours()
{
    const QByteArray terminal = qgetenv("TERM");
    return !terminal.isEmpty() && terminal != "dumb" && qgetenv("NO_COLOR").isEmpty();
}

QString coloured(Entry::Type type, const QString& text)
{
    switch (type) {
    case Entry::Type::Input: return kBold + text + kPlain;
    case Entry::Type::Prompt: return kYellow + text + kPlain;
    case Entry::Type::Output: return text;
    }
    return text;
}

} // namespace

QString harmless(const QString& text)
{
    constexpr char16_t kCaret = 0x40; // what is added to a control character for the letter behind the caret
    QString shown;
    shown.reserve(text.size());
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code == u'\t' || code == u'\n' || (code >= 0x20 && code < 0x7f) || code > 0x9f) {
            shown += c;
        } else if (code >= 0x80) {
            shown += QChar(QChar::ReplacementCharacter);
        } else {
            shown += u'^';
            shown += QChar(static_cast<char16_t>(code ^ kCaret));
        }
    }
    return shown;
}

EntryPrinter::EntryPrinter(std::FILE* out)
    : mOut(out),
      mIsTerminal(::isatty(::fileno(out)) == 1),
      mHasColours(mIsTerminal && isTerminalWithColours())
{}

QString EntryPrinter::text(const Entry& entry) const
{
    QString text = shownText(entry);
    if (!mIsTerminal) {
        return text;
    }
    return mHasColours ? coloured(entry.type, harmless(text)) : harmless(text);
}

bool EntryPrinter::print(const Entry& entry)
{
    const QByteArray line = (text(entry) + u'\n').toUtf8();
    const auto size = static_cast<std::size_t>(line.size());
    return std::fwrite(line.constData(), 1, size, mOut) == size && std::fflush(mOut) == 0;
}

} // namespace zephyr::console::remote
