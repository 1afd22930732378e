#include "attach/Output.h"

#include "attach/Complaint.h"
#include "protocol/Json.h"

#include <cerrno>
#include <system_error>

namespace zephyr::attach {

namespace {

constexpr char kCantPrint[] = "Can't write standard output: %1.";

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
    return mIsJson ? QString::fromUtf8(console::remote::toLine(toJson(entry))).chopped(1)
                   : mPrinter.text(entry);
}

} // namespace zephyr::attach
