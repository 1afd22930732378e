#include "zephyr/common/Assert.h"

#include <QGuiApplication>
#include <QtGlobal>

using zephyr::Assert;
using zephyr::AssertFailure;

/// Creates the application that fonts and the clipboard need. The fuzzer calls this once, before the first input.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    Assert::setHandler([](const AssertFailure&) { return true; });
    return 0;
}
