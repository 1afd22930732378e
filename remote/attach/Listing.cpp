#include "attach/Listing.h"

#include "protocol/Json.h"

#include <QJsonObject>

#include <algorithm>

namespace zephyr::attach {

using console::remote::RunningProgram;

namespace {

constexpr char kSilent[] = " (doesn't answer)";

} // namespace

QByteArray listing(const std::vector<RunningProgram>& programs)
{
    qsizetype width = 0;
    for (const RunningProgram& program : programs) {
        width = std::max(width, program.name.size());
    }
    QString text;
    for (const RunningProgram& program : programs) {
        text += program.name.leftJustified(width) + "  " + QString::number(program.pid);
        text += QString(program.answers ? "" : kSilent) + '\n';
    }
    return text.toUtf8();
}

QByteArray jsonListing(const std::vector<RunningProgram>& programs)
{
    QByteArray text;
    for (const RunningProgram& program : programs) {
        text += console::remote::toLine(
            QJsonObject{{"name", program.name}, {"pid", program.pid}, {"answers", program.answers}});
    }
    return text;
}

} // namespace zephyr::attach
