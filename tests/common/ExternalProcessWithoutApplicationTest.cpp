#include "zephyr/common/ExternalProcess.h"

#include <QCoreApplication>
#include <QMessageLogContext>
#include <QString>
#include <gtest/gtest.h>

namespace {

using zephyr::ExternalProcess;

/// Tries to open a file where nothing can be opened. If the library passed the request on, Qt would log a
/// warning.
bool openQuietly()
{
    const auto previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            ADD_FAILURE() << text.toStdString();
        });
    const bool opened = ExternalProcess::openFileInDefaultApplication("/tmp/log.txt");
    qInstallMessageHandler(previous);
    return opened;
}

TEST(ExternalProcessWithoutApplication, OpensNothingWithoutAnyApplicationObject)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_FALSE(openQuietly());
}

TEST(ExternalProcessWithoutApplication, OpensNothingWithAnApplicationObjectThatHasNoDesktop)
{
    int argumentCount = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    const QCoreApplication application(argumentCount, arguments);
    EXPECT_FALSE(openQuietly());
}

} // namespace
