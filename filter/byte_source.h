// Where decoders get their input: the caller's read function, asked for one block at a time.
#ifndef FILTER_BYTE_SOURCE_H
#define FILTER_BYTE_SOURCE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "zorvan/filter.h"

namespace zorvan::filter {

class ByteSource {
public:
    static constexpr int kEnd = -1;

    ByteSource(const int* slot, FilterReadFunction read) : slot_(slot), read_(read) {}

    // The next byte, or kEnd for ever after the last one.
    int Get() { return next_ < fill_ || Refill() ? block_[next_++] : kEnd; }

    // The bytes at hand, which Skip then takes in part or whole; empty only at the end of the input.
    std::span<const std::uint8_t> Block();
    void Skip(std::size_t count) { next_ += count; }

private:
    bool Refill();

    const int* slot_;
    FilterReadFunction read_;
    bool ended_ = false;
    std::size_t next_ = 0;
    std::size_t fill_ = 0;
    std::array<std::uint8_t, 4096> block_;
};

}  // namespace zorvan::filter

#endif
