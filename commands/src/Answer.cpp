#include "zephyr/console/commands/Answer.h"

#include "AnswerTexts.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/IWriteableConsole.h"

#include <utility>

namespace zephyr::console::commands {

Answer::Answer(IWriteableConsole& console) : mConsole(console) {}

void Answer::append(std::u32string_view text)
{
    for (std::size_t end = text.find(U'\n'); end != std::u32string_view::npos; end = text.find(U'\n')) {
        mLine += text.substr(0, end);
        mHasBegun = true; // an empty line too
        flush();
        text.remove_prefix(end + 1);
    }
    mLine += text;
    mHasBegun = mHasBegun || !text.empty();
}

void Answer::append(std::string_view text) { append(StringUtil::toU32String(text)); }

void Answer::flush()
{
    if (std::exchange(mHasBegun, false)) {
        mConsole.writeIndented(std::exchange(mLine, {}), kAnswerIndent);
    }
}

} // namespace zephyr::console::commands
