// The console's interruptions and the deadline: both come on threads of their own, which a lock holds back.
#include <csignal>
#include <mutex>
#include <string_view>

#include <windows.h>

#include "cli/failure.h"
#include "cli/signals.h"

namespace zorvan::cli {
namespace {

constexpr std::string_view kTimeIsUp = "zorvan: the job is not done in the time that --timeout gives\n";

// Whoever ends the process keeps it: nothing comes to be after the last look.
std::recursive_mutex held;
std::string temporaryPath;

void End(int code) {
    DeleteFileA(temporaryPath.c_str());
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
}

BOOL WINAPI StopAtOnce(DWORD interruption) {
    const std::lock_guard lock(held);
    End(static_cast<int>(ExitCode::kBySignal) + (interruption == CTRL_C_EVENT ? SIGINT : SIGTERM));
    return TRUE;
}

DWORD WINAPI TellThatTimeIsUp(void* /*nothing*/) {
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), kTimeIsUp.data(), static_cast<DWORD>(kTimeIsUp.size()),
              &written, nullptr);
    return 0;
}

// Where nobody takes the message it is lost: the job must end.
void CALLBACK StopLate(void* /*nothing*/, BOOLEAN /*always*/) {
    constexpr DWORD kMilliseconds = 500;
    const std::lock_guard lock(held);
    const HANDLE teller = CreateThread(nullptr, 0, TellThatTimeIsUp, nullptr, 0, nullptr);
    if (teller != nullptr) {
        WaitForSingleObject(teller, kMilliseconds);
    }
    End(static_cast<int>(ExitCode::kTimeout));
}

}  // namespace

void InstallSignalHandlers() {
    SetConsoleCtrlHandler(StopAtOnce, TRUE);
}

void StartDeadline(unsigned seconds) {
    constexpr DWORD kMilliseconds = 1000;
    HANDLE timer = nullptr;
    if (seconds > 0) {
        CreateTimerQueueTimer(&timer, nullptr, StopLate, nullptr, seconds * kMilliseconds, 0,
                              WT_EXECUTEONLYONCE);
    }
}

void RemoveOnSignal(const std::string& path) {
    const SignalsHeld now;
    temporaryPath = path;
}

SignalsHeld::SignalsHeld() {
    held.lock();
}

SignalsHeld::~SignalsHeld() {
    held.unlock();
}

}  // namespace zorvan::cli
