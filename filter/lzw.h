// The LZW codec, both ways: PLRM 3.13, LZWEncode and LZWDecode, with an early change of code width.
#ifndef FILTER_LZW_H
#define FILTER_LZW_H

#include <memory>

#include "filter/codec.h"

namespace zorvan::filter {

std::unique_ptr<Encoder> NewLzwEncoder(const EncoderSetup& setup);
std::unique_ptr<Decoder> NewLzwDecoder(const DecoderSetup& setup);

}  // namespace zorvan::filter

#endif
