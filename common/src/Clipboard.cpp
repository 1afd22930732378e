#include "zephyr/common/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

namespace zephyr {

std::u32string Clipboard::text()
{
    // With a mere QCoreApplication, Qt would crash here.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return {};
    }
    return QGuiApplication::clipboard()->text().toStdU32String();
}

} // namespace zephyr
