#include "protocol/SocketPlace.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace zephyr::console::remote {

namespace {

constexpr char kFolderName[] = "zephyr-console";
constexpr char kSuffix[] = ".socket";
constexpr char kLockSuffix[] = ".lock";

constexpr char kBadName[] = "'%1' can't be a program's name: it may have letters, digits, '-', '_' and '.', "
                            "and begins with a letter or digit.";
constexpr char kLongName[] = "The name '%1' is too long: up to %2 characters fit into a socket's path.";
constexpr char kLongFolder[] = "The folder of the sockets, '%1', has too long a path for a socket.";
constexpr char kNotMade[] = "Can't make the folder of the sockets, '%1': %2.";
constexpr char kNotSeen[] = "Can't look at the folder of the sockets, '%1': %2.";
constexpr char kNoFolder[] = "The folder of the sockets, '%1', is no folder.";
constexpr char kOthersFolder[] = "The folder of the sockets, '%1', belongs to another user.";
constexpr char kOpenFolder[] =
    "The folder of the sockets, '%1', is open to other users: its mode must be 700.";

constexpr mode_t kOthers = S_IRWXG | S_IRWXO;

// A socket's path is in an array of the system's, with a zero byte behind it; Qt leaves another byte free.
constexpr qsizetype kMaxPathBytes = sizeof(sockaddr_un::sun_path) - 2;

QString systemError(int number) { return QString::fromStdString(std::generic_category().message(number)); }

/// Whether a folder, or what a link at its place names, belongs to the user alone.
bool isOfUserAlone(const QString& folder)
{
    struct stat seen = {};
    return ::stat(QFile::encodeName(folder).constData(), &seen) == 0 && S_ISDIR(seen.st_mode) &&
           seen.st_uid == geteuid() && (seen.st_mode & kOthers) == 0;
}

bool isSocket(const QString& path)
{
    struct stat seen = {};
    return ::lstat(QFile::encodeName(path).constData(), &seen) == 0 && S_ISSOCK(seen.st_mode);
}

} // namespace

SocketPlace SocketPlace::ofUser()
{
    const QString runtime = QFile::decodeName(qgetenv("XDG_RUNTIME_DIR"));
    if (QDir::isAbsolutePath(runtime) && isOfUserAlone(runtime)) {
        return SocketPlace(QDir(runtime).filePath(kFolderName));
    }
    return SocketPlace(QString("/tmp/%1-%2").arg(kFolderName).arg(geteuid()));
}

QString SocketPlace::socketOf(const QString& name) const { return mFolder + '/' + name + kSuffix; }

QString SocketPlace::lockOf(const QString& name) const { return mFolder + '/' + name + kLockSuffix; }

std::optional<QString> SocketPlace::errorInName(const QString& name) const
{
    static const QRegularExpression pattern(R"(\A[A-Za-z0-9][-A-Za-z0-9_.]*\z)");
    if (maxNameLength() < 1) {
        return QString(kLongFolder).arg(mFolder);
    }
    if (!pattern.match(name).hasMatch()) {
        return QString(kBadName).arg(name);
    }
    if (name.size() > maxNameLength()) {
        return QString(kLongName).arg(name).arg(maxNameLength());
    }
    return std::nullopt;
}

qsizetype SocketPlace::maxNameLength() const
{
    return kMaxPathBytes - QFile::encodeName(socketOf("")).size();
}

std::optional<QString> SocketPlace::make() const
{
    if (mkdir(QFile::encodeName(mFolder).constData(), S_IRWXU) != 0 && errno != EEXIST) {
        return QString(kNotMade).arg(mFolder, systemError(errno));
    }
    return error();
}

std::optional<QString> SocketPlace::error() const
{
    struct stat seen = {};
    if (::lstat(QFile::encodeName(mFolder).constData(), &seen) !=
        0) { // not stat(): others could set a link in /tmp
        return errno == ENOENT ? std::nullopt
                               : std::optional(QString(kNotSeen).arg(mFolder, systemError(errno)));
    }
    if (!S_ISDIR(seen.st_mode)) {
        return QString(kNoFolder).arg(mFolder);
    }
    if (seen.st_uid != geteuid()) {
        return QString(kOthersFolder).arg(mFolder);
    }
    return (seen.st_mode & kOthers) == 0 ? std::nullopt : std::optional(QString(kOpenFolder).arg(mFolder));
}

QStringList SocketPlace::names() const
{
    QStringList names;
    for (const QString& file : QDir(mFolder).entryList({QString("*") + kSuffix}, QDir::System)) {
        const QString name = file.chopped(static_cast<qsizetype>(sizeof(kSuffix) - 1));
        if (!errorInName(name) && isSocket(socketOf(name))) {
            names += name;
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace zephyr::console::remote
