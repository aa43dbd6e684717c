// The bits of CCITTFax data, the highest of a byte first.
#ifndef FILTER_CCITT_BITS_H
#define FILTER_CCITT_BITS_H

#include <cstdint>

#include "filter/byte_sink.h"
#include "filter/byte_source.h"
#include "filter/ccitt_codes.h"

namespace zorvan::filter {

class CcittBitReader {
public:
    explicit CcittBitReader(ByteSource& source) : source_(source) {}

    // The next bits, at most 24; zeros follow the last one.
    unsigned int Peek(unsigned int count) {
        const bool whole = Has(count);
        const std::uint64_t bits = whole ? bits_ >> (count_ - count) : bits_ << (count - count_);
        return static_cast<unsigned int>(bits & ((std::uint64_t{1} << count) - 1));
    }

    // Whether so many bits, at most 24, are left.
    bool Has(unsigned int count) {
        while (count_ < count) {
            const int byte = source_.Get();
            if (byte == ByteSource::kEnd) {
                return false;
            }
            bits_ = bits_ << 8U | static_cast<std::uint8_t>(byte);
            count_ += 8;
        }
        return true;
    }

    // Passes bits that are there.
    void Skip(unsigned int count) { count_ -= count; }
    // Passes the rest of a byte that was begun.
    void Align() { count_ -= count_ % 8; }

private:
    ByteSource& source_;
    std::uint64_t bits_ = 0;
    unsigned int count_ = 0;
};

class CcittBitWriter {
public:
    explicit CcittBitWriter(ByteSink& sink) : sink_(sink) {}

    void Put(CcittCode code) {
        bits_ = bits_ << code.length | code.bits;
        count_ += code.length;
        while (count_ >= 8) {
            count_ -= 8;
            sink_.Put(static_cast<std::uint8_t>(bits_ >> count_ & 0xFFU));
        }
    }

    // Zeros, until `count` more bits end a byte.
    void AlignBefore(unsigned int count) {
        while ((count_ + count) % 8 != 0) {
            Put(CcittCode("0"));
        }
    }

private:
    ByteSink& sink_;
    std::uint32_t bits_ = 0;
    unsigned int count_ = 0;
};

}  // namespace zorvan::filter

#endif
