// The system as Wine has it: Windows, with the machine's own programs behind start /unix.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <windows.h>
// Behind what it needs.
#include <psapi.h>

#include "support/shell_text.h"
#include "support/system.h"

namespace zorvan::test {
namespace {

std::string TextOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void RunToItsEnd(std::string commandLine) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == FALSE) {
        throw std::runtime_error("cannot start " + commandLine);
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

void WaitForFile(const std::string& path) {
    constexpr int kTries = 20000;
    constexpr DWORD kMilliseconds = 10;
    for (int i = 0; i < kTries && !std::filesystem::exists(path); ++i) {
        Sleep(kMilliseconds);
    }
}

void CALLBACK EndNow(void* /*nothing*/, BOOLEAN /*always*/) {
    TerminateProcess(GetCurrentProcess(), 1);
}

}  // namespace

// Neither the exit status nor the end comes through, so a file tells both.
Outcome RunShell(const std::string& command) {
    const std::string folder =
        MakeFolder((std::filesystem::temp_directory_path() / "zorvan-shell-").string());
    const auto in = [&folder](const char* name) { return ShellWord(ShellPath(folder + "/" + name)); };
    std::ofstream(folder + "/script", std::ios::binary)
        << "cd " << ShellWord(ShellPath(std::filesystem::current_path().string())) << "\n(" << command
        << "\n) >" << in("text") << " 2>&1 </dev/null\necho $? >" << in("new") << "\nmv " << in("new") << " "
        << in("status") << "\n";
    RunToItsEnd("start.exe /wait /unix /bin/sh " + ShellPath(folder + "/script"));
    WaitForFile(folder + "/status");
    const std::string status = TextOf(folder + "/status");
    Outcome outcome{status.empty() ? -1 : std::stoi(status), TextOf(folder + "/text")};
    std::filesystem::remove_all(folder);
    return outcome;
}

// Drive Z is the whole of the machine's own tree.
std::string ShellPath(const std::string& path) {
    std::string shellPath = path.size() > 1 && path[1] == ':' ? path.substr(2) : path;
    std::replace(shellPath.begin(), shellPath.end(), '\\', '/');
    return shellPath;
}

std::string MakeFolder(const std::string& begin) {
    constexpr int kTries = 10000;
    for (int i = 0; i < kTries; ++i) {
        const std::string path = begin + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(i);
        if (std::filesystem::create_directory(path)) {
            return path;
        }
    }
    throw std::runtime_error("no folder " + begin);
}

void EndAfter(unsigned seconds) {
    constexpr DWORD kMilliseconds = 1000;
    HANDLE timer = nullptr;
    CreateTimerQueueTimer(&timer, nullptr, EndNow, nullptr, seconds * kMilliseconds, 0, WT_EXECUTEONLYONCE);
}

std::vector<std::string> ExportedNames(const std::string& module) {
    return SortedLines(RunShell("i686-w64-mingw32-objdump -p " + ShellWord(ShellPath(module)) +
                                " | sed -n 's/^\t\\[ *[0-9]*\\] \\([^+]*\\)$/\\1/p'")
                           .text);
}

long PeakMemory() {
    constexpr SIZE_T kBytes = 1024;
    PROCESS_MEMORY_COUNTERS counters{};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<long>(counters.PeakWorkingSetSize / kBytes);
}

// Wine's GetProcessHandleCount always tells 0.
std::ptrdiff_t OpenHandles() {
    constexpr std::uintptr_t kStep = 4;
    constexpr std::uintptr_t kMost = 0x10000;
    std::ptrdiff_t count = 0;
    for (std::uintptr_t value = kStep; value < kMost; value += kStep) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE ? 1 : 0;
    }
    return count;
}

}  // namespace zorvan::test
