#include "zephyr/common/Assert.h"

#include <QDebug>

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

namespace zephyr {

namespace {

constexpr const char* kAssertionFailed = ": assertion failed: ";
constexpr const char* kBeforeMessage = ": ";

struct HandlerSlot
{
    std::mutex mutex;
    std::shared_ptr<const Assert::Handler> handler;
};

HandlerSlot& handlerSlot()
{
    // Never destroyed, since destructors of static objects may still report failures.
    static auto* const slot = new HandlerSlot;
    return *slot;
}

std::atomic<bool>& showQAVerifyFlag()
{
    static std::atomic<bool> show = true;
    return show;
}

// Shared, not copied, so that a handler keeps its own state from call to call.
std::shared_ptr<const Assert::Handler> currentHandler()
{
    HandlerSlot& slot = handlerSlot();
    const std::lock_guard lock(slot.mutex);
    return slot.handler;
}

bool logWarning(const AssertFailure& failure)
{
    QDebug warning = qWarning().nospace();
    warning << failure.source << ':' << failure.line << kAssertionFailed << failure.expression;
    if (failure.message != nullptr && *failure.message != '\0') {
        warning << kBeforeMessage << failure.message;
    }
    return true;
}

} // namespace

bool Assert::notifyAssert(const char* source, int line, const char* expression, const char* message,
                          bool canContinue)
{
    const AssertFailure failure{source, line, expression, message, canContinue};
    const std::shared_ptr<const Handler> handler = currentHandler();
    return handler ? (*handler)(failure) : logWarning(failure);
}

Assert::Handler Assert::setHandler(Handler handler)
{
    std::shared_ptr<const Handler> exchanged =
        handler ? std::make_shared<const Handler>(std::move(handler)) : nullptr;
    {
        HandlerSlot& slot = handlerSlot();
        const std::lock_guard lock(slot.mutex);
        slot.handler.swap(exchanged);
    }
    return exchanged ? *exchanged : Handler();
}

bool Assert::showQAVerify() { return showQAVerifyFlag(); }

void Assert::setShowQAVerify(bool show) { showQAVerifyFlag() = show; }

} // namespace zephyr
