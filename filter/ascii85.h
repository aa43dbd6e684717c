// The ASCII85 codec, both ways: PLRM 3.13, ASCII85Encode and ASCII85Decode.
#ifndef FILTER_ASCII85_H
#define FILTER_ASCII85_H

#include <memory>

#include "filter/codec.h"

namespace zorvan::filter {

std::unique_ptr<Encoder> NewAscii85Encoder(const EncoderSetup& setup);
std::unique_ptr<Decoder> NewAscii85Decoder(const DecoderSetup& setup);

}  // namespace zorvan::filter

#endif
