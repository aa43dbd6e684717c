// One encoding or decoding run over the codec library: every encoder and decoder is driven through this
// class.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "api/status.h"
#include "pdf/byte_scan.h"
#include "pdf/object.h"
#include "zorvan/filter.h"

namespace zorvan {

enum class CodecKind : std::uint32_t {
    kNone = 0,
#define ZORVAN_FILTER(name, decoderKind, decoderCode, encoderKind, encoderCode) \
    k##name = (decoderKind), k##name##Encoder = (encoderKind),
#include "pdf/filters.inc"
#undef ZORVAN_FILTER
};

/// The decoder kind of a filter name, kNone for a name that is no filter.
CodecKind DecoderKindOf(std::uint32_t filterName);

class Codec;

/// The job's live codecs by slot number: the codec library's callbacks know a codec by the number alone. Slot
/// 0 is kept for encoders, of which there is one at a time.
class CodecSlots {
public:
    CodecSlots() = default;
    /// Gives the codec a number; it must be taken out again.
    int Enter(Codec& codec, bool encoder);
    void Clear(int slot);
    /// Null when the slot's codec is gone.
    [[nodiscard]] Codec* Find(int slot) const;

private:
    std::vector<Codec*> codecs_ = {};
};

/// What a decoder's parameters are: none, or the block of its filter.
using CodecParameters = std::variant<std::monostate, FilterDctParameters, FilterCcittParameters>;

/// The block for a filter from its `DecodeParms`. Flate and LZW get none, so that predictors are never
/// undone: the device undoes them, since the data passes through as it is. A CCITTFax block's black-is-one
/// flag is looked up under "Blackls1", which no file has, for the same reason.
CodecParameters DecoderParametersOf(CodecKind kind, PdfObject decodeParms);

class Codec {
public:
    /// Where an encoder's output goes; its failure stops the encoder and is handed back by it.
    using Sink = std::function<Status(std::string_view bytes)>;

    /// A decoder of the given bytes.
    Codec(CodecKind decoderKind, CodecParameters parameters, Bytes input);
    /// A decoder of what another decoder delivers, piece by piece through `buffer`.
    Codec(CodecKind decoderKind, CodecParameters parameters, Codec& upstream, std::span<std::uint8_t> buffer);
    /// An encoder.
    Codec(CodecKind encoderKind, Sink sink);
    ~Codec();
    Codec(const Codec&) = delete;
    Codec& operator=(const Codec&) = delete;

    /// Decodes into `output`; the bytes stored are `produced`, with every result. 1: more may follow, 0: the
    /// end, -1: the data is damaged, or there is no such decoder. Throws std::bad_alloc.
    int Decode(std::span<std::uint8_t> output, std::uint32_t& produced);

    /// Encodes a piece; EndEncoding writes the end of the data. A failure is the sink's own status, or
    /// kNoObject (-1) when the codec itself fails.
    Status EncodeChunk(Bytes bytes);
    Status EndEncoding();

private:
    Codec(CodecKind kind, CodecParameters parameters, Bytes input, bool encoder);

    [[nodiscard]] bool CreateDecoderHandle();
    [[nodiscard]] bool CreateEncoderHandle();
    [[nodiscard]] const void* ParameterBlock() const;
    [[nodiscard]] Status EncoderStatus(int result) const;
    /// Decode once the handles are made. Throws nothing.
    int DecodePiece(std::span<std::uint8_t> output, std::uint32_t& produced);
    /// Gets the next piece from upstream; false at its end.
    bool Refill();
    /// Notes work; false when there has been too much of it, and the input counts as ended.
    bool Spend(std::size_t bytes);

    static int ZORVAN_CALL ReadInput(const int* slot, void* buffer, unsigned int wanted, unsigned int* read);
    static int ZORVAN_CALL WriteEncoded(const int* slot, const void* bytes, unsigned int count,
                                        unsigned int* written);

    CodecKind kind_;
    CodecParameters parameters_;
    bool encoder_;
    int slot_;
    Bytes input_;
    Codec* upstream_ = nullptr;
    std::span<std::uint8_t> upstreamBuffer_;
    int upstreamState_ = 0;  // as Decode tells it; 0 also without upstream
    bool spent_ = false;     // told when the codec library has returned: inside its calls nothing may throw
    Sink sink_;
    Status sinkStatus_ = Status::kOk;
    void* handle_ = nullptr;
};

}  // namespace zorvan
