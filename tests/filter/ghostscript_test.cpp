// Agreement with a PostScript interpreter's own filters: each reads what the other wrote.
#include <gtest/gtest.h>

#include "tests/filter/codec_harness.h"
#include "tests/filter/ghostscript_harness.h"

namespace zorvan::filter {
namespace {

class Ghostscript : public GhostscriptTest, public testing::WithParamInterface<CodecPair> {
protected:
    static FilterCall EncodeCall(std::string data) {
        // RunLengthEncode, alone, takes an operand: no records.
        const std::string records = GetParam().encoder == FILTER_ENCODE_RUNLENGTH ? "0 " : "";
        return {records + GetParam().dictionary + "/" + GetParam().name + "Encode", std::move(data)};
    }
    static FilterCall DecodeCall(std::string data) {
        return {std::string(GetParam().dictionary) + "/" + GetParam().name + "Decode", std::move(data)};
    }
};

INSTANTIATE_TEST_SUITE_P(Filter, Ghostscript, testing::ValuesIn(kCodecs),
                         [](const auto& codec) { return std::string(codec.param.name); });

constexpr std::size_t kSizes[] = {0, 1, 70001};

TEST_P(Ghostscript, ReadsWhatOurEncoderWrites) {
    std::mt19937 random(1);
    for (const Kind kind : kKinds) {
        for (const std::size_t size : kSizes) {
            const std::string data = SampleBytes(kind, size, random);
            EXPECT_EQ(GhostscriptDecode(DecodeCall(Encode(GetParam().encoder, data))), data) << size;
        }
    }
}

TEST_P(Ghostscript, WritesWhatOurDecoderReads) {
    std::mt19937 random(2);
    for (const Kind kind : kKinds) {
        for (const std::size_t size : kSizes) {
            const std::string data = SampleBytes(kind, size, random);
            const Decoded whole{data, Progress::kEnd};
            EXPECT_EQ(Decode(GetParam().decoder, GhostscriptEncode(EncodeCall(data))), whole) << size;
        }
    }
}

}  // namespace
}  // namespace zorvan::filter
