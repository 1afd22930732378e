#ifndef ZEPHYR_CONSOLE_ASSERTREPORT_H
#define ZEPHYR_CONSOLE_ASSERTREPORT_H

#include "zephyr/common/Assert.h"

#include <QtGlobal>

namespace zephyr::console {

/// Reports a programming error of the host to the application's assertion handler. The source name and the
/// line are part of the interface. When the handler answers false, Qt's assertion ends the program; otherwise
/// the calling function goes on with a harmless result.
inline void reportAssertion(const char* source, int line, const char* expression)
{
    constexpr bool kCanContinue = true;
    if (!Assert::notifyAssert(source, line, expression, "", kCanContinue)) {
        qt_assert(expression, source, line);
    }
}

/// The same, but silent while the application has Assert::showQAVerify() turned off.
inline void reportVerification(const char* source, int line, const char* expression)
{
    if (Assert::showQAVerify()) {
        reportAssertion(source, line, expression);
    }
}

} // namespace zephyr::console

#endif
