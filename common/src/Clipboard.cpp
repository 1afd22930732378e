#include "zephyr/common/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

namespace zephyr {

std::u32string Clipboard::text()
{
    // Qt crashes when it is asked for a clipboard while there is only a QCoreApplication.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return {};
    }
    return QGuiApplication::clipboard()->text().toStdU32String();
}

} // namespace zephyr
