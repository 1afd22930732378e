#include "sandbox/program/Options.h"

#include <QCommandLineParser>
#include <QRect>
#include <QRegularExpression>

#include <array>
#include <optional>
#include <utility>

namespace zephyr::sandbox {

namespace {

constexpr char kProgramDescription[] =
    "Particles in the wind, and a console to control them.\n"
    "The window does what the options ask for in this order: startup.console or --startup, --exec, --type, "
    "--screenshot, --quit.\n"
    "Console files are searched for in the runpath: the program's own directory, the current one, and the "
    "program's scenes.\n"
    "In a batch, simulated time passes in 'sim step' and 'sim record' only. It ends at a line that fails, "
    "with "
    "status 1.\n"
    "'zephyr-attach NAME' reaches the console of a program that is served as NAME.\n"
    "QT_QPA_PLATFORM=offscreen makes a window that needs no screen.";

constexpr const char* kHelpOption = "help";
constexpr const char* kVersionOption = "version";
constexpr const char* kSizeOption = "size";
constexpr const char* kExecOption = "exec";
constexpr const char* kTypeOption = "type";
constexpr const char* kScreenshotOption = "screenshot";
constexpr const char* kQuitOption = "quit";
constexpr const char* kPrintLogOption = "print-log";
constexpr const char* kBatchOption = "batch";
constexpr const char* kKeepGoingOption = "keep-going";
constexpr const char* kHeadlessOption = "headless";
constexpr const char* kServeOption = "serve";
constexpr const char* kPlainOption = "plain";
constexpr const char* kNoStartupOption = "no-startup";
constexpr const char* kStartupOption = "startup";
constexpr const char* kProbeKeysOption = "probe-keys";
constexpr const char* kReferenceOption = "reference";

constexpr const char* kMarkdown = "markdown";
constexpr const char* kJson = "json";

constexpr std::array kNotInBatch{kSizeOption, kExecOption,     kTypeOption, kScreenshotOption,
                                 kQuitOption, kPrintLogOption, kPlainOption};
constexpr std::array kNotHeadless{kSizeOption, kTypeOption,     kScreenshotOption,
                                  kQuitOption, kPrintLogOption, kPlainOption};
constexpr std::array kWithFile{kBatchOption, kScreenshotOption, kStartupOption};
constexpr std::array<std::pair<const char*, const char*>, 3> kExclusive{
    {{kStartupOption, kNoStartupOption}, {kBatchOption, kHeadlessOption}, {kBatchOption, kServeOption}}};
constexpr std::array<std::pair<const char*, const char*>, 2> kNeedy{
    {{kKeepGoingOption, kBatchOption}, {kHeadlessOption, kServeOption}}};
constexpr std::array kAlone{kProbeKeysOption, kReferenceOption};

constexpr char kBadSize[] = "'--size' takes WIDTHxHEIGHT, each from 1 to 16384, not '%1'.";
constexpr char kUnexpected[] = "Unexpected argument '%1'.";
constexpr char kNoFile[] = "'--%1' needs the name of a file.";
constexpr char kNoWindow[] = "'--%1' needs a window, which '--%2' does without.";
constexpr char kNotTogether[] = "'--%1' and '--%2' exclude each other.";
constexpr char kNeeds[] = "'--%1' needs '--%2'.";
constexpr char kNotAlone[] = "'--%1' takes no other option.";
constexpr char kBadReference[] = "'--reference' takes 'markdown' or 'json', not '%1'.";

constexpr int kMaxSide = 16384; // pixels

void declareOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(kProgramDescription);
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({
        {kHelpOption, "Print this and end."},
        {kVersionOption, "Print the version and end."},
        {kSizeOption, "Open a window of WxH logical pixels; 1280x720 if left out.", "WxH"},
        {kExecOption, "Run LINE in the console. May be given several times.", "LINE"},
        {kTypeOption, "Type TEXT into the window; \\n is Enter, ` opens and closes the console.", "TEXT"},
        {kScreenshotOption, "Write a picture of the window to FILE, as PNG.", "FILE"},
        {kQuitOption, "End the program after that, and after a recording that is still working."},
        {kPrintLogOption, "Print the console's log to standard output at the end."},
        {kBatchOption, "Run a console file without a window and print the log to standard output.",
         "FILE.console"},
        {kKeepGoingOption, "Go on after a line of that file that fails."},
        {kHeadlessOption, "Run the simulation without a window. Needs --serve."},
        {kServeOption, "Let other programs of yours reach the console as NAME.", "NAME"},
        {kPlainOption,
         "Draw the console with the library's renderer alone, which doesn't wrap, select or find."},
        {kNoStartupOption, "Don't run startup.console."},
        {kStartupOption, "Run the console file NAME from the runpath in place of startup.console.", "NAME"},
        {kProbeKeysOption,
         "Only open a window that shows and prints what each key sends, and whether it opens "
         "the console. Closing the window, or pressing Escape twice, ends it."},
        {kReferenceOption, "Only print what can be typed into the console. FORMAT is 'markdown' or 'json'.",
         "FORMAT"},
    });
}

std::optional<QSize> sizeFrom(const QString& text)
{
    static const QRegularExpression pattern("\\A([0-9]{1,5})x([0-9]{1,5})\\z");
    const QRegularExpressionMatch match = pattern.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (!QRect(1, 1, kMaxSide, kMaxSide).contains(size.width(), size.height())) {
        return std::nullopt;
    }
    return size;
}

std::optional<console::commands::ReferenceFormat> referenceFormatFrom(const QString& text)
{
    using console::commands::ReferenceFormat;
    if (text == kMarkdown) {
        return ReferenceFormat::Markdown;
    }
    return text == kJson ? std::optional(ReferenceFormat::Json) : std::nullopt;
}

/// Whether options that need a window are given to a run without one.
std::optional<QString> errorWithoutWindow(const QCommandLineParser& parser)
{
    for (const char* const name : kNotInBatch) {
        if (parser.isSet(kBatchOption) && parser.isSet(name)) {
            return QString(kNoWindow).arg(name, kBatchOption);
        }
    }
    for (const char* const name : kNotHeadless) {
        if (parser.isSet(kHeadlessOption) && parser.isSet(name)) {
            return QString(kNoWindow).arg(name, kHeadlessOption);
        }
    }
    return std::nullopt;
}

/// What is wrong with a command line whose options are all known, if anything.
std::optional<QString> errorIn(const QCommandLineParser& parser)
{
    if (!parser.positionalArguments().isEmpty()) {
        return QString(kUnexpected).arg(parser.positionalArguments().constFirst());
    }
    if (parser.isSet(kSizeOption) && !sizeFrom(parser.value(kSizeOption))) {
        return QString(kBadSize).arg(parser.value(kSizeOption));
    }
    for (const char* const name : kWithFile) {
        if (parser.isSet(name) && parser.value(name).isEmpty()) {
            return QString(kNoFile).arg(name);
        }
    }
    for (const auto& [first, second] : kExclusive) {
        if (parser.isSet(first) && parser.isSet(second)) {
            return QString(kNotTogether).arg(first, second);
        }
    }
    for (const auto& [name, needed] : kNeedy) {
        if (parser.isSet(name) && !parser.isSet(needed)) {
            return QString(kNeeds).arg(name, needed);
        }
    }
    if (const std::optional<QString> error = errorWithoutWindow(parser)) {
        return error;
    }
    for (const char* const name : kAlone) {
        if (parser.isSet(name) && parser.optionNames().size() > 1) {
            return QString(kNotAlone).arg(name);
        }
    }
    if (parser.isSet(kReferenceOption) && !referenceFormatFrom(parser.value(kReferenceOption))) {
        return QString(kBadReference).arg(parser.value(kReferenceOption));
    }
    return std::nullopt;
}

StartupChoice startupChoiceOf(const QCommandLineParser& parser)
{
    if (parser.isSet(kStartupOption)) {
        return NamedStartup{parser.value(kStartupOption)};
    }
    return parser.isSet(kNoStartupOption) ? StartupChoice(NoStartup()) : UsualStartup();
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
    options.probesKeys = parser.isSet(kProbeKeysOption);
    options.reference = referenceFormatFrom(parser.value(kReferenceOption));
    options.startup = startupChoiceOf(parser);
    options.batch = valueOf(kBatchOption, parser);
    options.keepsGoing = parser.isSet(kKeepGoingOption);
    options.isHeadless = parser.isSet(kHeadlessOption);
    options.serve = valueOf(kServeOption, parser);
    options.size = sizeFrom(parser.value(kSizeOption)).value_or(options.size);
    options.lines = parser.values(kExecOption);
    options.keys = parser.value(kTypeOption);
    options.screenshot = valueOf(kScreenshotOption, parser);
    options.quits = parser.isSet(kQuitOption);
    options.printsLog = parser.isSet(kPrintLogOption);
    options.isPlain = parser.isSet(kPlainOption);
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

} // namespace zephyr::sandbox
