// Bytes that end where readable memory ends: to touch the one behind them ends the program.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

namespace zorvan::test {

class GuardedBuffer {
public:
    /// Room for so many bytes at least.
    explicit GuardedBuffer(std::size_t capacity) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        size_ = (capacity + page - 1) / page * page;
        mapped_ = size_ + page;
        void* pages = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        start_ = pages == MAP_FAILED ? nullptr : static_cast<std::uint8_t*>(pages);
        ready_ = start_ != nullptr && mprotect(start_ + size_, page, PROT_NONE) == 0;
    }
    ~GuardedBuffer() {
        if (start_ != nullptr) {
            munmap(start_, mapped_);
        }
    }
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;

    [[nodiscard]] bool Ready() const { return ready_; }
    /// So many bytes at the edge, to be written.
    [[nodiscard]] std::span<std::uint8_t> Last(std::size_t count) const {
        return {start_ + size_ - count, count};
    }
    /// The text, which must fit, at the edge.
    [[nodiscard]] std::span<const std::uint8_t> Put(std::string_view text) const {
        std::ranges::copy(text, Last(text.size()).begin());
        return Last(text.size());
    }

private:
    std::size_t size_ = 0;
    std::size_t mapped_ = 0;
    std::uint8_t* start_ = nullptr;
    bool ready_ = false;
};

}  // namespace zorvan::test
