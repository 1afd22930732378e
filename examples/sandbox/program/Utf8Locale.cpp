#include "sandbox/program/Utf8Locale.h"

#include <QByteArray>
#include <QtGlobal>

#include <clocale>

#include <langinfo.h>

namespace zephyr::sandbox {

void ensureUtf8Locale()
{
    std::setlocale(LC_ALL, "");
    if (QByteArray(nl_langinfo(CODESET)) != "UTF-8") {
        // Nothing here uses the other conventions of a locale, and one name that isn't installed spoils all.
        qputenv("LC_ALL", "C.UTF-8");
    }
}

} // namespace zephyr::sandbox
