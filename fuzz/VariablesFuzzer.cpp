// Runs any bytes as a file of variables, and expects what is saved then to bring back every value.

#include "Require.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/commands/QtValues.h"
#include "zephyr/console/commands/StandardCommands.h"
#include "zephyr/console/commands/Variable.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zephyr::fuzz {
namespace {

using console::Console;
using namespace console::commands;

struct Variables
{
    explicit Variables(Console& console)
        : number(console, U"n", 0.5, U""),
          count(console, U"c", 1, U"", between(-5, 1000000)),
          text(console, U"t", U"text", U""),
          time(console, U"d", std::chrono::microseconds(1), U""),
          size(console, U"s", QSize(1, 2), U"")
    {
        addVars(console);
    }

    std::u32string all() const
    {
        return Value<double>::write(number.value()) + U'\n' + Value<int>::write(count.value()) + U'\n' +
               text.value() + U'\n' + Value<std::chrono::microseconds>::write(time.value()) + U'\n' +
               Value<QSize>::write(size.value());
    }

    Variable<double> number;
    Variable<int> count;
    Variable<std::u32string> text;
    Variable<std::chrono::microseconds> time;
    Variable<QSize> size;
};

/// The lines of `bytes` that set variables, and write no file.
std::string confined(std::string_view bytes)
{
    std::string file;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        const std::string_view line = bytes.substr(0, end);
        if (line.find('>') == line.npos && line.find("save") == line.npos &&
            line.find("alias") == line.npos) {
            file += std::string(line) + '\n';
        }
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return file;
}

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace zephyr;
    const test::TemporaryDirectory directory;
    console::Console first;
    const fuzz::Variables saved(first);
    const auto given = directory.write("given", fuzz::confined({reinterpret_cast<const char*>(bytes), size}));
    fuzz::require(first.runFile(given), "the file opens");
    const std::u32string path = StringUtil::toU32String((directory.path() / "saved.console").string());
    first.execute(U"vars save " + path);

    console::Console second;
    const fuzz::Variables restored(second);
    fuzz::require(second.runFile(directory.path() / "saved.console"), "the saved file opens");
    fuzz::require(saved.all() == restored.all(), "every value is restored");
    return 0;
}
