#include "sandbox/program/Options.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <variant>

namespace zephyr::sandbox {
namespace {

ParsedOptions parsed(std::initializer_list<const char*> words)
{
    QStringList arguments("zephyr-sandbox");
    for (const char* const word : words) {
        arguments += word;
    }
    return parseOptions(arguments);
}

Options optionsOf(std::initializer_list<const char*> words) { return std::get<Options>(parsed(words)); }

std::string errorOf(std::initializer_list<const char*> words)
{
    return std::get<OptionsError>(parsed(words)).text.toStdString();
}

/// The startup file that the options name, if they name one.
std::optional<QString> namedStartup(const Options& options)
{
    const auto* const named = std::get_if<NamedStartup>(&options.startup);
    return named != nullptr ? std::optional(named->name) : std::nullopt;
}

TEST(Options, AskForAWindowAndNothingElseByDefault)
{
    const Options none = optionsOf({});
    EXPECT_FALSE(none.wantsHelp);
    EXPECT_FALSE(none.wantsVersion);
    EXPECT_FALSE(none.probesKeys);
    EXPECT_EQ(std::nullopt, none.reference);
    EXPECT_TRUE(std::holds_alternative<UsualStartup>(none.startup));
    EXPECT_EQ(std::nullopt, none.batch);
    EXPECT_EQ(QSize(1280, 720), none.size);
    EXPECT_TRUE(none.lines.isEmpty());
    EXPECT_TRUE(none.keys.isEmpty());
    EXPECT_EQ(std::nullopt, none.screenshot);
    EXPECT_FALSE(none.quits);
    EXPECT_FALSE(none.isPlain);
    EXPECT_FALSE(none.printsLog);
}

TEST(Options, ReadAllOfAWindow)
{
    const Options all =
        optionsOf({"--size", "640x480", "--exec", "a b", "--exec=c", "--type", "`x\\n", "--screenshot",
                   "p.png", "--quit", "--print-log", "--plain", "--no-startup"});
    EXPECT_EQ(QSize(640, 480), all.size);
    EXPECT_EQ(QStringList({"a b", "c"}), all.lines);
    EXPECT_EQ("`x\\n", all.keys);
    EXPECT_EQ("p.png", all.screenshot);
    EXPECT_TRUE(all.quits);
    EXPECT_TRUE(all.printsLog);
    EXPECT_TRUE(all.isPlain);
    EXPECT_TRUE(std::holds_alternative<NoStartup>(all.startup));
}

TEST(Options, ReadABatch)
{
    const Options batch = optionsOf({"--batch", "f.console", "--no-startup"});
    EXPECT_EQ("f.console", batch.batch);
    EXPECT_TRUE(std::holds_alternative<NoStartup>(batch.startup));
}

TEST(Options, ReadAStartupFileOfAWindowAndOfABatch)
{
    EXPECT_EQ("calm", namedStartup(optionsOf({"--startup", "calm"})));
    EXPECT_EQ("calm", namedStartup(optionsOf({"--startup", "calm", "--batch", "f.console"})));
    EXPECT_EQ("'--startup' and '--no-startup' exclude each other.",
              errorOf({"--startup", "calm", "--no-startup"}));
}

TEST(Options, ReadThatKeysAreProbedAndNothingElse)
{
    EXPECT_TRUE(optionsOf({"--probe-keys"}).probesKeys);
    EXPECT_EQ("'--probe-keys' takes no other option.", errorOf({"--probe-keys", "--quit"}));
    EXPECT_EQ("'--probe-keys' takes no other option.", errorOf({"--probe-keys", "--batch", "f.console"}));
}

TEST(Options, ReadThatAReferenceIsPrintedAndNothingElse)
{
    using console::commands::ReferenceFormat;
    EXPECT_EQ(ReferenceFormat::Markdown, optionsOf({"--reference", "markdown"}).reference);
    EXPECT_EQ(ReferenceFormat::Json, optionsOf({"--reference=json"}).reference);
    for (const char* const format : {"", "xml", "JSON", "markdown "}) {
        EXPECT_EQ(std::string("'--reference' takes 'markdown' or 'json', not '") + format + "'.",
                  errorOf({"--reference", format}));
    }
    EXPECT_EQ("'--reference' takes no other option.", errorOf({"--reference", "json", "--no-startup"}));
    EXPECT_EQ("Missing value after '--reference'.", errorOf({"--reference"}));
}

TEST(Options, TakeSizesFromOnePixelToTheLargest)
{
    EXPECT_EQ(QSize(1, 1), optionsOf({"--size", "1x1"}).size);
    EXPECT_EQ(QSize(16384, 16384), optionsOf({"--size", "16384x16384"}).size);
}

TEST(Options, RefuseOtherSizes)
{
    for (const char* const size :
         {"", "x", "640", "640x", "x480", "0x480", "640x0", "-1x5", "640x480x2", "16385x1", "1x16385",
          " 640x480", "640X480", "99999999999x5", "6.5x5", "\u0661x5"}) {
        EXPECT_EQ(std::string("'--size' takes WIDTHxHEIGHT, each from 1 to 16384, not '") + size + "'.",
                  errorOf({"--size", size}));
    }
    EXPECT_EQ("'--size' takes WIDTHxHEIGHT, each from 1 to 16384, not '2x2 '.", errorOf({"--size", "2x2\n"}));
}

TEST(Options, RefuseUnknownOnesAndArguments)
{
    EXPECT_EQ("Unknown option 'frob'.", errorOf({"--frob"}));
    EXPECT_EQ("Unknown option 'x'.", errorOf({"-x"}));
    EXPECT_EQ("Unexpected argument 'f.console'.", errorOf({"f.console"}));
    EXPECT_EQ("Unexpected argument 'two lines'.", errorOf({"two\nlines"}));
}

TEST(Options, RefuseMissingValues)
{
    EXPECT_EQ("Missing value after '--exec'.", errorOf({"--exec"}));
    EXPECT_EQ("'--screenshot' needs the name of a file.", errorOf({"--screenshot", ""}));
    EXPECT_EQ("'--batch' needs the name of a file.", errorOf({"--batch="}));
    EXPECT_EQ("'--startup' needs the name of a file.", errorOf({"--startup", ""}));
}

TEST(Options, RefuseAWindowsOptionsInABatch)
{
    for (const char* const option :
         {"--size=2x2", "--exec=a", "--type=a", "--screenshot=a", "--quit", "--print-log", "--plain"}) {
        const std::string name = QString(option).section('=', 0, 0).toStdString();
        EXPECT_EQ("'" + name + "' needs a window, which '--batch' does without.",
                  errorOf({"--batch", "f.console", option}));
    }
}

TEST(Options, TakeAServedProgramWithoutAWindow)
{
    const Options options = optionsOf({"--headless", "--serve", "sandbox", "--exec", "wind show"});
    EXPECT_TRUE(options.isHeadless);
    EXPECT_EQ("sandbox", options.serve);
    EXPECT_EQ(QStringList{"wind show"}, options.lines);
    EXPECT_EQ("'--headless' needs '--serve'.", errorOf({"--headless"}));
    EXPECT_EQ("'--batch' and '--serve' exclude each other.", errorOf({"--batch", "f", "--serve", "a"}));
    EXPECT_EQ("'--size' needs a window, which '--headless' does without.",
              errorOf({"--headless", "--serve", "a", "--size", "2x2"}));
}

TEST(Options, KeepGoingInABatchOnly)
{
    EXPECT_TRUE(optionsOf({"--batch", "f.console", "--keep-going"}).keepsGoing);
    EXPECT_EQ("'--keep-going' needs '--batch'.", errorOf({"--keep-going"}));
}

} // namespace
} // namespace zephyr::sandbox
