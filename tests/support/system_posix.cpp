// The system as POSIX and Linux have it.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/shell_text.h"
#include "support/system.h"

namespace zorvan::test {

Outcome RunShell(const std::string& command) {
    Outcome outcome;
    std::FILE* pipe = popen(("{ " + command + "\n} 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return outcome;
    }
    char buffer[4096];
    for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        outcome.text.append(buffer, count);
    }
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

std::string ShellPath(const std::string& path) {
    return path;
}

std::string MakeFolder(const std::string& begin) {
    std::string path = begin + "XXXXXX";
    if (mkdtemp(path.data()) == nullptr) {
        throw std::runtime_error("no folder " + path);
    }
    return path;
}

void EndAfter(unsigned seconds) {
    alarm(seconds);
}

std::vector<std::string> ExportedNames(const std::string& module) {
    return SortedLines(RunShell("nm -D --defined-only " + ShellWord(module) + " | sed 's/.* //'").text);
}

long PeakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

std::ptrdiff_t OpenHandles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

}  // namespace zorvan::test
