// Memory first, then a file that vanishes with the process.
#include "cli/page_buffer.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <unistd.h>

#include "cli/system.h"

namespace zorvan::cli {

PageBuffer::~PageBuffer() {
    if (file_ >= 0) {
        ::close(file_);
    }
}

bool PageBuffer::Append(const char* bytes, std::size_t count) {
    memory_.insert(memory_.end(), bytes, bytes + count);
    return memory_.size() <= memoryLimit_ || Spill();
}

bool PageBuffer::Spill() {
    if (file_ < 0 && !OpenTemporaryFile()) {
        return false;
    }
    error_ = WriteAll(file_, memory_.data(), memory_.size());
    spilled_ += memory_.size();
    memory_.clear();
    return error_ == 0;
}

bool PageBuffer::OpenTemporaryFile() {
    file_ = CreateNameless(TemporaryFolder());
    error_ = file_ < 0 ? errno : 0;
    return file_ >= 0;
}

bool PageBuffer::Copy(std::uint64_t begin, std::uint64_t end, const Taker& take) {
    if (begin < spilled_ && !CopySpilled(begin, std::min(end, spilled_), take)) {
        return false;
    }
    if (end <= spilled_) {
        return true;
    }
    const std::size_t from = begin > spilled_ ? static_cast<std::size_t>(begin - spilled_) : 0;
    return take({memory_.data() + from, static_cast<std::size_t>(end - spilled_) - from});
}

bool PageBuffer::CopySpilled(std::uint64_t begin, std::uint64_t end, const Taker& take) {
    std::array<char, 65536> chunk{};
    while (begin < end) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(end - begin, chunk.size()));
        const std::ptrdiff_t got = ReadAt(file_, chunk.data(), wanted, begin);
        if (got <= 0) {
            error_ = got < 0 ? errno : EIO;
            return false;
        }
        if (!take({chunk.data(), static_cast<std::size_t>(got)})) {
            return false;
        }
        begin += static_cast<std::uint64_t>(got);
    }
    return true;
}

void PageBuffer::Clear() {
    memory_.clear();
    spilled_ = 0;
    if (file_ >= 0) {
        // The next spill starts over; a file that is never shortened would keep the largest page's size.
        error_ = CutAt(file_, 0);
    }
}

}  // namespace zorvan::cli
