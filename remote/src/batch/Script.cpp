#include "batch/Script.h"

#include <QChar>
#include <QFile>
#include <QFileInfo>
#include <QStringView>

#include <algorithm>

namespace zephyr::console::remote {

namespace {

constexpr char kCommentMark[] = "//";
constexpr char kCantRead[] = "Can't read '%1': %2.";
constexpr char kIsFolder[] = "it is a folder";
constexpr QChar kByteOrderMark(0xFEFF);

bool isBlank(QChar character) { return character.isSpace() || character == kByteOrderMark; }

QString trimmed(const QString& line)
{
    const auto* const begin = std::find_if_not(line.cbegin(), line.cend(), isBlank);
    const auto end = std::find_if_not(line.crbegin(), std::reverse_iterator(begin), isBlank).base();
    return QStringView(begin, end).toString();
}

} // namespace

void Script::end()
{
    if (mReader.hasRest()) {
        mReader.add("\n");
    }
}

std::optional<ScriptLine> Script::next()
{
    while (const std::optional<QByteArray> bytes = mReader.next()) {
        ++mLineCount;
        QString line = trimmed(QString::fromUtf8(*bytes));
        if (!line.isEmpty() && !line.startsWith(kCommentMark)) {
            return ScriptLine{mLineCount, std::move(line)};
        }
    }
    return std::nullopt;
}

std::optional<QString> openScript(QFile& file)
{
    if (QFileInfo(file.fileName()).isDir()) {
        return QString(kCantRead).arg(file.fileName(), kIsFolder);
    }
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return QString(kCantRead).arg(file.fileName(), file.errorString());
    }
    return std::nullopt;
}

} // namespace zephyr::console::remote
