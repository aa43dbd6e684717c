// What the tests ask of the system beside the C++ library. On Windows they run under Wine, where a POSIX
// shell and Ghostscript are at hand all the same.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zorvan::test {

/// What a program has printed on both of its outputs, and its exit status.
struct Outcome {
    int status = -1;
    std::string text;
};

/// Runs a command line of the POSIX shell with both outputs caught.
Outcome RunShell(const std::string& command);

/// A file's path as the shell and its programs know it.
std::string ShellPath(const std::string& path);
/// The same between quotes, for any path or argument.
std::string ShellWord(const std::string& text);

/// Makes a folder whose path begins like this and gives the path; throws when there can be none.
std::string MakeFolder(const std::string& begin);

/// Ends the process when it is still there after so many seconds.
void EndAfter(unsigned seconds);

/// The names that a module exports, sorted.
std::vector<std::string> ExportedNames(const std::string& module);

/// The most memory of the process that was ever in use, in KiB.
long PeakMemory();

/// Files, and what else the process holds open of the system.
std::ptrdiff_t OpenHandles();

}  // namespace zorvan::test
