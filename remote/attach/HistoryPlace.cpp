#include "attach/HistoryPlace.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace zephyr::attach {

namespace {

constexpr char kFolder[] = "zephyr-console";
constexpr char kFile[] = "history";

} // namespace

QString historyFile()
{
    const QString given = QFile::decodeName(qgetenv("XDG_STATE_HOME"));
    const QDir state(QDir::isAbsolutePath(given) ? given : QDir::home().filePath(".local/state"));
    state.mkpath(".");
    const QString folder = state.filePath(kFolder);
    mkdir(QFile::encodeName(folder).constData(), S_IRWXU); // fails if it is there
    return QDir(folder).filePath(kFile);
}

} // namespace zephyr::attach
