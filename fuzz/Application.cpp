#include "zephyr/common/Assert.h"

#include <QGuiApplication>
#include <QtGlobal>

using zephyr::Assert;
using zephyr::AssertFailure;

/// Called by the fuzzer once, before the first input: the application that fonts and the clipboard need.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    Assert::setHandler([](const AssertFailure&) { return true; });
    return 0;
}
