#include "zephyr/console/quick/ConsoleHandle.h"

#include "DeclaredCommands.h"
#include "zephyr/common/Assert.h"

#include <utility>

namespace zephyr::console::quick {

namespace {

std::shared_ptr<Console> orNew(std::shared_ptr<Console> console)
{
    if (!console) {
        Assert::notifyAssert("ConsoleHandle", __LINE__, "console", "", true);
        return std::make_shared<Console>();
    }
    return console;
}

} // namespace

ConsoleHandle::ConsoleHandle(QObject* parent) : ConsoleHandle(std::make_shared<Console>(), parent) {}

ConsoleHandle::ConsoleHandle(std::shared_ptr<Console> console, QObject* parent)
    : QObject(parent),
      mConsole(orNew(std::move(console))),
      mCommands(std::make_shared<DeclaredCommands>(mConsole))
{}

ConsoleHandle::~ConsoleHandle() = default;

const std::shared_ptr<Console>& ConsoleHandle::console() const { return mConsole; }

} // namespace zephyr::console::quick
