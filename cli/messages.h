// What the program says on stderr, one line at a time.
#pragma once

#include <string>

#include "cli/library_session.h"
#include "cli/progress_bar.h"

namespace zorvan::cli {

class Messages {
public:
    // `quiet` leaves the warnings out, never the errors.
    Messages(bool quiet, ProgressBar& progress) : isQuiet_(quiet), progress_(progress) {}

    void Error(const std::string& text);
    void Warning(const std::string& text);

private:
    bool isQuiet_;
    ProgressBar& progress_;
};

// Prints "zorvan: <text>" on stderr, control characters escaped.
void PrintMessage(const std::string& text);

// "error -4093: Operator is not enough. (at byte 123, near "q 1 w w")".
std::string ErrorText(const LibraryError& error);

// The text for a call that ended with `status`, which need not be the job's first error.
std::string StatusText(int status, const LibraryError& first);

}  // namespace zorvan::cli
