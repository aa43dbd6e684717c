// The block between the encoders and the caller's write function.
#include "filter/byte_sink.h"

#include <algorithm>
#include <utility>

namespace zorvan::filter {

void ByteSink::Put(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::span<std::uint8_t> space = Space();
        const std::size_t count = std::min(space.size(), bytes.size());
        std::copy_n(bytes.begin(), count, space.begin());
        Advance(count);
        bytes = bytes.subspan(count);
    }
}

std::span<std::uint8_t> ByteSink::Space() {
    if (fill_ == block_.size()) {
        HandOn();
    }
    return std::span(block_).subspan(fill_);
}

void ByteSink::HandOn() {
    const auto count = static_cast<unsigned int>(std::exchange(fill_, 0));
    if (count == 0 || failed_) {
        return;
    }
    // Set first: a write function that does not come back has refused as well.
    failed_ = true;
    unsigned int written = 0;
    failed_ = write_(slot_, block_.data(), count, &written) == 0;
}

}  // namespace zorvan::filter
