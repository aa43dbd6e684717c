// What every codec is: an encoder that is fed bytes, or a decoder that is asked for them.
#ifndef FILTER_CODEC_H
#define FILTER_CODEC_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>

#include "filter/byte_sink.h"
#include "filter/byte_source.h"
#include "zorvan/filter.h"

namespace zorvan::filter {

using Bytes = std::span<const std::uint8_t>;

// A codec lives where it was made: zlib's state, for one, points back into it.
class Unmovable {
public:
    Unmovable() = default;
    Unmovable(const Unmovable&) = delete;
    Unmovable(Unmovable&&) = delete;
    Unmovable& operator=(const Unmovable&) = delete;
    Unmovable& operator=(Unmovable&&) = delete;
    virtual ~Unmovable() = default;
};

// What CreateEncoder was given; `parameters` is the block of the codec's filter code or null.
struct EncoderSetup {
    const void* parameters;
    const int* slot;
    FilterWriteFunction write;
};

// Each function tells whether all went well; after the first refusal of the write function none does.
class Encoder : public Unmovable {
public:
    explicit Encoder(const EncoderSetup& setup) : sink_(setup.slot, setup.write) {}

    bool Encode(Bytes bytes);
    // Ends this piece of data and hands all of it on; the next byte begins another, separate piece.
    bool End();
    // Hands on what can be handed on without changing how the data is cut into codes.
    bool Flush();

protected:
    ByteSink& Sink() { return sink_; }

private:
    virtual void EncodeBytes(Bytes bytes) = 0;
    virtual void EncodeEnd() = 0;
    virtual void EncodePending() {}

    ByteSink sink_;
};

// What CreateDecoder was given; `parameters` is the block of the codec's filter code or null.
struct DecoderSetup {
    const void* parameters;
    const int* slot;
    FilterReadFunction read;
};

// The results of DecodeData.
enum class Progress : int { kDamaged = -1, kEnd = 0, kMore = 1 };

// The caller's buffer while a decoder fills it.
class Output {
public:
    explicit Output(std::span<std::uint8_t> buffer) : buffer_(buffer) {}

    std::size_t Count() const { return count_; }
    bool IsFull() const { return count_ == buffer_.size(); }
    std::span<std::uint8_t> Space() const { return buffer_.subspan(count_); }
    void Advance(std::size_t count) { count_ += count; }
    void Put(std::uint8_t byte) { buffer_[count_++] = byte; }
    // Takes as many bytes as there is room for, and tells how many.
    std::size_t Put(Bytes bytes);
    std::size_t Fill(std::uint8_t byte, std::size_t count);

private:
    std::span<std::uint8_t> buffer_;
    std::size_t count_ = 0;
};

class Decoder : public Unmovable {
public:
    explicit Decoder(const DecoderSetup& setup) : source_(setup.slot, setup.read) {}

    // Fills `output` as far as the data goes. The end and damage are final: they are told again, with no
    // bytes, whenever more is asked for.
    Progress Decode(Output& output);

protected:
    ByteSource& Source() { return source_; }

private:
    // Called while the result is kMore, with room for a byte at least.
    virtual Progress DecodeBytes(Output& output) = 0;

    ByteSource source_;
    Progress progress_ = Progress::kMore;
};

// PDF's white space, the zero byte included. It may stand anywhere in the two ASCII encodings.
constexpr bool IsWhiteSpace(int byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r' && byte != '\v') || byte == 0;
}

// Stands for what cannot be decoded, so that a null pointer has one meaning: memory is lacking.
class DecoderOfNothing : public Decoder {
public:
    using Decoder::Decoder;

private:
    Progress DecodeBytes(Output& /*output*/) override { return Progress::kDamaged; }
};

// Memory is asked for when a codec is made, and its lack is a null pointer: nothing is thrown.
template <typename Codec, typename... Setup>
std::unique_ptr<Codec> NewCodec(const Setup&... setup) {
    return std::unique_ptr<Codec>(new (std::nothrow) Codec(setup...));
}

// The same for a codec that must be opened, which fails when memory is lacking.
template <typename Codec, typename... Setup>
std::unique_ptr<Codec> NewOpenCodec(const Setup&... setup) {
    auto codec = NewCodec<Codec>(setup...);
    if (codec != nullptr && !codec->Open()) {
        return nullptr;
    }
    return codec;
}

}  // namespace zorvan::filter

#endif
