// The RunLength codec, both ways: PLRM 3.13, RunLengthEncode and RunLengthDecode.
#ifndef FILTER_RUN_LENGTH_H
#define FILTER_RUN_LENGTH_H

#include <memory>

#include "filter/codec.h"

namespace zorvan::filter {

std::unique_ptr<Encoder> NewRunLengthEncoder(const EncoderSetup& setup);
std::unique_ptr<Decoder> NewRunLengthDecoder(const DecoderSetup& setup);

}  // namespace zorvan::filter

#endif
