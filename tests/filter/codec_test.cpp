// What all codecs promise alike.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter/codec_table.h"
#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

using testing::StartsWith;

class EveryCodec : public testing::TestWithParam<CodecPair> {
protected:
    std::string EncodeSample(std::string_view data, std::size_t chunk = kNoLimit) const {
        return Encode(GetParam().encoder, data, chunk);
    }
    Decoded DecodeSample(std::string_view data, std::size_t chunk = 65536) const {
        return Decode(GetParam().decoder, data, chunk);
    }
};

INSTANTIATE_TEST_SUITE_P(Filter, EveryCodec, testing::ValuesIn(kCodecs),
                         [](const auto& codec) { return std::string(codec.param.name); });

Decoded Whole(std::string bytes) {
    return {std::move(bytes), Progress::kEnd};
}

constexpr std::size_t kSizes[] = {0,   1,   2,   3,    4,    5,    35,   36,   37,    127,   128,   129,  130,
                                  255, 256, 257, 4095, 4096, 4097, 8191, 8192, 20000, 65535, 65536, 70001};

TEST_P(EveryCodec, GivesBackDataOfEverySize) {
    std::mt19937 random(1);
    for (const Kind kind : kKinds) {
        for (const std::size_t size : kSizes) {
            const std::string data = SampleBytes(kind, size, random);
            EXPECT_EQ(DecodeSample(EncodeSample(data)), Whole(data)) << size;
        }
    }
}

TEST_P(EveryCodec, GivesBackDataHoweverItIsChunked) {
    std::mt19937 random(2);
    for (int round = 0; round < 200; ++round) {
        const std::string data = SampleBytes(kKinds[random() % 4], random() % 9000, random);
        const std::size_t inputChunk = 1 + random() % 700;
        const std::size_t outputChunk = 1 + random() % 700;
        const std::string encoded = EncodeSample(data, inputChunk);
        EXPECT_EQ(encoded, EncodeSample(data)) << inputChunk;
        EXPECT_EQ(DecodeSample(encoded, outputChunk), Whole(data)) << outputChunk;
    }
}

TEST_P(EveryCodec, DecodesIntoBuffersOfOneByte) {
    std::mt19937 random(3);
    for (const Kind kind : kKinds) {
        const std::string data = SampleBytes(kind, 9000, random);
        EXPECT_EQ(DecodeSample(EncodeSample(data), 1), Whole(data));
    }
}

TEST_P(EveryCodec, LeavesABufferOfNoBytesAlone) {
    const std::string encoded = EncodeSample("something");
    Reader reader{0, encoded};
    const auto decoder = DecoderFrom(reader, GetParam().decoder);
    for (int i = 0; i < 3; ++i) {
        Output nothing({});
        EXPECT_EQ(decoder->Decode(nothing), Progress::kMore);
    }
    EXPECT_EQ(DecodeRest(*decoder, 100), Whole("something"));
}

TEST_P(EveryCodec, TellsTheEndAgainAndAgain) {
    const std::string encoded = EncodeSample("something");
    Reader reader{0, encoded};
    const auto decoder = DecoderFrom(reader, GetParam().decoder);
    EXPECT_EQ(DecodeRest(*decoder, 100), Whole("something"));
    EXPECT_EQ(DecodeRest(*decoder, 100), Whole(""));
    EXPECT_EQ(DecodeRest(*decoder, 1), Whole(""));
}

TEST_P(EveryCodec, TakesNoInputForTheEndOfTheData) {
    EXPECT_EQ(DecodeSample(""), Whole(""));
}

TEST_P(EveryCodec, IgnoresWhatFollowsTheEndOfTheData) {
    for (const std::string_view garbage : {"\r\n", "}", "garbage of some length", "\x80\xFF"}) {
        EXPECT_EQ(DecodeSample(EncodeSample("something").append(garbage)), Whole("something"));
    }
    const std::string blocks(20000, '}');
    EXPECT_EQ(DecodeSample(EncodeSample("something") + blocks), Whole("something"));
}

