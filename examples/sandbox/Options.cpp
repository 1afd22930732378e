#include "sandbox/Options.h"

#include <QCommandLineParser>
#include <QRect>
#include <QRegularExpression>

#include <array>
#include <optional>

namespace zephyr::sandbox {

namespace {

constexpr char kDescription[] =
    "Particles in the wind, and a console to control them.\n"
    "The window does what the options ask for in this order: startup.console or --startup, --exec, --type, "
    "--screenshot, --quit.\n"
    "Console files are searched for in the runpath: the program's own directory, the current one, and the "
    "program's scenes.\n"
    "In a batch, simulated time passes in 'sim step' and 'sim record' only.\n"
    "QT_QPA_PLATFORM=offscreen makes a window that needs no screen.";

constexpr const char* kHelp = "help";
constexpr const char* kVersion = "version";
constexpr const char* kSize = "size";
constexpr const char* kExec = "exec";
constexpr const char* kType = "type";
constexpr const char* kScreenshot = "screenshot";
constexpr const char* kQuit = "quit";
constexpr const char* kPrintLog = "print-log";
constexpr const char* kBatch = "batch";
constexpr const char* kNoStartup = "no-startup";
constexpr const char* kStartup = "startup";
constexpr const char* kProbeKeys = "probe-keys";

constexpr std::array kWindowOnly{kSize, kExec, kType, kScreenshot, kQuit, kPrintLog};
constexpr std::array kWithFile{kBatch, kScreenshot, kStartup};

constexpr char kBadSize[] = "'--size' takes WIDTHxHEIGHT, each from 1 to 16384, not '%1'.";
constexpr char kUnexpected[] = "Unexpected argument '%1'.";
constexpr char kNoFile[] = "'--%1' needs the name of a file.";
constexpr char kNotInBatch[] = "'--%1' needs a window, which '--batch' does without.";
constexpr char kBothStartups[] = "'--startup' and '--no-startup' exclude each other.";
constexpr char kNotAlone[] = "'--probe-keys' takes no other option.";

constexpr int kMaxSide = 16384; // pixels

void declareOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(kDescription);
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({
        {kHelp, "Print this and end."},
        {kVersion, "Print the version and end."},
        {kSize, "Open a window of WxH logical pixels; 1280x720 if left out.", "WxH"},
        {kExec, "Run LINE in the console. May be given several times.", "LINE"},
        {kType, "Type TEXT into the window; \\n is Enter, ` opens and closes the console.", "TEXT"},
        {kScreenshot, "Write a picture of the window to FILE, as PNG.", "FILE"},
        {kQuit, "End the program after that, and after a recording that is still working."},
        {kPrintLog, "Print the console's log to standard output at the end."},
        {kBatch, "Run a console file without a window and print the log to standard output.", "FILE.console"},
        {kNoStartup, "Don't run startup.console."},
        {kStartup, "Run the console file NAME from the runpath in place of startup.console.", "NAME"},
        {kProbeKeys, "Only open a window that shows and prints what each key sends, and whether it opens "
                     "the console. Closing the window, or pressing Escape twice, ends it."},
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

/// What is wrong with a command line whose options are all known, if anything.
QString findError(const QCommandLineParser& parser)
{
    if (!parser.positionalArguments().isEmpty()) {
        return QString(kUnexpected).arg(parser.positionalArguments().constFirst());
    }
    if (parser.isSet(kSize) && !sizeFrom(parser.value(kSize))) {
        return QString(kBadSize).arg(parser.value(kSize));
    }
    for (const char* const name : kWithFile) {
        if (parser.isSet(name) && parser.value(name).isEmpty()) {
            return QString(kNoFile).arg(name);
        }
    }
    for (const char* const name : kWindowOnly) {
        if (parser.isSet(kBatch) && parser.isSet(name)) {
            return QString(kNotInBatch).arg(name);
        }
    }
    if (parser.isSet(kStartup) && parser.isSet(kNoStartup)) {
        return kBothStartups;
    }
    if (parser.isSet(kProbeKeys) && parser.optionNames().size() > 1) {
        return kNotAlone;
    }
    return {};
}

Options optionsOf(const QCommandLineParser& parser)
{
    Options options;
    options.wantsHelp = parser.isSet(kHelp);
    options.wantsVersion = parser.isSet(kVersion);
    options.probesKeys = parser.isSet(kProbeKeys);
    options.skipsStartup = parser.isSet(kNoStartup);
    options.startup = parser.value(kStartup);
    options.batch = parser.value(kBatch);
    options.size = sizeFrom(parser.value(kSize)).value_or(options.size);
    options.lines = parser.values(kExec);
    options.keys = parser.value(kType);
    options.screenshot = parser.value(kScreenshot);
    options.quits = parser.isSet(kQuit);
    options.printsLog = parser.isSet(kPrintLog);
    return options;
}

} // namespace

ParsedOptions parseOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    declareOptions(parser);
    const QString error = parser.parse(arguments) ? findError(parser) : parser.errorText();
    if (!error.isEmpty()) {
        return {Options(), error.simplified()};
    }
    return {optionsOf(parser), QString()};
}

QString helpText()
{
    QCommandLineParser parser;
    declareOptions(parser);
    return parser.helpText();
}

} // namespace zephyr::sandbox
