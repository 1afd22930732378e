#include "sandbox/program/Complaint.h"

#include <cstdio>

namespace zephyr::sandbox {

namespace {

constexpr char kProgram[] = "zephyr-sandbox: ";
constexpr char kCantPrint[] = "can't write standard output: %1.";

} // namespace

void complain(const QString& what)
{
    const QByteArray line = kProgram + what.simplified().toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

void complainAboutOutput(const std::string& why)
{
    complain(QString(kCantPrint).arg(QString::fromStdString(why)));
}

} // namespace zephyr::sandbox