TEST_P(EveryCodec, DecodesDataThatIsCutOffAnywhereAsFarAsItGoes) {
    std::mt19937 random(4);
    for (const Kind kind : kKinds) {
        const std::string data = SampleBytes(kind, 1500, random);
        const std::string encoded = EncodeSample(data);
        std::size_t before = 0;
        for (std::size_t length = 0; length <= encoded.size(); ++length) {
            Decoded decoded = DecodeSample(std::string_view(encoded).substr(0, length));
            EXPECT_EQ(decoded.progress, Progress::kEnd);
            EXPECT_GE(decoded.bytes.size(), before);
            before = decoded.bytes.size();
            if (GetParam().decoder == FILTER_DECODE_ASCII85) {
                // A cut group is a matter of its own, tested with that codec.
                decoded.bytes.resize(decoded.bytes.size() / 4 * 4);
            }
            EXPECT_THAT(data, StartsWith(decoded.bytes)) << length;
        }
        EXPECT_EQ(before, data.size());
    }
}

TEST_P(EveryCodec, StaysDamagedOnceItIs) {
    std::mt19937 random(5);
    const std::string encoded = EncodeSample(SampleBytes(Kind::kText, 3000, random));
    for (std::size_t round = 0; round < 2000; ++round) {
        std::string damaged = encoded;
        damaged[random() % damaged.size()] = static_cast<char>(random());
        Reader reader{0, damaged};
        const auto decoder = DecoderFrom(reader, GetParam().decoder);
        const Decoded decoded = DecodeRest(*decoder, 1 + random() % 500);
        EXPECT_EQ(DecodeRest(*decoder, 100), (Decoded{"", decoded.progress}));
    }
}

TEST_P(EveryCodec, DecodesNoiseAlikeHoweverItIsChunked) {
    std::mt19937 random(6);
    for (int round = 0; round < 500; ++round) {
        const std::string noise = SampleBytes(Kind::kNoise, random() % 600, random);
        EXPECT_EQ(DecodeSample(noise), DecodeSample(noise, 1 + random() % 9));
    }
}

TEST_P(EveryCodec, EncodesSeparatePiecesAfterAnEnd) {
    Writer writer;
    const auto encoder = EncoderTo(writer, GetParam().encoder);
    std::mt19937 random(7);
    for (const std::size_t size : {5U, 0U, 3000U, 1U, 65536U}) {
        const std::string data = SampleBytes(Kind::kText, size, random);
        writer.bytes.clear();
        EXPECT_TRUE(encoder->Encode(AsBytes(data)));
        EXPECT_TRUE(encoder->End());
        EXPECT_EQ(writer.bytes, EncodeSample(data));
    }
}

TEST_P(EveryCodec, HandsOnAllOfAPieceWhenItEnds) {
    Writer writer;
    const auto encoder = EncoderTo(writer, GetParam().encoder);
    EXPECT_TRUE(encoder->Encode(AsBytes("something")));
    EXPECT_TRUE(encoder->End());
    const std::size_t calls = writer.calls;
    EXPECT_TRUE(encoder->Flush());
    if (GetParam().encoder != FILTER_ENCODE_FLATE) {  // whose flush begins the next piece
        EXPECT_EQ(writer.calls, calls);
    }
    EXPECT_EQ(DecodeSample(writer.bytes), Whole("something"));
}

TEST_P(EveryCodec, GoesOnAfterAFlush) {
    std::mt19937 random(8);
    const std::string data = SampleBytes(Kind::kText, 2000, random);
    Writer writer;
    const auto encoder = EncoderTo(writer, GetParam().encoder);
    std::string_view rest = data;
    while (!rest.empty()) {
        const std::string_view piece = rest.substr(0, 1 + random() % 30);
        EXPECT_TRUE(encoder->Encode(AsBytes(piece)));
        EXPECT_TRUE(encoder->Flush());
        rest.remove_prefix(piece.size());
    }
    EXPECT_TRUE(encoder->End());
    EXPECT_EQ(DecodeSample(writer.bytes), Whole(data));
}

