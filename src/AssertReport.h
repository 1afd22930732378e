#ifndef ZEPHYR_CONSOLE_ASSERTREPORT_H
#define ZEPHYR_CONSOLE_ASSERTREPORT_H

#include "zephyr/common/Assert.h"

#include <QtGlobal>

namespace zephyr::console {

/// Reports a broken promise of the caller to the application's assertion handler, under a source name and
/// line that are part of the interface. Where the handler declines, Qt's assertion ends the program;
/// otherwise the caller goes on with a harmless result.
inline void reportAssertion(const char* source, int line, const char* expression)
{
    constexpr bool kCanContinue = true;
    if (!Assert::notifyAssert(source, line, expression, "", kCanContinue)) {
        qt_assert(expression, source, line);
    }
}

/// As reportAssertion(), but silent where the application has turned these checks off.
inline void reportVerification(const char* source, int line, const char* expression)
{
    if (Assert::showQAVerify()) {
        reportAssertion(source, line, expression);
    }
}

} // namespace zephyr::console

#endif
