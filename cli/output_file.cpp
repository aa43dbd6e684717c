// Temporary name, buffer, rename.
#include "cli/output_file.h"

#include <cerrno>
#include <utility>

#include <unistd.h>

#include "cli/failure.h"
#include "cli/signals.h"
#include "cli/system.h"

namespace zorvan::cli {

OutputFile::OutputFile(const std::string& target) : name_(target), target_(target) {
    if (target == "-") {
        name_ = "standard output";
        descriptor_ = STDOUT_FILENO;
        return;
    }
    if (IsFolder(target)) {
        ThrowOutputFailure(name_, EISDIR);
    }
    if (IsDevice(target)) {
        OpenDirectly();
        return;
    }
    SettleTarget();
    OpenTemporaryFile(FolderOf(target_));
}

OutputFile::~OutputFile() {
    Close();
    if (!temporaryPath_.empty()) {
        ::unlink(temporaryPath_.c_str());
        RemoveOnSignal("");
    }
}

void OutputFile::OpenDirectly() {
    descriptor_ = OpenExistingForWriting(target_);
    if (descriptor_ < 0) {
        ThrowOutputFailure(name_, errno);
    }
}

// A symbolic link stays one: the file that it leads to is replaced. A file that may not be written is not
// replaced either, although the folder would allow it.
void OutputFile::SettleTarget() {
    if (!IsThere(target_)) {
        return;
    }
    target_ = WithLinksResolved(target_);
    if (::access(target_.c_str(), W_OK) != 0) {
        ThrowOutputFailure(name_, errno);
    }
}

void OutputFile::OpenTemporaryFile(const std::string& folder) {
    std::string path;
    const SignalsHeld held;
    descriptor_ = CreateBeside(folder, path);
    if (descriptor_ < 0) {
        ThrowOutputFailure(name_ + ": no file can be created beside it", errno);
    }
    temporaryPath_ = path;
    RemoveOnSignal(path);
    error_ = GiveUsualPermissions(descriptor_);
}

bool OutputFile::WriteBehindBuffer(const char* bytes, std::size_t count) {
    if (!Flush()) {
        return false;
    }
    if (count <= kBufferSize) {
        return Write(bytes, count);
    }
    const int error = WriteAll(descriptor_, bytes, count);
    flushed_ += count;
    return error == 0 || Refuse(error);
}

bool OutputFile::Flush() {
    if (error_ != 0) {
        return Refuse(error_);
    }
    const int error = WriteAll(descriptor_, buffer_.get(), used_);
    flushed_ += used_;
    used_ = 0;
    return error == 0 || Refuse(error);
}

// The buffer counts as full from now on, so that every later write comes here and is refused as well.
bool OutputFile::Refuse(int error) {
    error_ = error;
    used_ = kBufferSize;
    return false;
}

bool OutputFile::TakeBackTo(std::uint64_t position) {
    if (error_ != 0) {
        return false;
    }
    if (position >= flushed_) {
        used_ = static_cast<std::size_t>(position - flushed_);
        return true;
    }
    used_ = 0;
    flushed_ = position;
    const int error = CutAt(descriptor_, position);
    return error == 0 || Refuse(error);
}

void OutputFile::Commit() {
    Flush();
    ThrowIfFailed();
    if (temporaryPath_.empty()) {
        return;
    }
    // Some file systems tell of a full disk only here.
    if (::close(std::exchange(descriptor_, -1)) != 0) {
        ThrowOutputFailure(name_, errno);
    }
    const SignalsHeld held;
    if (const int error = Rename(temporaryPath_, target_); error != 0) {
        ThrowOutputFailure(name_, error);
    }
    temporaryPath_.clear();
    RemoveOnSignal("");
}

void OutputFile::ThrowIfFailed() const {
    if (error_ != 0) {
        ThrowOutputFailure(name_, error_);
    }
}

void OutputFile::Close() {
    if (descriptor_ > STDERR_FILENO) {
        ::close(descriptor_);
    }
}

}  // namespace zorvan::cli
