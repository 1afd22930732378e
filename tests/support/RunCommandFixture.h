#ifndef ZEPHYR_TESTS_SUPPORT_RUNCOMMANDFIXTURE_H
#define ZEPHYR_TESTS_SUPPORT_RUNCOMMANDFIXTURE_H

#include "support/ConsoleFilesFixture.h"
#include "zephyr/console/RunConsoleFileCommand.h"

#include <memory>
#include <string>

namespace zephyr::test {

/// Console files, and a console with the command `run` to run them.
class RunCommandFixture : public ConsoleFilesFixture
{
protected:
    RunCommandFixture() { mConsole.registerCommand(std::make_unique<console::RunConsoleFileCommand>()); }

    /// The log of `line` where it writes `middle`, between its echo and the empty line at the end.
    static Lines around(const std::string& line, const Lines& middle)
    {
        Lines lines = {echo(line)};
        lines.insert(lines.end(), middle.begin(), middle.end());
        lines.push_back(output(""));
        return lines;
    }

    /// The log of a line whose one word names nothing.
    static Lines unknown(const std::string& word) { return around(word, {output(notRecognized(word))}); }
};

/// What `run` answers where it finds no file.
inline const LogLine kNothingRun =
    output("ERROR: Didn't find a console file with the specified name.  Nothing will be run.", 4);

/// What `run` answers to a wrong number of words.
inline const LogLine kRunUsage = output("run command help text", 4);

} // namespace zephyr::test

#endif
