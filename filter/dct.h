// The DCT codec, both ways: JPEG (ITU-T T.81), by libjpeg.
#ifndef FILTER_DCT_H
#define FILTER_DCT_H

#include <memory>

#include "filter/codec.h"

namespace zorvan::filter {

// Null also when the parameters are unusable.
std::unique_ptr<Encoder> NewDctEncoder(const EncoderSetup& setup);
std::unique_ptr<Decoder> NewDctDecoder(const DecoderSetup& setup);

}  // namespace zorvan::filter

#endif
