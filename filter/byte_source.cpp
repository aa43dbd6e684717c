// The block between the caller's read function and the decoders.
#include "filter/byte_source.h"

#include <algorithm>

namespace zorvan::filter {

std::span<const std::uint8_t> ByteSource::Block() {
    if (next_ == fill_) {
        Refill();
    }
    return std::span(block_).subspan(next_, fill_ - next_);
}

bool ByteSource::Refill() {
    next_ = 0;
    fill_ = 0;
    if (ended_) {
        return false;
    }
    unsigned int count = 0;
    const int whole = read_(slot_, block_.data(), static_cast<unsigned int>(block_.size()), &count);
    fill_ = std::min<std::size_t>(count, block_.size());
    // A caller that claims a whole block and delivers nothing would otherwise be asked for ever.
    ended_ = whole == 0 || fill_ == 0;
    return fill_ > 0;
}

}  // namespace zorvan::filter
