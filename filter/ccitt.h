// The CCITTFax codec, both ways: ITU-T T.4 (Group 3, one and two dimensions) and T.6 (Group 4).
#ifndef FILTER_CCITT_H
#define FILTER_CCITT_H

#include <memory>

#include "filter/codec.h"

namespace zorvan::filter {

// Null also when the parameters are unusable.
std::unique_ptr<Encoder> NewCcittEncoder(const EncoderSetup& setup);
// With unusable parameters, a decoder to which all data is damaged.
std::unique_ptr<Decoder> NewCcittDecoder(const DecoderSetup& setup);

}  // namespace zorvan::filter

#endif
