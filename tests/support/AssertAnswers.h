#ifndef ZEPHYR_TESTS_SUPPORT_ASSERTANSWERS_H
#define ZEPHYR_TESTS_SUPPORT_ASSERTANSWERS_H

#include "zephyr/common/Assert.h"

namespace zephyr::test {

/// While it lives, the support library asks not to be shown verifications.
class SilencedVerifications
{
public:
    SilencedVerifications() { Assert::setShowQAVerify(false); }
    ~SilencedVerifications() { Assert::setShowQAVerify(true); }

    SilencedVerifications(const SilencedVerifications&) = delete;
    SilencedVerifications& operator=(const SilencedVerifications&) = delete;
};

/// From now on no assertion is handled. For death tests, which end with it.
inline void leaveAssertionsUnhandled()
{
    Assert::setHandler([](const AssertFailure&) { return false; });
}

} // namespace zephyr::test

#endif
