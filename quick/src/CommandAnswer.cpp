#include "CommandAnswer.h"

#include "Lines.h"
#include "zephyr/console/Console.h"

#include <QJSEngine>

#include <utility>

namespace zephyr::console::quick {

namespace {

constexpr unsigned kIndent = 4; // spaces

}

CommandAnswer::CommandAnswer(std::weak_ptr<Console> console) : mConsole(std::move(console))
{
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

void CommandAnswer::write(const QString& text)
{
    if (const std::shared_ptr<Console> console = mConsole.lock()) {
        for (const QString& line : linesOf(text)) {
            console->writeIndented(line.toStdU32String(), kIndent);
        }
    }
}

} // namespace zephyr::console::quick
