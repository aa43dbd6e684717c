// The file that is written: under a temporary name until it is whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

namespace zorvan::cli {

// A regular file, existing or new, is written beside the target under a temporary name and renamed by
// Commit, so the target is the old file or the whole new one, never half a file. "-" (standard output)
// and what is no regular file, such as a device or a FIFO, is written directly.
class OutputFile {
public:
    // Throws a Failure when the output cannot be opened.
    explicit OutputFile(const std::string& target);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    // Without Commit the temporary file is removed.
    ~OutputFile();

    // Takes bytes into the buffer, the system's door being far slower than the pieces that the library hands
    // out are short. False when the system refused bytes, now or before.
    bool Write(const char* bytes, std::size_t count) {
        if (count > kBufferSize - used_) {
            return WriteBehindBuffer(bytes, count);
        }
        std::memcpy(buffer_.get() + used_, bytes, count);
        used_ += count;
        return true;
    }

    std::uint64_t Position() const { return flushed_ + used_; }
    // Whether bytes that were written can be taken back.
    bool CanTakeBack() const { return !temporaryPath_.empty(); }
    // Takes back what was written from `position` on. Only where CanTakeBack.
    bool TakeBackTo(std::uint64_t position);

    // Writes what is left and gives the file its name. Throws a Failure when the system refuses.
    void Commit();
    void ThrowIfFailed() const;

private:
    static constexpr std::size_t kBufferSize = 131072;

    void OpenDirectly();
    void OpenTemporaryFile(const std::string& folder);
    void SettleTarget();
    bool WriteBehindBuffer(const char* bytes, std::size_t count);
    bool Flush();
    bool Refuse(int error);
    void Close();

    std::string name_;           // as messages tell it
    std::string target_;         // with symbolic links resolved
    std::string temporaryPath_;  // empty when written directly, and after Commit
    int descriptor_ = -1;
    int error_ = 0;
    std::uint64_t flushed_ = 0;
    std::size_t used_ = 0;
    std::unique_ptr<char[]> buffer_ = std::make_unique<char[]>(kBufferSize);
};

}  // namespace zorvan::cli
