// The one place where a refused write becomes an exit code.
#include "cli/failure.h"

#include <cerrno>
#include <system_error>

namespace zorvan::cli {

void ThrowOutputFailure(const std::string& what, int error) {
    constexpr int kPipeSignal = 13;  // SIGPIPE, by which other programs end then, where there are signals
    if (error == EPIPE) {
        throw Failure(static_cast<ExitCode>(static_cast<int>(ExitCode::kBySignal) + kPipeSignal), "");
    }
    throw Failure(ExitCode::kBadOutput, what + ": " + std::generic_category().message(error));
}

}  // namespace zorvan::cli
