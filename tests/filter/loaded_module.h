// The built module, loaded for a test.
#pragma once

#include <gtest/gtest.h>

#include "platform/loadable_module.h"
#include "zorvan/filter.h"

namespace zorvan::filter {

class Module : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(isLoaded_); }

    template <typename Function>
    Function Find(const char* name) const {
        return reinterpret_cast<Function>(module_.Find(name));
    }

private:
    LoadableModule module_;
    const bool isLoaded_ = module_.Load(FILTER_MODULE);

protected:
    const CreateEncoderFunction createEncoder = Find<CreateEncoderFunction>("CreateEncoder");
    const EncodeDataFunction encodeData = Find<EncodeDataFunction>("EncodeData");
    const EncodeEodFunction encodeEod = Find<EncodeEodFunction>("Encode_EOD");
    const FlushFunction flush = Find<FlushFunction>("Flush");
    const DestroyEncoderFunction destroyEncoder = Find<DestroyEncoderFunction>("DestroyEncoder");
    const CreateDecoderFunction createDecoder = Find<CreateDecoderFunction>("CreateDecoder");
    const DecodeDataFunction decodeData = Find<DecodeDataFunction>("DecodeData");
    const DestroyDecoderFunction destroyDecoder = Find<DestroyDecoderFunction>("DestroyDecoder");
};

}  // namespace zorvan::filter
