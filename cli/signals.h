// What a signal does to a job: it ends at once and leaves no temporary file. On Windows the console's
// interruptions are SIGINT and SIGTERM.
#pragma once

#include <string>

namespace zorvan::cli {

// SIGTERM, SIGINT and SIGHUP remove the temporary file and exit with 128 plus the signal's number, wherever
// the job is; those that are ignored on entry (nohup) stay so. SIGPIPE is ignored: a closed pipe is
// seen by the write that meets it, and a closed stderr stops no job. So is SIGXFSZ: a file that may
// not grow further is an output that cannot be written, like a full disk.
void InstallSignalHandlers();

// From now on the job has so many seconds; then it ends like by a signal, with a message and the code for
// that. 0 gives it all the time.
void StartDeadline(unsigned seconds);

// Names the file that a signal removes; an empty name takes that back. At most one at a time.
void RemoveOnSignal(const std::string& path);

// Holds the signals back while it lives, so that a file cannot come to be unnamed between two steps.
class SignalsHeld {
public:
    SignalsHeld();
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;
    ~SignalsHeld();
};

}  // namespace zorvan::cli
