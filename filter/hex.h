// The ASCIIHex codec, both ways: PLRM 3.13, ASCIIHexEncode and ASCIIHexDecode.
#ifndef FILTER_HEX_H
#define FILTER_HEX_H

#include <memory>

#include "filter/codec.h"

namespace zorvan::filter {

std::unique_ptr<Encoder> NewHexEncoder(const EncoderSetup& setup);
std::unique_ptr<Decoder> NewHexDecoder(const DecoderSetup& setup);

}  // namespace zorvan::filter

#endif
