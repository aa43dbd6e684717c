// Where encoders put their output: one block of bytes that goes to the caller's write function when full.
#ifndef FILTER_BYTE_SINK_H
#define FILTER_BYTE_SINK_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "zorvan/filter.h"

namespace zorvan::filter {

class ByteSink {
public:
    ByteSink(const int* slot, FilterWriteFunction write) : slot_(slot), write_(write) {}

    void Put(std::uint8_t byte) {
        if (fill_ == block_.size()) {
            HandOn();
        }
        block_[fill_++] = byte;
    }
    void Put(std::span<const std::uint8_t> bytes);

    // Room to write into directly, never empty; what was written there is then reported to Advance.
    std::span<std::uint8_t> Space();
    void Advance(std::size_t count) { fill_ += count; }

    // Passes on what is there. Nothing is passed, and the write function not called, when nothing is there
    // or after a refusal: bytes that follow a refusal are dropped, so encoders need not look.
    void HandOn();
    // An encoder that cannot go on makes its own failure one of these.
    void Fail() { failed_ = true; }
    bool HasFailed() const { return failed_; }

private:
    const int* slot_;
    FilterWriteFunction write_;
    bool failed_ = false;
    std::size_t fill_ = 0;
    std::array<std::uint8_t, 4096> block_;
};

}  // namespace zorvan::filter

#endif
