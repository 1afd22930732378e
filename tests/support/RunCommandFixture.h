#ifndef ZEPHYR_TESTS_SUPPORT_RUNCOMMANDFIXTURE_H
#define ZEPHYR_TESTS_SUPPORT_RUNCOMMANDFIXTURE_H

#include "support/ConsoleFilesFixture.h"
#include "zephyr/console/RunConsoleFileCommand.h"

#include <memory>
#include <string>

namespace zephyr::test {

/// Console files, and a console that has the command `run`.
class RunCommandFixture : public ConsoleFilesFixture
{
protected:
    RunCommandFixture() { mConsole.registerCommand(std::make_unique<console::RunConsoleFileCommand>()); }

    /// The log of a `line` that writes `middle`: its echo, `middle` and the empty line at the end.
    static Lines around(const std::string& line, const Lines& middle)
    {
        Lines lines = {echo(line)};
        lines.insert(lines.end(), middle.begin(), middle.end());
        lines.push_back(output(""));
        return lines;
    }

    /// The log of a line with one word, which is neither a command nor an alias.
    static Lines unknown(const std::string& word) { return around(word, {output(notRecognized(word))}); }
};

/// What `run` writes when it finds no file.
inline const LogLine kNothingRun =
    output("ERROR: Didn't find a console file with the specified name.  Nothing will be run.", 4);

/// What `run` writes for a wrong number of words.
inline const LogLine kRunUsage = output("run command help text", 4);

} // namespace zephyr::test

#endif