TEST_P(EveryCodec, FlushesAllButTheBytesOfAnUnfinishedCode) {
    const std::string data = "A sentence of some forty bytes or perhaps more.";
    Writer writer;
    const auto encoder = EncoderTo(writer, GetParam().encoder);
    EXPECT_TRUE(encoder->Encode(AsBytes(data)));
    EXPECT_TRUE(encoder->Flush());
    const Decoded decoded = DecodeSample(writer.bytes);
    EXPECT_THAT(data, StartsWith(decoded.bytes));
    EXPECT_GE(decoded.bytes.size(), data.size() - 3);
}

TEST_P(EveryCodec, NeverWritesNothing) {
    Writer writer;
    const auto encoder = EncoderTo(writer, GetParam().encoder);
    EXPECT_TRUE(encoder->Flush());
    EXPECT_TRUE(encoder->Encode({}));
    EXPECT_TRUE(encoder->Flush());
    EXPECT_TRUE(encoder->End());
    EXPECT_TRUE(encoder->Flush());
    EXPECT_FALSE(writer.wasGivenNothing);
}

TEST_P(EveryCodec, FailsForGoodAtEachRefusalOfTheWriteFunction) {
    std::mt19937 random(9);
    const std::string data = SampleBytes(Kind::kNoise, 30000, random);
    for (std::size_t accepted = 0;; ++accepted) {
        Writer writer;
        writer.accepted = accepted;
        const auto encoder = EncoderTo(writer, GetParam().encoder);
        const bool encoded = encoder->Encode(AsBytes(data));
        EXPECT_EQ(encoded, writer.calls <= accepted);
        const bool ended = encoder->End();
        if (writer.calls <= accepted) {
            EXPECT_TRUE(ended);
            EXPECT_EQ(DecodeSample(writer.bytes), Whole(data));
            EXPECT_GE(accepted, data.size() / 4096);
            break;
        }
        EXPECT_FALSE(ended || encoder->Encode(AsBytes(data)) || encoder->Flush() || encoder->End());
        EXPECT_EQ(writer.calls, accepted + 1);
    }
}

TEST_P(EveryCodec, FailsWhenAFlushIsRefused) {
    Writer writer;
    writer.accepted = 0;
    const auto encoder = EncoderTo(writer, GetParam().encoder);
    // The hexadecimal encoder hands on at once, the others when they are flushed.
    EXPECT_EQ(encoder->Encode(AsBytes("enough for some output")),
              GetParam().encoder != FILTER_ENCODE_ASCIIHEX);
    EXPECT_FALSE(encoder->Flush());
    EXPECT_FALSE(encoder->End());
    EXPECT_EQ(writer.calls, 1U);
}

TEST(Codecs, HaveNoEncoderAndADecoderOfNothingForOtherCodes) {
    Writer writer;
    Reader reader;
    for (const unsigned int code : {14U, 1U, 3U, 5U, 255U, 256U + 4U}) {
        EXPECT_EQ(EncoderTo(writer, code), nullptr) << code;
    }
    for (const unsigned int code : {15U, 0U, 2U, 4U, 255U}) {
        std::array<std::uint8_t, 8> bytes{};
        Output output(bytes);
        const auto decoder = DecoderFrom(reader, code);
        ASSERT_NE(decoder, nullptr) << code;
        EXPECT_EQ(decoder->Decode(output), Progress::kDamaged) << code;
        EXPECT_EQ(output.Count(), 0U) << code;
    }
}

int ZORVAN_CALL ReadNothingForEver(const int* slot, void* buffer, unsigned int wanted, unsigned int* read) {
    static_cast<void>(slot);
    static_cast<void>(buffer);
    static_cast<void>(wanted);
    *read = 0;
    return 1;
}

TEST_P(EveryCodec, EndsWhenNothingIsReadThoughMoreWasPromised) {
    const auto decoder =
        NewDecoder(GetParam().decoder, {GetParam().decoder.parameters, nullptr, ReadNothingForEver});
    EXPECT_EQ(DecodeRest(*decoder, 100), Whole(""));
}

}  // namespace
}  // namespace zorvan::filter
