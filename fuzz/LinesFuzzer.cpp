// Executes lines, separated by line feeds, with redirections into a temporary directory.

#include "FuzzedConsole.h"
#include "Require.h"
#include "SplitString.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/ConsoleArgs.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zephyr::fuzz {
namespace {

namespace fs = std::filesystem;
using console::Console;
using console::ConsoleArgs;
using console::ConsoleSnapshot;

constexpr std::size_t kMostSteps = 60;
constexpr std::size_t kLongestName = 255; // bytes, the limit of the file system

/// The log lines in [first, end), as a redirect file must hold them.
std::string fileText(const ConsoleSnapshot& snapshot, std::size_t first, std::size_t end)
{
    std::string text;
    for (std::size_t i = first; i < end; ++i) {
        text += StringUtil::toString(snapshot.lines()[i].text) + '\n';
    }
    return text;
}

/// Whether the file at `path` holds exactly `text`. False if no file can have that name.
bool holds(const std::string& path, const std::string& text)
{
    if (path.empty() || path.size() > kLongestName || fs::is_directory(path)) {
        return true;
    }
    std::ifstream stream(path, std::ios::binary);
    return stream.is_open() && std::string(std::istreambuf_iterator<char>(stream), {}) == text;
}

std::vector<std::u32string> wordsOf(std::u32string line)
{
    console::maskQuoted(line, U' ');
    std::vector<std::u32string> words = console::splitString(line, U' ');
    for (std::u32string& word : words) {
        console::unmask(word, U' ');
    }
    return words;
}

/// Follows the redirect stream through lines whose commands run no lines themselves.
class RedirectWatch
{
public:
    explicit RedirectWatch(FuzzedConsole& fuzzed) : mFuzzed(fuzzed) {}

    void execute(const std::u32string& line)
    {
        const std::size_t before = logSize();
        // Look before the line runs, since it may change the tables.
        const std::optional<ConsoleArgs> command = commandOf(line);
        const bool isAlias = leadsToAlias(line);
        const bool threw = mFuzzed.step([&line](Console& console) { console.execute(line); });
        if (isAlias || mFuzzed.ranInnerLines()) {
            mIsKnown = false;
        } else if (command) {
            followCommand(*command, before, threw);
        }
    }

private:
    /// An open redirection: a file, and the log lines that belong in it.
    struct Redirection
    {
        std::string path;
        std::size_t first;
        std::optional<std::size_t> end; // empty while lines still go to the file
    };

    std::size_t logSize() { return mFuzzed.console().snapshot().lines().size(); }

    bool leadsToAlias(const std::u32string& line)
    {
        const std::vector<std::u32string> words = wordsOf(line);
        return !words.empty() && mFuzzed.console().lookupAlias(words.front()) != nullptr;
    }

    std::optional<ConsoleArgs> commandOf(const std::u32string& line)
    {
        const std::vector<std::u32string> words = wordsOf(line);
        if (words.empty() || mFuzzed.console().lookupCommand(words.front()) == nullptr) {
            return std::nullopt;
        }
        return ConsoleArgs(words);
    }

    void followCommand(const ConsoleArgs& command, std::size_t before, bool threw)
    {
        const std::string target = StringUtil::toString(command.redirectTarget());
        if (mIsKnown && !target.empty()) {
            openFor(target.c_str(), before + 1); // a file name ends at its first zero byte
        }
        if (threw) {
            return;
        }
        if (mIsKnown && mOpen) {
            const std::size_t end =
                mOpen->end.value_or(logSize() - 1); // without the empty line that closes the answer
            require(holds(mOpen->path, fileText(mFuzzed.console().snapshot(), mOpen->first, end)),
                    "a redirect file holds the lines that were logged");
        }
        mOpen.reset();
        mIsKnown = true;
    }

    void openFor(std::string path, std::size_t first)
    {
        if (mOpen) {
            // The stream is still open because a command threw. Nothing from here on reaches the file.
            mOpen->end = mOpen->end.value_or(first);
        } else {
            mOpen = Redirection{std::move(path), first, std::nullopt};
        }
    }

    FuzzedConsole& mFuzzed;
    std::optional<Redirection> mOpen;
    bool mIsKnown = true;
};

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace zephyr;
    const std::u32string text = StringUtil::toU32String({reinterpret_cast<const char*>(bytes), size});
    fuzz::FuzzedConsole fuzzed;
    fuzz::RedirectWatch watch(fuzzed);
    std::size_t steps = 0;
    for (const std::u32string& line : console::splitString(text, U'\n')) {
        if (++steps > fuzz::kMostSteps) {
            break;
        }
        watch.execute(fuzz::confined(line));
    }
    return 0;
}
