// The module's eight entry points: plain C around the codecs. Nothing is thrown across them.
#include <cstdint>
#include <memory>
#include <span>

#include "filter/codec_table.h"
#include "zorvan/filter.h"

namespace {

using zorvan::filter::Bytes;
using zorvan::filter::Decoder;
using zorvan::filter::Encoder;
using zorvan::filter::Output;

// Codecs throw nothing, but they call the caller's functions, and what those throw must not pass a C
// interface. The codec has failed then: it noted so before it called.
template <typename Call>
int Guarded(Call call) {
    try {
        return call();
    } catch (...) {
        return -1;
    }
}

template <typename Call>
int GuardedEncoding(void* handle, Call call) {
    auto* const encoder = static_cast<Encoder*>(handle);
    if (encoder == nullptr) {
        return -1;
    }
    return Guarded([&] { return call(*encoder) ? 0 : -1; });
}

}  // namespace

void* ZORVAN_CALL CreateEncoder(unsigned int filterCode, const void* parameters, const int* slot,
                                FilterWriteFunction write) {
    if (write == nullptr) {
        return nullptr;
    }
    return zorvan::filter::NewEncoder(filterCode, {parameters, slot, write}).release();
}

int ZORVAN_CALL EncodeData(void* encoder, const void* bytes, unsigned int count) {
    if (bytes == nullptr && count > 0) {
        return -1;
    }
    const Bytes data(static_cast<const std::uint8_t*>(bytes), count);
    return GuardedEncoding(encoder, [data](Encoder& codec) { return codec.Encode(data); });
}

int ZORVAN_CALL Encode_EOD(void* encoder) {
    return GuardedEncoding(encoder, [](Encoder& codec) { return codec.End(); });
}

int ZORVAN_CALL Flush(void* encoder) {
    return GuardedEncoding(encoder, [](Encoder& codec) { return codec.Flush(); });
}

// Writes nothing: data that was not ended is dropped with its encoder.
void ZORVAN_CALL DestroyEncoder(void* encoder) {
    const std::unique_ptr<Encoder> owner(static_cast<Encoder*>(encoder));
}

// The length above the low eight bits is no help to codecs whose memory is fixed.
void* ZORVAN_CALL CreateDecoder(unsigned int filterCode, const void* parameters, const int* slot,
                                FilterReadFunction read) {
    if (read == nullptr) {
        return nullptr;
    }
    return zorvan::filter::NewDecoder(filterCode & 0xFFU, {parameters, slot, read}).release();
}

int ZORVAN_CALL DecodeData(void* decoder, void* output, unsigned int* size) {
    if (size == nullptr) {
        return -1;
    }
    const unsigned int room = *size;
    *size = 0;
    if (decoder == nullptr || (output == nullptr && room > 0)) {
        return -1;
    }
    Output filled({static_cast<std::uint8_t*>(output), room});
    const int result =
        Guarded([&] { return static_cast<int>(static_cast<Decoder*>(decoder)->Decode(filled)); });
    *size = static_cast<unsigned int>(filled.Count());
    return result;
}

void ZORVAN_CALL DestroyDecoder(void* decoder) {
    const std::unique_ptr<Decoder> owner(static_cast<Decoder*>(decoder));
}
