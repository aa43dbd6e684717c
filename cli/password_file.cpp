// Reads a password. Of a long file only the beginning is read: a password has 32 bytes at most.
#include "cli/password_file.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <unistd.h>

#include "cli/failure.h"
#include "cli/system.h"

namespace zorvan::cli {
namespace {

constexpr std::size_t kEnough = 4096;

std::string ReadBeginning(int descriptor) {
    std::string text;
    std::array<char, kEnough> buffer{};
    while (text.size() < kEnough) {
        const ssize_t count = ::read(descriptor, buffer.data(), kEnough - text.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            errno = count < 0 ? errno : 0;
            return text;
        }
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    errno = 0;
    return text;
}

void DropLineEnd(std::string& text) {
    if (text.ends_with('\n')) {
        text.pop_back();
    }
    if (text.ends_with('\r')) {
        text.pop_back();
    }
}

}  // namespace

std::string ReadPasswordFile(const std::string& path) {
    const bool standardInput = path == "-";
    const int descriptor = standardInput ? STDIN_FILENO : OpenForReading(path);
    std::string text;
    if (descriptor >= 0) {
        text = ReadBeginning(descriptor);
    }
    const int error = errno;
    if (descriptor >= 0 && !standardInput) {
        ::close(descriptor);
    }
    if (descriptor < 0 || error != 0) {
        throw Failure(ExitCode::kUsage, path + ": the password cannot be read: " + std::strerror(error));
    }
    DropLineEnd(text);
    return text;
}

}  // namespace zorvan::cli
