// Runs any bytes as a console file, with Console::runFile() and with the command `run`.

#include "FuzzedConsole.h"
#include "Require.h"
#include "zephyr/common/StringUtil.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zephyr::fuzz {
namespace {

using console::Console;

constexpr std::size_t kMostLines = 200;

/// `bytes` with each line confined, and otherwise unchanged.
std::string confinedFile(std::string_view bytes)
{
    std::string file;
    bool behindRedirection = false;
    for (const char c : bytes) {
        behindRedirection = c != '\n' && (behindRedirection || c == '>');
        if (!behindRedirection || c != '/') {
            file += c;
        }
    }
    return file;
}

/// The number of lines in the file that run: all except empty lines and comments.
std::size_t runLines(std::string_view file)
{
    std::size_t count = 0;
    while (!file.empty()) {
        const std::size_t end = std::min(file.find('\n'), file.size());
        const std::string_view line = file.substr(0, end);
        count += !line.empty() && !StringUtil::trim(line).starts_with("//");
        file.remove_prefix(std::min(end + 1, file.size()));
    }
    return count;
}

std::size_t echoes(const Console& console)
{
    const console::ConsoleSnapshot snapshot = console.snapshot();
    return static_cast<std::size_t>(
        std::count_if(snapshot.lines().begin(), snapshot.lines().end(),
                      [](const console::LogEntry& entry) { return entry.type == console::Input; }));
}

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace zephyr;
    const std::string file = fuzz::confinedFile({reinterpret_cast<const char*>(bytes), size});
    const std::size_t lines = fuzz::runLines(file);
    if (lines > fuzz::kMostLines) {
        return 0; // many lines take long, and show nothing that a few do not
    }
    fuzz::FuzzedConsole fuzzed;
    const test::TemporaryDirectory elsewhere; // no line of the file writes there
    const std::filesystem::path path = elsewhere.write("input.console", file);
    const bool threw = fuzzed.step(
        [&path](console::Console& console) { fuzz::require(console.runFile(path), "the file opens"); });
    const std::size_t echoed = fuzz::echoes(fuzzed.console());
    fuzz::require(threw || echoed >= lines, "each line of the file is echoed");

    fuzzed.console().appendRunpath(elsewhere.path());
    fuzzed.step([](console::Console& console) { console.execute(U"run input"); });
    fuzzed.step(
        [&path](console::Console& console) { fuzz::require(console.runFile(path), "the file opens again"); });
    return 0;
}
