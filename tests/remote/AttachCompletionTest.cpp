#include "remote/AttachFixture.h"
#include "remote/TmuxTerminal.h"

namespace zephyr::console::remote {
namespace {

using test::TmuxTerminal;

/// What two shells complete of zephyr-attach's command line.
class AttachCompletionTest : public AttachFixture
{
protected:
    AttachCompletionTest() { second.emplace(console, "storm"); }

    /// A shell that `command` starts, with zephyr-attach in its path.
    TmuxTerminal shell(const QString& command) const
    {
        const QString program(ZEPHYR_ATTACH_PROGRAM);
        return TmuxTerminal(QString("cd %1; env XDG_RUNTIME_DIR=%1 HOME=%1 PS1='> ' PATH=%2:$PATH %3")
                                .arg(pathOf(""), program.left(program.lastIndexOf('/')), command));
    }

    TmuxTerminal bash() const
    {
        folder.write("rc", "PS1='> '; source " ZEPHYR_ATTACH_SOURCES "/zephyr-attach.bash\n");
        return shell("bash --noprofile --rcfile rc");
    }

    TmuxTerminal zsh() const
    {
        folder.write(".zshrc", "PS1='> '; fpath=(" ZEPHYR_ATTACH_SOURCES
                               " $fpath); autoload -U compinit; compinit -u\n");
        return shell("zsh -d -i");
    }

    /// Whether a shell completes `typed` at Tab so that the screen ends with `completed`.
    static testing::AssertionResult completes(const TmuxTerminal& shell, const QString& typed,
                                              const std::string& completed)
    {
        if (!shell.endsWith(">")) {
            return testing::AssertionFailure() << "there is no prompt: " << shell.screen();
        }
        shell.type(typed);
        shell.press("Tab");
        const bool isCompleted = shell.endsWith(completed);
        const std::string screen = shell.screen();
        shell.press("C-c");
        return isCompleted ? testing::AssertionSuccess() : testing::AssertionFailure() << screen;
    }

    std::optional<ConsoleServer> second;
};

TEST_F(AttachCompletionTest, NamesWhatRunsInBash)
{
    const TmuxTerminal shell = bash();
    EXPECT_TRUE(completes(shell, "zephyr-attach sa", "> zephyr-attach sandbox"));
    EXPECT_TRUE(completes(shell, "zephyr-attach --json st", "> zephyr-attach --json storm"));
}

TEST_F(AttachCompletionTest, HasOptionsAndFilesInBash)
{
    folder.write("tour.console", "");
    const TmuxTerminal shell = bash();
    EXPECT_TRUE(completes(shell, "zephyr-attach --ke", "> zephyr-attach --keep-going"));
    EXPECT_TRUE(completes(shell, "zephyr-attach -f tou", "> zephyr-attach -f tour.console"));
}

TEST_F(AttachCompletionTest, NamesWhatRunsInZsh)
{
    const TmuxTerminal shell = zsh();
    EXPECT_TRUE(completes(shell, "zephyr-attach sa", "> zephyr-attach sandbox"));
    EXPECT_TRUE(completes(shell, "zephyr-attach --json st", "> zephyr-attach --json storm"));
}

TEST_F(AttachCompletionTest, HasOptionsAndFilesInZsh)
{
    folder.write("tour.console", "");
    const TmuxTerminal shell = zsh();
    EXPECT_TRUE(completes(shell, "zephyr-attach --ke", "> zephyr-attach --keep-going"));
    EXPECT_TRUE(completes(shell, "zephyr-attach -f tou", "> zephyr-attach -f tour.console"));
}

} // namespace
} // namespace zephyr::console::remote
