// The Flate codec, both ways: RFC 1950 and RFC 1951, by zlib.
#ifndef FILTER_FLATE_H
#define FILTER_FLATE_H

#include <memory>

#include "filter/codec.h"

namespace zorvan::filter {

std::unique_ptr<Encoder> NewFlateEncoder(const EncoderSetup& setup);
std::unique_ptr<Decoder> NewFlateDecoder(const DecoderSetup& setup);

}  // namespace zorvan::filter

#endif
