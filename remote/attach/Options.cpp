#include "attach/Options.h"

#include <QCommandLineParser>

#include <array>

namespace zephyr::attach {

namespace {

constexpr char kProgramDescription[] =
    "Works the console of a program that runs: with a person at a terminal, or with lines from elsewhere.\n"
    "At a terminal, and without --command, --file and --follow, lines are typed, the program's log is shown, "
    "Tab "
    "completes, Ctrl+D or Ctrl+C leaves. The program goes on. Lines are also read from standard input that "
    "is no "
    "terminal.\n"
    "Ends with status 0; 1 if a line failed or was unknown; 2 if nobody answers or something else is wrong.";

constexpr const char* kHelpOption = "help";
constexpr const char* kVersionOption = "version";
constexpr const char* kListOption = "list";
constexpr const char* kCommandOption = "command";
constexpr const char* kFileOption = "file";
constexpr const char* kKeepGoingOption = "keep-going";
constexpr const char* kFollowOption = "follow";
constexpr const char* kLastOption = "last";
constexpr const char* kJsonOption = "json";

constexpr std::array kModes{kListOption, kCommandOption, kFileOption, kFollowOption};
constexpr std::array kWithoutLines{kListOption, kFollowOption};
constexpr std::array kWithoutLog{kListOption, kCommandOption, kFileOption};

constexpr char kUnexpected[] = "Unexpected argument '%1'.";
constexpr char kExclusive[] = "'--%1' and '--%2' exclude each other.";
constexpr char kNoFile[] = "'--file' needs the name of a file.";
constexpr char kBadLast[] = "'--last' takes a number from 0 on, not '%1'.";
constexpr char kListsAll[] = "'--list' takes no name of a program.";

void declareOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(kProgramDescription);
    parser.addPositionalArgument("NAME", "The program; the only one that runs if left out.", "[NAME]");
    parser.addOptions({
        {{"h", kHelpOption}, "Print this and end."},
        {{"v", kVersionOption}, "Print the version and end."},
        {{"l", kListOption}, "Print the names and process numbers of the programs that run."},
        {{"c", kCommandOption}, "Run LINE and print the answer.", "LINE"},
        {{"f", kFileOption},
         "Run the lines of FILE, '-' for standard input, and print what the log gets. Empty lines and those "
         "that "
         "begin with // are skipped. The first line that fails is the last.",
         "FILE"},
        {{"k", kKeepGoingOption}, "Go on behind a line that failed."},
        {kFollowOption, "Print the log as it grows, until Ctrl+C."},
        {{"n", kLastOption}, "Print N entries of the log that there is first; 10 if left out.", "N"},
        {kJsonOption, "Print JSON, an object a line: the entries of the log, or the programs that run."},
    });
}

std::optional<qint64> lastFrom(const QCommandLineParser& parser)
{
    if (!parser.isSet(kLastOption)) {
        return Options().last;
    }
    bool isNumber = false;
    const qint64 last = parser.value(kLastOption).toLongLong(&isNumber);
    return isNumber && last >= 0 ? std::optional(last) : std::nullopt;
}

/// The first two options of which one excludes the other, if any, as a complaint.
std::optional<QString> contradictionIn(const QCommandLineParser& parser)
{
    const char* mode = nullptr;
    for (const char* const other : kModes) {
        if (mode != nullptr && parser.isSet(other)) {
            return QString(kExclusive).arg(mode, other);
        }
        mode = parser.isSet(other) ? other : mode;
    }
    for (const char* const other : kWithoutLines) {
        if (parser.isSet(other) && parser.isSet(kKeepGoingOption)) {
            return QString(kExclusive).arg(other, kKeepGoingOption);
        }
    }
    for (const char* const other : kWithoutLog) {
        if (parser.isSet(other) && parser.isSet(kLastOption)) {
            return QString(kExclusive).arg(other, kLastOption);
        }
    }
    return std::nullopt;
}

/// What is wrong with a command line whose options are all known, if anything.
std::optional<QString> errorIn(const QCommandLineParser& parser)
{
    const QStringList names = parser.positionalArguments();
    if (names.size() > 1) {
        return QString(kUnexpected).arg(names[1]);
    }
    if (const std::optional<QString> contradiction = contradictionIn(parser)) {
        return contradiction;
    }
    if (parser.isSet(kListOption) && !names.isEmpty()) {
        return kListsAll;
    }
    if (parser.isSet(kFileOption) && parser.value(kFileOption).isEmpty()) {
        return kNoFile;
    }
    return lastFrom(parser) ? std::nullopt : std::optional(QString(kBadLast).arg(parser.value(kLastOption)));
}

std::optional<QString> valueOf(const char* option, const QCommandLineParser& parser)
{
    return parser.isSet(option) ? std::optional(parser.value(option)) : std::nullopt;
}

Options optionsOf(const QCommandLineParser& parser)
{
    Options options;
    options.wantsHelp = parser.isSet(kHelpOption);
    options.wantsVersion = parser.isSet(kVersionOption);
    options.lists = parser.isSet(kListOption);
    if (!parser.positionalArguments().isEmpty()) {
        options.name = parser.positionalArguments().constFirst();
    }
    options.line = valueOf(kCommandOption, parser);
    options.file = valueOf(kFileOption, parser);
    options.keepsGoing = parser.isSet(kKeepGoingOption);
    options.follows = parser.isSet(kFollowOption);
    options.last = lastFrom(parser).value_or(options.last);
    options.isJson = parser.isSet(kJsonOption);
    return options;
}

} // namespace

ParsedOptions parseOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    declareOptions(parser);
    const std::optional<QString> error = parser.parse(arguments) ? errorIn(parser) : parser.errorText();
    if (error) {
        return OptionsError{error->simplified()};
    }
    return optionsOf(parser);
}

QString helpText()
{
    QCommandLineParser parser;
    declareOptions(parser);
    return parser.helpText();
}

} // namespace zephyr::attach
