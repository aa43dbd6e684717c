// Runs the built program, or another one, as a process of its own.
#pragma once

#include <string>
#include <vector>

namespace zorvan::cli {

struct RunResult {
    int exitCode = 0;  // -n when signal n ended it
    std::string out;
    std::string err;
};

// Runs `command` to its end.
RunResult Run(const std::vector<std::string>& command);
// The same for the program under test.
RunResult RunZorvan(const std::vector<std::string>& arguments);

}  // namespace zorvan::cli
