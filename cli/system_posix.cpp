// The system as POSIX and Linux have it.
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/system.h"

namespace zorvan::cli {
namespace {

int Outcome(bool done) {
    return done ? 0 : errno;
}

}  // namespace

int OpenForReading(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

int OpenWithoutWaiting(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

int OpenExistingForWriting(const std::string& path) {
    return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
}

int CreateBeside(const std::string& folder, std::string& path) {
    path = folder + ".zorvan-XXXXXX";
    return ::mkostemp(path.data(), O_CLOEXEC);
}

int CreateNameless(const std::string& folder) {
    std::string path;
    const int descriptor = CreateBeside(folder, path);
    if (descriptor >= 0) {
        ::unlink(path.c_str());
    }
    return descriptor;
}

int GiveUsualPermissions(int descriptor) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return Outcome(::fchmod(descriptor, static_cast<mode_t>(0666U & ~mask)) == 0);
}

int WriteAll(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(descriptor, bytes, count);
        if (written >= 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        } else if (errno == EAGAIN) {
            pollfd ready = {descriptor, POLLOUT, 0};
            ::poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

std::ptrdiff_t ReadAt(int descriptor, char* bytes, std::size_t count, std::uint64_t position) {
    return ::pread(descriptor, bytes, count, static_cast<off_t>(position));
}

int CutAt(int descriptor, std::uint64_t position) {
    const auto offset = static_cast<off_t>(position);
    return Outcome(::ftruncate(descriptor, offset) == 0 && ::lseek(descriptor, offset, SEEK_SET) == offset);
}

// A file of ours that got the number of a closed standard stream would take that stream's text. What stands
// in for it can only be read, so that writing to a closed standard output is an error still.
void PrepareStandardStreams() {
    int descriptor = ::open("/dev/null", O_RDONLY);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = ::open("/dev/null", O_RDONLY);
    }
    ::close(descriptor);
}

std::string FolderOf(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    return separator == std::string::npos ? "./" : path.substr(0, separator + 1);
}

std::string TemporaryFolder() {
    std::error_code noFolder;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(noFolder);
    return noFolder ? "/tmp/" : WithSeparator(folder.string());
}

std::string ProgramFolder() {
    std::error_code unknown;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    return unknown ? "./" : FolderOf(program.string());
}

std::string WithSeparator(const std::string& folder) {
    return folder.ends_with('/') ? folder : folder + "/";
}

bool IsThere(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

bool IsFolder(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

bool IsDevice(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    return std::filesystem::is_other(status);
}

bool IsSameFile(const std::string& one, const std::string& other) {
    std::error_code ignored;
    return std::filesystem::equivalent(one, other, ignored);
}

std::string WithLinksResolved(const std::string& path) {
    std::error_code unknown;
    const std::filesystem::path resolved = std::filesystem::canonical(path, unknown);
    return unknown ? path : resolved.string();
}

int Rename(const std::string& from, const std::string& to) {
    return Outcome(std::rename(from.c_str(), to.c_str()) == 0);
}

std::string PathAsUtf8(const std::string& path) {
    return path;
}

std::string TextAsShown(const std::string& utf8) {
    return utf8;
}

std::string ShortPath(const std::string& path, int descriptor, std::size_t longest) {
    return path.size() <= longest ? path : "/proc/self/fd/" + std::to_string(descriptor);
}

}  // namespace zorvan::cli
