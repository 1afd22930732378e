#include "faults/FailingAllocation.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/remote/Batch.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>
#include <vector>

namespace zephyr::console::remote {
namespace {

TEST(BatchMemory, LeavesRunBatchWhereALineDoesNotFitIntoMemory)
{
    const test::TemporaryDirectory folder;
    const std::filesystem::path file = folder.write("a.console", "// " + std::string(100'000, 'x'));
    std::size_t successes = 0;
    for (bool failed = true; failed; ++successes) {
        Console console;
        std::vector<std::string> failures;
        BatchOptions options;
        options.output = nullptr;
        options.report = [&failures](const std::string& failure) { failures.push_back(failure); };
        const test::FailingAllocation failing(successes);
        bool hasLeft = false;
        try {
            EXPECT_EQ(runBatch(console, file, options), kBatchSucceeded);
        } catch (const std::bad_alloc&) {
            hasLeft = true;
        }
        failed = failing.hasFailed();
        EXPECT_EQ(hasLeft, failed) << "after " << successes << " allocations";
        EXPECT_EQ(failures, std::vector<std::string>());
    }
    EXPECT_GT(successes, 5U);
}

} // namespace
} // namespace zephyr::console::remote
