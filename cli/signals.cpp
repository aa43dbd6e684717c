// The handlers call async-signal-safe functions only: unlink and _exit.
#include "cli/signals.h"

#include <array>
#include <climits>
#include <csignal>

#include <unistd.h>

#include "cli/failure.h"

namespace zorvan::cli {
namespace {

constexpr std::array kStopSignals = {SIGTERM, SIGINT, SIGHUP};

// Read by the handler, changed only while the signals are held.
std::array<char, PATH_MAX + 1> temporaryPath{};

extern "C" void StopAtOnce(int signal) {
    if (temporaryPath[0] != '\0') {
        ::unlink(temporaryPath.data());
    }
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

void RemoveOnSignal(const std::string& path) {
    const SignalsHeld held;
    // A path too long for the system cannot have been opened.
    const std::size_t length = path.copy(temporaryPath.data(), PATH_MAX);
    temporaryPath[length] = '\0';
}

SignalsHeld::SignalsHeld() : before_() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kStopSignals) {
        sigaddset(&signals, signal);
    }
    ::sigprocmask(SIG_BLOCK, &signals, &before_);
}

SignalsHeld::~SignalsHeld() {
    ::sigprocmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace zorvan::cli
