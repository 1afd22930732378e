#include "zephyr/console/RunConsoleFileCommand.h"

#include "Answers.h"
#include "Paths.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/Texts.h"

#include <string_view>
#include <utility>
#include <vector>

namespace zephyr::console {

namespace {

namespace fs = std::filesystem;

const std::u32string kName = U"run";
const std::u32string kList = U"list";
const std::u32string kPathList = U"path_list";
const std::u32string kPathAppend = U"path_append";
[[maybe_unused]] const std::u32string kPathSwitch = U"/path"; // reserved: no handler reads it yet

const std::u32string kUsage = U"run command help text";
const std::u32string kNotFound =
    U"ERROR: Didn't find a console file with the specified name.  Nothing will be run.";
const std::u32string kPathKnown = U"The provided path is already in the runpath.";
const std::u32string kNoPath = U"No path provided.";

std::u32string usageOf(const std::u32string& argument) { return U"Usage: " + kName + U" " + argument; }

void writeLine(Console& console, const std::u32string& text) { console.writeIndented(text, Output, kIndent); }

bool endsWith(std::u32string_view text, std::u32string_view ending)
{
    return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

void listDirectory(const fs::path& directory, Console& console)
{
    if (!fs::is_directory(directory)) {
        return;
    }
    const fs::path extension = pathOfText(kConsoleFileExtension);
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        if (entry.path().extension() == extension) {
            writeLine(console, textOfPath(entry.path().filename()));
        }
    }
}

} // namespace

RunConsoleFileCommand::RunConsoleFileCommand()
{
    registerArgHandler(
        kList, [this](const ConsoleArgs& args, Console& console) { listConsoleFiles(args, console); },
        std::u32string(U"Lists all ") + kConsoleFileExtension + U" files found in the current runpath.",
        usageOf(kList));
    registerArgHandler(
        kPathList,
        [](const ConsoleArgs&, Console& console) {
            const std::vector<fs::path> paths =
                console.runPaths(); // writing may run host code, which may change them
            for (const fs::path& path : paths) {
                writeLine(console, textOfPath(path));
            }
        },
        U"Lists all paths in the runpath.  These are the paths in which console files will be searched for "
        U"when "
        U"invoking the run command with a console file name.",
        usageOf(kPathList));
    registerArgHandler(
        kPathAppend, [this](const ConsoleArgs& args, Console& console) { appendRunpathArg(args, console); },
        U"Appends a path to the runpath.  Once appended, the specified path will be searched in when "
        U"invoking "
        U"the run command with a console file name.",
        usageOf(kPathAppend));
}

std::u32string RunConsoleFileCommand::name() const { return kName; }

void RunConsoleFileCommand::execute(const ConsoleArgs& args, Console& console)
{
    if (executeArgHandler(args, console)) {
        return;
    }
    if (args.argCount() == 2) {
        runFileNamed(args.arg(1), console);
        return;
    }
    writeLine(console, kUsage);
}

void RunConsoleFileCommand::runFileNamed(std::u32string fileName, Console& console)
{
    if (!endsWith(fileName, kConsoleFileExtension)) {
        fileName += kConsoleFileExtension;
    }
    if (!console.runFileWithName(fileName)) {
        writeLine(console, kNotFound);
    }
}

void RunConsoleFileCommand::listConsoleFiles(const ConsoleArgs&, Console& console)
{
    const std::vector<fs::path> directories = console.runPaths(); // as above
    for (const fs::path& directory : directories) {
        try {
            listDirectory(directory, console);
        } catch (const fs::filesystem_error& error) {
            writeLine(console, U"Failed to search runpath directory '" + textOfPath(directory) + U"': " +
                                   StringUtil::toU32String(error.what()));
        }
    }
}

void RunConsoleFileCommand::appendRunpathArg(const ConsoleArgs& args, Console& console)
{
    if (args.argCount() < 3) {
        writeLine(console, kNoPath);
        console.newline();
        printHelp(args.subCmd(), console, kIndent);
        return;
    }
    const bool added = console.appendRunpath(pathOfText(args.arg(2)));
    writeLine(console, added ? kDone : kPathKnown);
}

void RunConsoleFileCommand::runFileAtPath(const fs::path& file, Console& console)
{
    if (!pathExists(file)) {
        writeLine(console,
                  U"ERROR: Console file '" + textOfPath(file) + U"' does not exist.  Nothing will be run.");
        return;
    }
    writeLine(console, U"Running " + textOfPath(file) + U"...");
    console.newline();
    console.runFile(file);
}

void RunConsoleFileCommand::printUsage(Console& console) { writeLine(console, kUsage); }

} // namespace zephyr::console
