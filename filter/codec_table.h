// The closed list of codecs, by filter code.
#ifndef FILTER_CODEC_TABLE_H
#define FILTER_CODEC_TABLE_H

#include <memory>

#include "filter/codec.h"

namespace zorvan::filter {

// Null when there is no such codec, its parameters are unusable or memory is lacking.
std::unique_ptr<Encoder> NewEncoder(unsigned int code, const EncoderSetup& setup);
// Null when memory is lacking; where there is no such codec, a decoder to which all data is damaged.
std::unique_ptr<Decoder> NewDecoder(unsigned int code, const DecoderSetup& setup);

}  // namespace zorvan::filter

#endif
