#ifndef ZEPHYR_TESTS_SANDBOX_PROGRAMRUN_H
#define ZEPHYR_TESTS_SANDBOX_PROGRAMRUN_H

#include "support/TemporaryDirectory.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <functional>
#include <stdexcept>
#include <string>

namespace zephyr::test {

constexpr int kProcessTimeout = 200000; // milliseconds, less than CTest's own timeout

/// How a program ended and what it wrote.
struct Ended
{
    int exitCode;
    std::string out;
    std::string err;
};

/// zephyr-sandbox as a process, in a current directory that is empty at first.
class Program
{
public:
    Program()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_RUNTIME_DIR", QString::fromStdString(mRuntimeDirectory.path().string()));
        mProcess.setProcessEnvironment(environment);
        mProcess.setWorkingDirectory(QString::fromStdString(mDirectory.path().string()));
    }

    /// The program's current directory.
    const TemporaryDirectory& directory() const { return mDirectory; }

    QProcess& process() { return mProcess; }

    void setEnvironment(const QString& name, const QString& value)
    {
        QProcessEnvironment environment = mProcess.processEnvironment();
        environment.insert(name, value);
        mProcess.setProcessEnvironment(environment);
    }

    void removeEnvironment(const QString& name)
    {
        QProcessEnvironment environment = mProcess.processEnvironment();
        environment.remove(name);
        mProcess.setProcessEnvironment(environment);
    }

    void start(const QStringList& arguments)
    {
        mProcess.start(ZEPHYR_SANDBOX_PROGRAM, arguments);
        if (!mProcess.waitForStarted()) {
            throw std::runtime_error("can't start " ZEPHYR_SANDBOX_PROGRAM);
        }
    }

    /// Waits until `isSo` returns true. Throws if the program ends or the time is up.
    void waitUntil(const std::function<bool()>& isSo)
    {
        const QDeadlineTimer deadline(kProcessTimeout);
        while (!isSo()) {
            if (deadline.hasExpired()) {
                throw std::runtime_error("the program is running, but what the test waits for doesn't come");
            }
            if (mProcess.waitForFinished(1)) {
                throw std::runtime_error("the program ended: " +
                                         mProcess.readAllStandardError().toStdString());
            }
        }
    }

    /// Waits for the program to end by itself.
    Ended end()
    {
        if (!mProcess.waitForFinished(kProcessTimeout) || mProcess.exitStatus() != QProcess::NormalExit) {
            throw std::runtime_error("the program hung or crashed: " +
                                     mProcess.readAllStandardError().toStdString());
        }
        return {mProcess.exitCode(), mProcess.readAllStandardOutput().toStdString(),
                mProcess.readAllStandardError().toStdString()};
    }

    Ended run(const QStringList& arguments)
    {
        start(arguments);
        return end();
    }

private:
    TemporaryDirectory mDirectory;
    TemporaryDirectory mRuntimeDirectory;
    QProcess mProcess;
};

} // namespace zephyr::test

#endif
