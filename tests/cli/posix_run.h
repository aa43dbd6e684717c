// Runs the built program where a test has something to say about its process.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "tests/cli/program_run.h"

namespace zorvan::cli {

// `prepare` is called in the new process before the program starts.
RunResult RunZorvan(const std::vector<std::string>& arguments, const std::function<void()>& prepare);

// The program under test, stopped in the middle of its job: its stderr is a full pipe, so it stands still
// where it has something to say.
class StuckZorvan {
public:
    explicit StuckZorvan(const std::vector<std::string>& arguments,
                         const std::function<void()>& prepare = {});
    StuckZorvan(const StuckZorvan&) = delete;
    StuckZorvan& operator=(const StuckZorvan&) = delete;
    ~StuckZorvan();

    void Send(int signal) const;
    // Empties the pipe, so that the program goes on.
    void Release();
    // Waits for the end and gives the exit code as in RunResult.
    int Wait();

private:
    pid_t process_ = -1;
    int pipe_ = -1;
};

}  // namespace zorvan::cli
