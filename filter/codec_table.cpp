// Which functions make the codecs of each filter code: one row a codec.
#include "filter/codec_table.h"

#include <array>

#include "filter/ascii85.h"
#include "filter/ccitt.h"
#include "filter/dct.h"
#include "filter/flate.h"
#include "filter/hex.h"
#include "filter/lzw.h"
#include "filter/run_length.h"

namespace zorvan::filter {
namespace {

struct Row {
    unsigned int encoderCode;
    unsigned int decoderCode;
    std::unique_ptr<Encoder> (*newEncoder)(const EncoderSetup& setup);
    std::unique_ptr<Decoder> (*newDecoder)(const DecoderSetup& setup);
};

constexpr std::array kRows = {
    Row{FILTER_ENCODE_DCT, FILTER_DECODE_DCT, NewDctEncoder, NewDctDecoder},
    Row{FILTER_ENCODE_CCITTFAX, FILTER_DECODE_CCITTFAX, NewCcittEncoder, NewCcittDecoder},
    Row{FILTER_ENCODE_FLATE, FILTER_DECODE_FLATE, NewFlateEncoder, NewFlateDecoder},
    Row{FILTER_ENCODE_LZW, FILTER_DECODE_LZW, NewLzwEncoder, NewLzwDecoder},
    Row{FILTER_ENCODE_RUNLENGTH, FILTER_DECODE_RUNLENGTH, NewRunLengthEncoder, NewRunLengthDecoder},
    Row{FILTER_ENCODE_ASCII85, FILTER_DECODE_ASCII85, NewAscii85Encoder, NewAscii85Decoder},
    Row{FILTER_ENCODE_ASCIIHEX, FILTER_DECODE_ASCIIHEX, NewHexEncoder, NewHexDecoder},
};

}  // namespace

std::unique_ptr<Encoder> NewEncoder(unsigned int code, const EncoderSetup& setup) {
    for (const Row& row : kRows) {
        if (row.encoderCode == code) {
            return row.newEncoder(setup);
        }
    }
    return nullptr;
}

std::unique_ptr<Decoder> NewDecoder(unsigned int code, const DecoderSetup& setup) {
    for (const Row& row : kRows) {
        if (row.decoderCode == code) {
            return row.newDecoder(setup);
        }
    }
    return NewCodec<DecoderOfNothing>(setup);
}

}  // namespace zorvan::filter
