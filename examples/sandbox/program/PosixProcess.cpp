#include "sandbox/program/PosixProcess.h"

#include <QByteArray>
#include <QtGlobal>

#include <clocale>
#include <csignal>

#include <langinfo.h>

namespace zephyr::sandbox {

void preparePosixProcess()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::setlocale(LC_ALL, ""); // NOLINT(concurrency-mt-unsafe): no other thread runs yet
    if (QByteArray(nl_langinfo(CODESET)) != "UTF-8") { // NOLINT(concurrency-mt-unsafe): nor now
        // Nothing here uses the other conventions of a locale, and one name that isn't installed spoils all.
        qputenv("LC_ALL", "C.UTF-8");
    }
}

} // namespace zephyr::sandbox
