#include "zephyr/common/ExternalProcess.h"

#include "zephyr/common/StringUtil.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QString>
#include <QUrl>

#include <filesystem>
#include <system_error>

namespace zephyr {

bool ExternalProcess::openFileInDefaultApplication(const std::string& path)
{
    if (path.empty() || qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return false;
    }
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error) {
        return false;
    }
    // Rebuilt with one slash at the start: after two, QUrl would read the name of a host.
    const std::filesystem::path file = absolute.root_path() / absolute.relative_path();
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(file.string())));
}

} // namespace zephyr
