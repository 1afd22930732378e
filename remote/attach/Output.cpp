#include "attach/Output.h"

#include "attach/Complaint.h"
#include "protocol/Json.h"

#include <cerrno>
#include <system_error>

namespace zephyr::attach {

namespace {

constexpr char kCantPrint[] = "Can't write standard output: %1.";

/// An entry as JSON, on one line without its line feed. Control characters that JSON lets through are escaped as well: the
/// line may be for a terminal.
QString jsonText(const console::remote::Entry& entry)
{
    const QString json = QString::fromUtf8(console::remote::toLine(toJson(entry))).chopped(1);
    QString text;
    text.reserve(json.size());
    for (const QChar c : json) {
        if (c.category() == QChar::Other_Control) {
            text += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QChar(u'0'));
        } else {
            text += c;
        }
    }
    return text;
}

} // namespace

bool write(const QByteArray& bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0) {
        return true;
    }
    if (errno != EPIPE) {
        complain(QString(kCantPrint).arg(QString::fromStdString(std::generic_category().message(errno))));
    }
    return false;
}

bool Output::print(const console::remote::Entry& entry) const { return write(text(entry).toUtf8() + '\n'); }

QString Output::text(const console::remote::Entry& entry) const
{
    return mIsJson ? jsonText(entry) : mPrinter.text(entry);
}

} // namespace zephyr::attach
