#include "MirrorFile.h"

#include <cstddef>

namespace zephyr::console::qt {

MirrorFile::MirrorFile(const QString& name) : mFile(name) {}

bool MirrorFile::write(std::string_view text)
{
    while (!text.empty()) {
        const qint64 size = mFile.write(text.data(), static_cast<qint64>(text.size()));
        if (size <= 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(size)); // the rest fails with a reason
    }
    return true;
}

#ifndef Q_OS_UNIX
bool MirrorFile::open()
{
    return mFile.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}

void blockWriteSignals() {} // which other systems don't send
#endif

} // namespace zephyr::console::qt
