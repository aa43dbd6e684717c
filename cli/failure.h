// How a job ends: the program's exit codes, and the exception that carries one of them to the top.
#pragma once

#include <stdexcept>
#include <string>

namespace zorvan::cli {

enum class ExitCode : int {
    kDone = 0,
    kBadInput = 1,    // the PDF cannot be opened or read
    kBadOutput = 2,   // the output cannot be written
    kWarnings = 3,    // done, but an error was recorded or a page left out
    kPassword = 4,    // the password does not open the file
    kFailed = 5,      // the conversion failed
    kUsage = 64,      // the command line asks for what cannot be
    kTimeout = 124,   // the deadline has passed
    kBySignal = 128,  // plus the number of the signal
};

// Ends the job. The message is one line without its end; an empty one is not printed.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
    ExitCode Code() const { return code_; }

private:
    ExitCode code_;
};

// Throws the failure for an output that the system refused with `error`, an errno. A closed pipe is the
// reader's way to say that it has enough: it gets the status of SIGPIPE and no message.
[[noreturn]] void ThrowOutputFailure(const std::string& what, int error);

}  // namespace zorvan::cli
