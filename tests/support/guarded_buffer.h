// Bytes that end where readable memory ends: to touch the one behind them ends the program.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

namespace zorvan::test {

class GuardedBuffer {
public:
    /// Room for so many bytes at least.
    explicit GuardedBuffer(std::size_t capacity);
    ~GuardedBuffer();
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
    std::uint8_t* start_ = nullptr;
    bool ready_ = false;
};

}  // namespace zorvan::test
