#ifndef ZEPHYR_TESTS_SUPPORT_ASSERTANSWERS_H
#define ZEPHYR_TESTS_SUPPORT_ASSERTANSWERS_H

#include "zephyr/common/Assert.h"

namespace zephyr::test {

/// Switches verifications off for as long as it lives.
class SilencedVerifications
{
public:
    SilencedVerifications() { Assert::setShowQAVerify(false); }
    ~SilencedVerifications() { Assert::setShowQAVerify(true); }

    SilencedVerifications(const SilencedVerifications&) = delete;
    SilencedVerifications& operator=(const SilencedVerifications&) = delete;
};

/// Leaves every assertion unhandled from now on. Only for death tests, whose process ends with the test.
inline void leaveAssertionsUnhandled()
{
    Assert::setHandler([](const AssertFailure&) { return false; });
}

} // namespace zephyr::test

#endif
