#ifndef ZEPHYR_TESTS_SUPPORT_ASSERTRECORDER_H
#define ZEPHYR_TESTS_SUPPORT_ASSERTRECORDER_H

#include "zephyr/common/Assert.h"

#include <string>
#include <utility>
#include <vector>

namespace zephyr::test {

/// Records each assertion that fails while it lives, as "source:line: expression", and reports it as handled.
class AssertRecorder
{
public:
    AssertRecorder()
        : mPrevious(Assert::setHandler([this](const AssertFailure& failure) {
              mFailures.push_back(std::string(failure.source) + ":" + std::to_string(failure.line) + ": " +
                                  failure.expression);
              mMessages.emplace_back(failure.message);
              return true;
          }))
    {}

    ~AssertRecorder() { Assert::setHandler(std::move(mPrevious)); }

    AssertRecorder(const AssertRecorder&) = delete;
    AssertRecorder& operator=(const AssertRecorder&) = delete;

    const std::vector<std::string>& failures() const { return mFailures; }
    const std::vector<std::string>& messages() const { return mMessages; }

private:
    std::vector<std::string> mFailures;
    std::vector<std::string> mMessages;
    Assert::Handler mPrevious;
};

} // namespace zephyr::test

#endif
