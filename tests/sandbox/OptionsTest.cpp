#include "sandbox/program/Options.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

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

std::string errorOf(std::initializer_list<const char*> words)
{
    return parsed(words).error.toStdString();
}

TEST(Options, AskForAWindowAndNothingElseByDefault)
{
    const ParsedOptions none = parsed({});
    EXPECT_EQ("", none.error.toStdString());
    EXPECT_FALSE(none.options.wantsHelp);
    EXPECT_FALSE(none.options.wantsVersion);
    EXPECT_FALSE(none.options.probesKeys);
    EXPECT_FALSE(none.options.skipsStartup);
    EXPECT_TRUE(none.options.startup.isEmpty());
    EXPECT_TRUE(none.options.batch.isEmpty());
    EXPECT_EQ(QSize(1280, 720), none.options.size);
    EXPECT_TRUE(none.options.lines.isEmpty());
    EXPECT_TRUE(none.options.keys.isEmpty());
    EXPECT_TRUE(none.options.screenshot.isEmpty());
    EXPECT_FALSE(none.options.quits);
    EXPECT_FALSE(none.options.printsLog);
}

TEST(Options, ReadAllOfAWindow)
{
    const ParsedOptions all = parsed({"--size", "640x480", "--exec", "a b", "--exec=c", "--type", "`x\\n",
                                      "--screenshot", "p.png", "--quit", "--print-log", "--no-startup"});
    EXPECT_EQ("", all.error.toStdString());
    EXPECT_EQ(QSize(640, 480), all.options.size);
    EXPECT_EQ(QStringList({"a b", "c"}), all.options.lines);
    EXPECT_EQ("`x\\n", all.options.keys);
    EXPECT_EQ("p.png", all.options.screenshot);
    EXPECT_TRUE(all.options.quits);
    EXPECT_TRUE(all.options.printsLog);
    EXPECT_TRUE(all.options.skipsStartup);
}

TEST(Options, ReadABatch)
{
    const ParsedOptions batch = parsed({"--batch", "f.console", "--no-startup"});
    EXPECT_EQ("", batch.error.toStdString());
    EXPECT_EQ("f.console", batch.options.batch);
    EXPECT_TRUE(batch.options.skipsStartup);
}

TEST(Options, ReadAStartupFileOfAWindowAndOfABatch)
{
    EXPECT_EQ("calm", parsed({"--startup", "calm"}).options.startup);
    EXPECT_EQ("calm", parsed({"--startup", "calm", "--batch", "f.console"}).options.startup);
    EXPECT_EQ("'--startup' and '--no-startup' exclude each other.",
              errorOf({"--startup", "calm", "--no-startup"}));
}

TEST(Options, ReadThatKeysAreProbedAndNothingElse)
{
    EXPECT_TRUE(parsed({"--probe-keys"}).options.probesKeys);
    EXPECT_EQ("'--probe-keys' takes no other option.", errorOf({"--probe-keys", "--quit"}));
    EXPECT_EQ("'--probe-keys' takes no other option.", errorOf({"--probe-keys", "--batch", "f.console"}));
}

TEST(Options, TakeSizesFromOnePixelToTheLargest)
{
    EXPECT_EQ(QSize(1, 1), parsed({"--size", "1x1"}).options.size);
    EXPECT_EQ(QSize(16384, 16384), parsed({"--size", "16384x16384"}).options.size);
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

TEST(Options, RefuseWhatTheyDontKnow)
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
         {"--size=2x2", "--exec=a", "--type=a", "--screenshot=a", "--quit", "--print-log"}) {
        const std::string name = QString(option).section('=', 0, 0).toStdString();
        EXPECT_EQ("'" + name + "' needs a window, which '--batch' does without.",
                  errorOf({"--batch", "f.console", option}));
    }
}

} // namespace
} // namespace zephyr::sandbox
