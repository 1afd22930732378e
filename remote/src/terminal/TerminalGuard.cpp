#include "terminal/TerminalGuard.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <mutex>
#include <string_view>
#include <thread>

#include <termios.h>
#include <unistd.h>

namespace zephyr::console::remote {

namespace {

constexpr std::string_view kSpared = "\r\nThe line goes on. Ctrl+C again ends the program.\r\n";

// So that what comes next in the terminal doesn't stand behind the prompt.
constexpr std::string_view kNewLine = "\r\n";

// How long a stop may take to arrive, after which there is none: it is ignored, or nobody could end it.
constexpr std::chrono::milliseconds kStopTime{500};
constexpr std::chrono::milliseconds kStopStep{5};

constexpr std::array kEnding{SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};
constexpr std::array kTelling{SIGWINCH, SIGCONT};

/// What the signal handlers use.
struct State
{
    std::atomic<bool> isTaken = false;
    std::atomic<int> terminal = -1;
    std::atomic<int> out = -1;
    std::atomic<int> wake = -1;
    std::atomic<bool> isChanged = false; // the terminal; `found` is then constant
    std::atomic<bool> sparesInterrupt = false;
    std::atomic<bool> isInterrupted = false;
    std::atomic<bool> isContinued = false;
    termios found{};
    std::array<struct sigaction, kEnding.size()> endingBefore{};
    std::array<struct sigaction, kTelling.size()> tellingBefore{};
};

static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free,
              "signal handlers must not wait");

State state; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

bool isInForegroundOf(int terminal)
{
    const pid_t group = ::tcgetpgrp(terminal);
    return group == -1 ||
           group == ::getpgrp(); // -1: not the program's controlling terminal, which stops nobody
}

void writeSafely(std::string_view text)
{
    [[maybe_unused]] const ssize_t written = ::write(state.out.load(), text.data(), text.size());
}

/// Calls nothing that a signal handler mustn't.
void giveBack(std::string_view lastWord)
{
    if (state.isChanged.load() && isInForegroundOf(state.terminal.load())) {
        writeSafely(lastWord);
        ::tcsetattr(state.terminal.load(), TCSADRAIN, &state.found);
    }
}

void wakeUp()
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written =
        ::write(state.wake.load(), &byte, 1); // a full pipe wakes as well
}

void onEnding(int signal);

struct sigaction endingAction()
{
    struct sigaction action{};
    action.sa_handler = onEnding;
    action.sa_flags = SA_RESTART;
    return action;
}

/// Has the signal do what it would have done.
void passOn(int signal)
{
    struct sigaction byDefault{};
    byDefault.sa_handler = SIG_DFL;
    ::sigaction(signal, &byDefault, nullptr);
    sigset_t mask{};
    sigemptyset(&mask);
    sigaddset(&mask, signal);
    sigset_t before{};
    ::pthread_sigmask(SIG_UNBLOCK, &mask, &before);
    ::pthread_kill(::pthread_self(), signal);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr); // after a stop
    const struct sigaction action = endingAction();
    ::sigaction(signal, &action, nullptr);
}

void onEnding(int signal)
{
    const int error = errno;
    if (signal == SIGINT && state.sparesInterrupt.exchange(false)) {
        state.isInterrupted = true;
        writeSafely(kSpared);
    } else {
        giveBack(kNewLine);
        passOn(signal);
    }
    errno = error;
}

void onTelling(int signal, siginfo_t* info, void* context)
{
    const int error = errno;
    if (signal == SIGCONT) {
        state.isContinued = true;
    }
    wakeUp();
    errno = error;
    for (std::size_t i = 0; i < kTelling.size(); ++i) {
        const struct sigaction& before = state.tellingBefore[i];
        if (kTelling[i] != signal || before.sa_handler == SIG_DFL || before.sa_handler == SIG_IGN) {
            continue;
        }
        if ((before.sa_flags & SA_SIGINFO) != 0) {
            before.sa_sigaction(signal, info, context);
        } else {
            before.sa_handler(signal);
        }
    }
}

void install()
{
    for (std::size_t i = 0; i < kEnding.size(); ++i) {
        ::sigaction(kEnding[i], nullptr, &state.endingBefore[i]);
        if (state.endingBefore[i].sa_handler == SIG_DFL) {
            const struct sigaction action = endingAction();
            ::sigaction(kEnding[i], &action, nullptr);
        }
    }
    for (std::size_t i = 0; i < kTelling.size(); ++i) {
        ::sigaction(kTelling[i], nullptr, &state.tellingBefore[i]); // before a handler looks there
        struct sigaction action{};
        action.sa_sigaction = onTelling;
        action.sa_flags = SA_RESTART | SA_SIGINFO;
        ::sigaction(kTelling[i], &action, nullptr);
    }
}

void uninstall()
{
    struct sigaction now{};
    for (std::size_t i = 0; i < kEnding.size(); ++i) {
        ::sigaction(kEnding[i], nullptr, &now);
        if (now.sa_handler == onEnding) {
            ::sigaction(kEnding[i], &state.endingBefore[i], nullptr);
        }
    }
    for (std::size_t i = 0; i < kTelling.size(); ++i) {
        ::sigaction(kTelling[i], nullptr, &now);
        if ((now.sa_flags & SA_SIGINFO) != 0 && now.sa_sigaction == onTelling) {
            ::sigaction(kTelling[i], &state.tellingBefore[i], nullptr);
        }
    }
}

} // namespace

std::unique_ptr<TerminalGuard> TerminalGuard::create(int in, int out, int wake)
{
    if (state.isTaken.exchange(true)) {
        return nullptr;
    }
    static std::once_flag atExit;
    std::call_once(atExit, [] { std::atexit([] { giveBack(kNewLine); }); });
    return std::unique_ptr<TerminalGuard>(new TerminalGuard(in, out, wake));
}

TerminalGuard::TerminalGuard(int in, int out, int wake) : mTerminal(in)
{
    state.terminal = in;
    state.out = out;
    state.wake = wake;
    state.sparesInterrupt = false;
    state.isInterrupted = false;
    state.isContinued = false;
    install();
}

TerminalGuard::~TerminalGuard()
{
    uninstall();
    state.wake = -1;
    state.isTaken = false;
}

void TerminalGuard::begin()
{
    if (!state.isChanged.load() && ::tcgetattr(mTerminal, &state.found) == 0) {
        state.isChanged = true;
    }
}

void TerminalGuard::end()
{
    giveBack({}); // exactly: libedit's notion of it is its own
    state.isChanged = false;
}

void TerminalGuard::setSparesInterrupt(bool spares) { state.sparesInterrupt = spares; }
bool TerminalGuard::takeInterrupted() { return state.isInterrupted.exchange(false); }
bool TerminalGuard::takeContinued() { return state.isContinued.exchange(false); }
bool TerminalGuard::isInForeground() const { return isInForegroundOf(mTerminal); }

void TerminalGuard::stopProgram()
{
    state.isContinued = false;
    ::kill(0, SIGTSTP);
    const auto end = std::chrono::steady_clock::now() + kStopTime;
    while (!state.isContinued.load() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(kStopStep);
    }
}

} // namespace zephyr::console::remote
