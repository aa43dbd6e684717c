// The handlers call async-signal-safe functions only: unlink, poll, write and _exit.
#include <array>
#include <climits>
#include <csignal>
#include <string_view>

#include <poll.h>
#include <unistd.h>

#include "cli/failure.h"
#include "cli/signals.h"

namespace zorvan::cli {
namespace {

constexpr std::array kStopSignals = {SIGTERM, SIGINT, SIGHUP};
constexpr std::string_view kTimeIsUp = "zorvan: the job is not done in the time that --timeout gives\n";

// Read by the handler, changed only while the signals are held.
std::array<char, PATH_MAX + 1> temporaryPath{};

// Who holds the signals back, and what was held back before the first of them.
int holders = 0;
sigset_t signalsBefore;

void RemoveTemporaryFile() {
    if (temporaryPath[0] != '\0') {
        ::unlink(temporaryPath.data());
    }
}

extern "C" void StopLate(int /*signal*/) {
    RemoveTemporaryFile();
    // Where nobody takes the message it is lost: the job must end.
    pollfd standardError = {STDERR_FILENO, POLLOUT, 0};
    if (::poll(&standardError, 1, 0) > 0) {
        const ssize_t written = ::write(STDERR_FILENO, kTimeIsUp.data(), kTimeIsUp.size());
        static_cast<void>(written);
    }
    ::_exit(static_cast<int>(ExitCode::kTimeout));
}

extern "C" void StopAtOnce(int signal) {
    RemoveTemporaryFile();
    ::_exit(static_cast<int>(ExitCode::kBySignal) + signal);
}

}  // namespace

void InstallSignalHandlers() {
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
    for (const int signal : kStopSignals) {
        struct sigaction action = {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN) {
            continue;
        }
        action.sa_handler = StopAtOnce;
        ::sigaction(signal, &action, nullptr);
    }
}

void StartDeadline(unsigned seconds) {
    if (seconds > 0) {
        struct sigaction action = {};
        action.sa_handler = StopLate;
        ::sigaction(SIGALRM, &action, nullptr);
        sigset_t alarm;
        sigemptyset(&alarm);
        sigaddset(&alarm, SIGALRM);
        ::sigprocmask(SIG_UNBLOCK, &alarm, nullptr);  // a parent's mask is inherited
        ::alarm(seconds);
    }
}

void RemoveOnSignal(const std::string& path) {
    const SignalsHeld held;
    // A path too long for the system cannot have been opened.
    const std::size_t length = path.copy(temporaryPath.data(), PATH_MAX);
    temporaryPath[length] = '\0';
}

SignalsHeld::SignalsHeld() {
    if (holders++ > 0) {
        return;
    }
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kStopSignals) {
        sigaddset(&signals, signal);
    }
    sigaddset(&signals, SIGALRM);
    ::sigprocmask(SIG_BLOCK, &signals, &signalsBefore);
}

SignalsHeld::~SignalsHeld() {
    if (--holders == 0) {
        ::sigprocmask(SIG_SETMASK, &signalsBefore, nullptr);
    }
}

}  // namespace zorvan::cli
