// What all codecs share: failure that stays, and the caller's buffer.
#include "filter/codec.h"

#include <algorithm>

namespace zorvan::filter {

bool Encoder::Encode(Bytes bytes) {
    if (!sink_.HasFailed()) {
        EncodeBytes(bytes);
    }
    return !sink_.HasFailed();
}

bool Encoder::End() {
    if (!sink_.HasFailed()) {
        EncodeEnd();
        sink_.HandOn();
    }
    return !sink_.HasFailed();
}

bool Encoder::Flush() {
    if (!sink_.HasFailed()) {
        EncodePending();
        sink_.HandOn();
    }
    return !sink_.HasFailed();
}

std::size_t Output::Put(Bytes bytes) {
    const std::span<std::uint8_t> space = Space();
    const std::size_t count = std::min(space.size(), bytes.size());
    std::copy_n(bytes.begin(), count, space.begin());
    Advance(count);
    return count;
}

std::size_t Output::Fill(std::uint8_t byte, std::size_t count) {
    const std::span<std::uint8_t> space = Space();
    const std::size_t filled = std::min(space.size(), count);
    std::fill_n(space.begin(), filled, byte);
    Advance(filled);
    return filled;
}

Progress Decoder::Decode(Output& output) {
    if (progress_ != Progress::kMore || output.IsFull()) {
        return progress_;
    }
    // Set first: a read function that does not come back leaves a decoder that cannot go on.
    progress_ = Progress::kDamaged;
    progress_ = DecodeBytes(output);
    return progress_;
}

}  // namespace zorvan::filter
