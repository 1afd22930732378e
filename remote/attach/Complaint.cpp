#include "attach/Complaint.h"

#include "terminal/EntryPrinter.h"

#include <cstdio>

namespace zephyr::attach {

namespace {

constexpr char kProgram[] = "zephyr-attach: ";

} // namespace

void complain(const QString& what)
{
    const QString oneLine = console::remote::harmless(QString(what).replace('\n', ' ').trimmed());
    const QByteArray line = kProgram + oneLine.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

} // namespace zephyr::attach
