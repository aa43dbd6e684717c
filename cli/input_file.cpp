// Opens and checks the PDF.
#include "cli/input_file.h"

#include <cerrno>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

#include "cli/failure.h"
#include "cli/system.h"

namespace zorvan::cli {
namespace {

constexpr const char* kIsFolder = "is a directory, not a PDF file";

[[noreturn]] void RejectInput(const std::string& path, const std::string& reason) {
    throw Failure(ExitCode::kBadInput, path + ": " + reason);
}

}  // namespace

InputFile::InputFile(const std::string& path) : path_(path), descriptor_(OpenWithoutWaiting(path)) {
    if (descriptor_ < 0) {
        const int error = errno;
        RejectInput(path_, IsFolder(path_) ? kIsFolder : std::generic_category().message(error));
    }
    try {
        Check();
    } catch (...) {
        ::close(descriptor_);
        throw;
    }
}

InputFile::~InputFile() {
    ::close(descriptor_);
}

void InputFile::Check() const {
    struct stat status = {};
    if (::fstat(descriptor_, &status) != 0) {
        RejectInput(path_, std::generic_category().message(errno));
    }
    if (S_ISDIR(status.st_mode)) {
        RejectInput(path_, kIsFolder);
    }
    if (!S_ISREG(status.st_mode)) {
        RejectInput(path_, "is not a regular file");
    }
    if (status.st_size == 0) {
        RejectInput(path_, "is empty, not a PDF file");
    }
}

std::string InputFile::LibraryPath() const {
    constexpr std::size_t kLongestPath = 259;
    return ShortPath(path_, descriptor_, kLongestPath);
}

}  // namespace zorvan::cli
