#include "sandbox/GreenPixels.h"
#include "sandbox/ProgramRun.h"
#include "support/SystemText.h"

#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace zephyr::test {
namespace {

/// The highest value of any colour channel in `area`.
int brightest(const QImage& image, const QRect& area)
{
    int value = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor color = image.pixelColor(x, y);
            value = std::max({value, color.red(), color.green(), color.blue()});
        }
    }
    return value;
}

QImage picture(const Program& program, const char* name)
{
    return QImage(QString::fromStdString((program.directory().path() / name).string()), "PNG");
}

constexpr char kStart[] = "Zephyr Console:\n\n";

TEST(Program, PrintsItsVersion)
{
    Program program;
    const Ended ended = program.run({"--version"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ("zephyr-sandbox " ZEPHYR_SANDBOX_VERSION "\n", ended.out);
    EXPECT_EQ("", ended.err);
}

TEST(Program, IsSilentAboutALocaleWithoutUtf8)
{
    for (const char* const locale : {"C", "POSIX", "not_INSTALLED.UTF-8"}) {
        Program program;
        program.setEnvironment("LC_ALL", locale);
        EXPECT_EQ("", program.run({"--version"}).err) << locale;
    }
}

TEST(Program, PrintsAllOptionsAsHelpWhereThereIsNoScreen)
{
    Program program;
    program.setEnvironment("QT_QPA_PLATFORM", "xcb");
    program.removeEnvironment("DISPLAY");
    const Ended ended = program.run({"--help"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ("", ended.err);
    for (const char* const option :
         {"--help ", "--version ", "--size <WxH>", "--exec <LINE>", "--type <TEXT>", "--screenshot <FILE>",
          "--quit ", "--print-log ", "--plain ", "--batch <FILE.console>", "--no-startup ",
          "--startup <NAME>", "--probe-keys ", "--reference <FORMAT>"}) {
        EXPECT_NE(std::string::npos, ended.out.find("  " + std::string(option))) << option;
    }
}

TEST(Program, AnswersAWrongOptionInOneLineWhereThereIsNoScreen)
{
    Program program;
    program.setEnvironment("QT_QPA_PLATFORM", "xcb");
    program.removeEnvironment("DISPLAY");
    const Ended ended = program.run({"--frob"});
    EXPECT_EQ(1, ended.exitCode);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ("zephyr-sandbox: Unknown option 'frob'.\n", ended.err);
}

TEST(Program, AnswersAWrongSizeAndAnArgumentInOneLine)
{
    Program sized;
    const Ended size = sized.run({"--size", "big"});
    EXPECT_EQ(1, size.exitCode);
    EXPECT_EQ("zephyr-sandbox: '--size' takes WIDTHxHEIGHT, each from 1 to 16384, not 'big'.\n", size.err);

    Program argued;
    const Ended argument = argued.run({"a.console"});
    EXPECT_EQ(1, argument.exitCode);
    EXPECT_EQ("zephyr-sandbox: Unexpected argument 'a.console'.\n", argument.err);
}

TEST(Program, FailsWhenItsHelpCantBePrinted)
{
    Program program;
    program.process().setStandardOutputFile("/dev/full");
    const Ended ended = program.run({"--help"});
    EXPECT_EQ(1, ended.exitCode);
    EXPECT_EQ("zephyr-sandbox: can't write standard output: " + systemText(std::errc::no_space_on_device) +
                  ".\n",
              ended.err);
}

TEST(Program, DoesWhatTheOptionsSayInTheirOrder)
{
    Program program;
    program.directory().write("startup.console", "sim pause\nsim reset\nwind set 1\n");
    const Ended ended = program.run({"--quit", "--type", "`wind set 3\\nwin", "--exec", "wind set 2",
                                     "--exec", "wind show", "--print-log"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ("", ended.err);
    EXPECT_EQ(std::string(kStart) + ">> sim pause\n    Paused.\n\n"
                                    ">> sim reset\n    Back at the start.\n\n"
                                    ">> wind set 1\n    Wind: 1 m/s, heading 90 degrees, gust 0 m/s.\n\n"
                                    ">> wind set 2\n    Wind: 2 m/s, heading 90 degrees, gust 0 m/s.\n\n"
                                    ">> wind show\n    Wind: 2 m/s, heading 90 degrees, gust 0 m/s.\n\n"
                                    ">> wind set 3\n    Wind: 3 m/s, heading 90 degrees, gust 0 m/s.\n\n",
              ended.out);
}

TEST(Program, SkipsTheStartupFileWhenAskedTo)
{
    Program program;
    program.directory().write("startup.console", "wind set 1\n");
    EXPECT_EQ(kStart, program.run({"--no-startup", "--quit", "--print-log"}).out);
}

TEST(Program, StartsWithTheFileThatIsNamed)
{
    Program program;
    program.directory().write("startup.console", "wind set 1\n");
    program.directory().write("scenes/calm.console", "wind set 3\n");
    const Ended ended = program.run({"--startup", "scenes/calm", "--quit", "--print-log"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ(std::string(kStart) + ">> wind set 3\n    Wind: 3 m/s, heading 90 degrees, gust 0 m/s.\n\n",
              ended.out);
}

TEST(Program, StartsWithAScene)
{
    Program program;
    const Ended ended = program.run({"--startup", "storm", "--exec", "run gap", "--quit", "--print-log"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ(0U, ended.out.find(std::string(kStart) + ">> sim reset\n"));
    EXPECT_NE(std::string::npos, ended.out.find("\n>> run gap\n>> "));
    EXPECT_EQ(std::string::npos, ended.out.find("ERROR"));
}

TEST(Program, SaysInOneLineThatAStartupFileIsMissing)
{
    Program program;
    const Ended ended = program.run({"--startup", "no-such", "--quit", "--print-log"});
    EXPECT_EQ(2, ended.exitCode);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ("zephyr-sandbox: can't run 'no-such': there is no such file.\n", ended.err);
}

TEST(Program, SaysInOneLineThatTheUsualStartupFileCantBeRun)
{
    Program program;
    program.directory().write("startup.console/a", "");
    const Ended ended = program.run({"--quit", "--print-log"});
    EXPECT_EQ(2, ended.exitCode);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ("zephyr-sandbox: can't run 'startup.console': it is a directory.\n", ended.err);
}

TEST(Program, PrintsNoLogUnlessAskedTo)
{
    Program program;
    const Ended ended = program.run({"--exec", "help", "--quit"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ("", ended.out);
}

TEST(Program, EndsOnTheQuitCommandWhereverItStands)
{
    Program typed;
    EXPECT_EQ(std::string(kStart) + ">> quit\n",
              typed.run({"--type", "`quit\\nwind show\\n", "--print-log"}).out);

    Program executed;
    EXPECT_EQ(std::string(kStart) + ">> quit\n",
              executed.run({"--exec", "quit", "--exec", "wind show", "--print-log"}).out);

    Program inAnAlias;
    inAnAlias.directory().write("end.console", "alias end \"quit; wind show\"\nend\nwind show\n");
    EXPECT_EQ(std::string(kStart) +
                  ">> run end\n>> alias end \"quit; wind show\"\n    Done.\n\n>> end\n>> quit\n",
              inAnAlias.run({"--type", "`run end\\nwind show\\n", "--print-log"}).out);

    Program atStart;
    atStart.directory().write("startup.console", "quit\nwind show\n");
    EXPECT_EQ(std::string(kStart) + ">> quit\n", atStart.run({"--exec", "help", "--print-log"}).out);
}

TEST(Program, SurvivesAnExceptionOfAKeyPress)
{
    Program program;
    const Ended ended =
        program.run({"--type", "`run " + QString(300, 'x') + "\\n``wind show\\n", "--quit", "--print-log"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_NE(std::string::npos,
              ended.out.find("\nThe console caught an exception: filesystem error: exists: " +
                             systemText(std::errc::filename_too_long)));
    EXPECT_NE(std::string::npos, ended.out.find("Wind: 12 m/s"));
}

TEST(Program, SurvivesAnExceptionOfALineOfTheCommandLine)
{
    Program program;
    const Ended ended =
        program.run({"--exec", "run " + QString(300, 'x'), "--exec", "wind show", "--quit", "--print-log"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_NE(std::string::npos,
              ended.out.find("\nThe console caught an exception: filesystem error: exists: " +
                             systemText(std::errc::filename_too_long)));
    EXPECT_NE(std::string::npos, ended.out.find("Wind: 12 m/s"));
}

TEST(Program, QuitsOnlyWhenARecordingIsDone)
{
    Program program;
    const Ended ended =
        program.run({"--exec", "sim record /path=a.csv /steps=20", "--quit", "--print-log", "--no-startup"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_NE(std::string::npos, ended.out.find("    Recording to 'a.csv', 20 steps.\n"));
    EXPECT_NE(std::string::npos, ended.out.find("        step 20 of 20\n    Wrote steps "));
    EXPECT_EQ(std::string::npos, ended.out.find("ended early"));
}

TEST(Program, RecordsAtOnceBeforeThereIsAWindow)
{
    Program program;
    program.directory().write("startup.console", "sim record /path=a.csv /steps=1\nsim step\n");
    EXPECT_EQ(std::string(kStart) + ">> sim record /path=a.csv /steps=1\n        step 1 of 1\n"
                                    "    Wrote steps 1 to 1 to 'a.csv'.\n\n"
                                    ">> sim step\n    Now at step 2 (0.0166667 s).\n\n",
              program.run({"--quit", "--print-log"}).out);
}

TEST(Program, SaysThatARecordingEndsWithIt)
{
    Program program;
    const Ended ended =
        program.run({"--type", "`sim record /path=a.csv /steps=10000\\nquit\\n", "--print-log"});
    EXPECT_EQ(0, ended.exitCode);
    EXPECT_EQ(std::string(kStart) + ">> sim record /path=a.csv /steps=10000\n"
                                    "    Recording to 'a.csv', 10000 steps.\n\n"
                                    ">> quit\n"
                                    "    The recording to 'a.csv' ended early, at step 0 of 10000.\n",
              ended.out);
}

TEST(Program, FailsWhenTheLogCantBePrinted)
{
    Program program;
    program.process().setStandardOutputFile("/dev/full");
    const Ended ended = program.run({"--quit", "--print-log"});
    EXPECT_EQ(1, ended.exitCode);
    EXPECT_EQ("zephyr-sandbox: can't write standard output: " + systemText(std::errc::no_space_on_device) +
                  ".\n",
              ended.err);
}

TEST(Program, WritesAPictureOfTheWindow)
{
    Program program;
    const Ended closed = program.run({"--size", "500x400", "--screenshot", "closed.png", "--quit"});
    EXPECT_EQ(0, closed.exitCode);
    EXPECT_EQ("", closed.err);
    program.run({"--size", "500x400", "--type", "`", "--screenshot", "open.png", "--quit"});
    program.run({"--size", "500x400", "--type", "`help\\n", "--screenshot", "help.png", "--quit"});

    const QImage closedPicture = picture(program, "closed.png");
    const QImage openPicture = picture(program, "open.png");
    const QImage helpPicture = picture(program, "help.png");
    EXPECT_EQ(QSize(500, 400), closedPicture.size());
    EXPECT_EQ(0, greenPixels(closedPicture));
    EXPECT_GT(greenPixels(openPicture), 0);
    EXPECT_GT(greenPixels(helpPicture), greenPixels(openPicture));
}

TEST(Program, CoversTheWholeWindowWithTheConsoleOnAFineScreen)
{
    Program program;
    program.setEnvironment("QT_SCALE_FACTOR", "2");
    program.run({"--size", "500x400", "--screenshot", "closed.png", "--quit"});
    program.run({"--size", "500x400", "--type", "`", "--screenshot", "open.png", "--quit"});

    const QRect lowerRight(500, 400, 500, 400);
    const QImage openPicture = picture(program, "open.png");
    ASSERT_EQ(QSize(1000, 800), openPicture.size());
    EXPECT_GT(brightest(picture(program, "closed.png"), lowerRight), 200);
    EXPECT_LT(brightest(openPicture, lowerRight), 60); // a fifth of 255, and rounding
    EXPECT_GT(greenPixels(openPicture), 0);
}

TEST(Program, SaysInOneLineThatAPictureCantBeWritten)
{
    for (const auto& [file, why] :
         {std::pair("no/x.png", "No such file or directory"), std::pair("/dev/full", "it is no regular file"),
          std::pair(".", "Filename refers to a directory")}) {
        Program program;
        const Ended ended = program.run({"--screenshot", file});
        EXPECT_EQ(1, ended.exitCode) << file;
        EXPECT_EQ(std::string("zephyr-sandbox: can't write '") + file + "': " + why + ".\n", ended.err);
    }
}

TEST(Program, TypesNoControlCharacters)
{
    Program program;
    const Ended ended = program.run({"--type", "`wi\tnd\x1b show\\n", "--quit", "--print-log"});
    EXPECT_EQ(std::string(kStart) + ">> wind show\n    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.\n\n",
              ended.out);
}

} // namespace
} // namespace zephyr::test
