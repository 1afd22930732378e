#include "attach/ScriptInput.h"

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace zephyr::attach {

using console::remote::kMaxScriptLineBytes;
using console::remote::ScriptLine;

namespace {

constexpr char kCantRead[] = "Can't read '%1': %2.";
constexpr char kTooLong[] = "%1a line of more than %2 bytes is too long.";
constexpr char kPlace[] = "%1:%2: ";

constexpr std::size_t kReadAtATime = 1U << 16U; // bytes

} // namespace

ScriptInput::ScriptInput(const QString& script) : mIsAtEnd(true)
{
    mScript.add(script.toUtf8());
    mScript.end();
}

ScriptInput::ScriptInput(std::unique_ptr<QFile> file, QString name)
    : mFile(std::move(file)),
      mName(std::move(name)),
      mNotifier(std::make_unique<QSocketNotifier>(mFile->handle(), QSocketNotifier::Read))
{
    mNotifier->setEnabled(false);
    QObject::connect(mNotifier.get(), &QSocketNotifier::activated, mNotifier.get(), [this] { readMore(); });
}

void ScriptInput::next(std::function<void(const std::optional<ScriptLine>&)> taken)
{
    const std::optional<ScriptLine> line = mError ? std::nullopt : mScript.next();
    if (!line && !mError && mScript.isOverLimit()) {
        fail(QString(kTooLong).arg(placeOf({mScript.lineCount() + 1, {}})).arg(kMaxScriptLineBytes));
    }
    if (line || mIsAtEnd) {
        taken(line);
        return;
    }
    mTaken = std::move(taken);
    mNotifier->setEnabled(true);
}

QString ScriptInput::placeOf(const ScriptLine& line) const
{
    return mName.isEmpty() ? QString() : QString(kPlace).arg(mName).arg(line.number);
}

void ScriptInput::readMore()
{
    mNotifier->setEnabled(false); // reads no more than is wanted
    std::array<char, kReadAtATime> bytes{};
    const ssize_t size = ::read(mFile->handle(), bytes.data(), bytes.size());
    if (size > 0) {
        mScript.add(QByteArray(bytes.data(), size));
    } else if (size == 0) {
        mScript.end();
        mIsAtEnd = true;
    } else if (errno != EINTR && errno != EAGAIN) {
        fail(QString(kCantRead).arg(mName, QString::fromStdString(std::generic_category().message(errno))));
    }
    next(std::exchange(mTaken, {}));
}

void ScriptInput::fail(const QString& error)
{
    mError = error;
    mIsAtEnd = true;
}

} // namespace zephyr::attach
