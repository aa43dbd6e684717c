// DCT: colours, data that breaks off, what is refused, and the encoder's conditions.
#include <chrono>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter/codec_table.h"
#include "tests/filter/codec_harness.h"
#include "tests/filter/jpeg_files.h"

namespace zorvan::filter {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::StartsWith;

// In buffers of 7 bytes, so that the end of a buffer falls anywhere.
Decoded DecodeDct(std::string_view file) {
    const Decoded decoded = Decode(FILTER_DECODE_DCT, file, 7);
    EXPECT_EQ(decoded, Decode(FILTER_DECODE_DCT, file));
    return decoded;
}

Decoded Whole(std::string bytes) {
    return {std::move(bytes), Progress::kEnd};
}

const Decoded kDamagedAtOnce{"", Progress::kDamaged};

// A picture of one colour, whose samples no rounding changes: what is stored, and what comes out.
void ExpectColors(JpegForm form, std::string_view stored, std::string_view delivered) {
    form.width = 19;
    form.height = 11;
    form.components = static_cast<int>(stored.size());
    EXPECT_EQ(DecodeDct(MakeJpeg(form, PlainPicture(form, stored))), Whole(PlainPicture(form, delivered)));
}

TEST(DctDecoder, DeliversGraySamples) {
    ExpectColors({}, "\x64", "\x64");
    ExpectColors({.adobeTransform = 1}, "\x64", "\x64");
    ExpectColors({.jfif = true}, "\x64", "\x64");
}

// Y 76, Cb 85, Cr 255: red is 76 + 1.402 x 127, green 76 + 0.344 x 43 - 0.714 x 127, blue 76 - 1.772 x 43.
constexpr std::string_view kYCbCr = "\x4C\x55\xFF";
constexpr std::string_view kRed = "\xFE\0\0"sv;

TEST(DctDecoder, TurnsThreeComponentsIntoRgbUnlessTheAdobeMarkerForbids) {
    ExpectColors({}, kYCbCr, kRed);
    ExpectColors({.jfif = true}, kYCbCr, kRed);
    ExpectColors({.adobeTransform = 1}, kYCbCr, kRed);
    ExpectColors({.adobeTransform = 0}, kYCbCr, kYCbCr);
    ExpectColors({.adobeTransform = 0, .jfif = true}, kYCbCr, kYCbCr);
}

TEST(DctDecoder, DoesNotGuessColorsFromTheNamesOfComponents) {
    ExpectColors({.names = "RGB"}, kYCbCr, kRed);
}

TEST(DctDecoder, TurnsFourComponentsIntoCmykIfTheAdobeMarkerDemands) {
    // YCCK holds red, green and blue, of which cyan, magenta and yellow are the complements.
    const std::string ycck = std::string(kYCbCr) + "\xC8";
    ExpectColors({.adobeTransform = 2}, ycck, "\x01\xFF\xFF\xC8");
    ExpectColors({.adobeTransform = 1}, ycck, "\x01\xFF\xFF\xC8");
    ExpectColors({.adobeTransform = 0}, ycck, ycck);
    ExpectColors({}, ycck, ycck);
}

// Cameras put more in front of their pictures than is read at once.
TEST(DctDecoder, PassesOverLongComments) {
    const JpegForm form{.width = 19, .height = 11, .components = 1};
    const std::string picture = PlainPicture(form, "\x64");
    std::string file = MakeJpeg(form, picture);
    file.insert(2, "\xFF\xFE\x75\x30"s + std::string(0x7530 - 2, 'c'));
    EXPECT_EQ(DecodeDct(file), Whole(picture));
    EXPECT_EQ(DecodeDct(file.substr(0, 20000)), Whole(""));  // cut short: an ordinary end
}

TEST(DctDecoder, LeavesTwoComponentsAlone) {
    ExpectColors({}, "\x64\xC8", "\x64\xC8");
}

TEST(DctDecoder, RefusesMoreComponentsThanFour) {
    const JpegForm form{.components = 5, .separateScans = true};
    EXPECT_EQ(DecodeDct(MakeJpeg(form, PlainPicture(form, "12345"))), kDamagedAtOnce);
}

TEST(DctDecoder, PassesOverWhiteSpaceBeforeTheFileAndIgnoresWhatFollows) {
    const JpegForm form{.components = 1};
    const std::string picture = PlainPicture(form, "\x64");
    const std::string file = MakeJpeg(form, picture);
    EXPECT_EQ(DecodeDct("\r\n" + file + "\r\nendstream"), Whole(picture));
    EXPECT_EQ(DecodeDct(std::string(5000, ' ') + file), Whole(picture));
    EXPECT_EQ(DecodeDct(file + std::string(20000, 'x')), Whole(picture));
}

TEST(DctDecoder, TakesNoInputForTheEndOfTheData) {
    EXPECT_EQ(DecodeDct(""), Whole(""));
    EXPECT_EQ(DecodeDct("\n"), Whole(""));
    EXPECT_EQ(DecodeDct("\xFF"), Whole(""));
}

TEST(DctDecoder, FailsAtWhatIsNoJpegFile) {
    testing::internal::CaptureStderr();
    for (const std::string_view text :
         {"no JPEG data"sv, "n"sv, "\xFF\xD9"sv, "\xFF\xFF\xD8"sv, "\xFF\xD8 and no marker at all"sv}) {
        EXPECT_EQ(DecodeDct(text).bytes, "");
    }
    EXPECT_EQ(DecodeDct("no JPEG data"), kDamagedAtOnce);
    EXPECT_EQ(DecodeDct("n"), kDamagedAtOnce);
    EXPECT_EQ(DecodeDct("\xFF\xD8\xFF\xD9 no image before the end"), kDamagedAtOnce);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(DctDecoder, DeliversDataThatIsCutOffAnywhereAsFarAsItGoes) {
    std::mt19937 random(1);
    for (const int sampling : {1, 2}) {
        for (const unsigned int restartInterval : {0U, 3U}) {
            JpegForm form{
                .width = 40, .height = 50, .restartInterval = restartInterval, .sampling = sampling};
            const std::string file = MakeJpeg(form, SamplePicture(form, random));
            const Decoded whole = DecodeDct(file);
            EXPECT_EQ(whole.bytes.size(), 40U * 50U * 3U);
            std::size_t before = 0;
            for (std::size_t length = 0; length <= file.size(); length += 5) {
                const Decoded decoded = DecodeDct(std::string_view(file).substr(0, length));
                EXPECT_EQ(decoded.progress, Progress::kEnd) << length;
                EXPECT_THAT(whole.bytes, StartsWith(decoded.bytes)) << length;
                EXPECT_GE(decoded.bytes.size(), before) << length;
                before = decoded.bytes.size();
            }
            // What is lost at most is the last two rows of blocks.
            EXPECT_GE(before, 40U * 16U * 3U);
            EXPECT_EQ(DecodeDct(file.substr(0, file.size() - 2)), whole) << "the end marker alone is missing";
        }
    }
}

TEST(DctDecoder, DeliversEveryRowOfAProgressiveFileThatIsCutOff) {
    std::mt19937 random(2);
    const JpegForm form{.width = 40, .height = 50, .progressive = true};
    const std::string file = MakeJpeg(form, SamplePicture(form, random));
    const Decoded whole = DecodeDct(file);
    const Decoded half = DecodeDct(file.substr(0, file.size() / 2));
    EXPECT_EQ(half.progress, Progress::kEnd);
    EXPECT_EQ(half.bytes.size(), whole.bytes.size());
    EXPECT_NE(half.bytes, whole.bytes);
}

TEST(DctDecoder, MakesTheBestOfDamagedBits) {
    std::mt19937 random(3);
    const JpegForm form{.width = 40, .height = 50, .restartInterval = 5};
    const std::string file = MakeJpeg(form, SamplePicture(form, random));
    testing::internal::CaptureStderr();
    for (int round = 0; round < 300; ++round) {
        std::string damaged = file;
        damaged[random() % file.size()] = static_cast<char>(random());
        const Decoded decoded = DecodeDct(damaged);
        EXPECT_NE(decoded.progress, Progress::kMore);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(DctDecoder, GoesOnBehindTheNextRestartMarker) {
    std::mt19937 random(16);
    // A marker behind each row of eight blocks.
    const JpegForm form{.width = 64, .height = 32, .components = 1, .restartInterval = 8};
    const std::string file = MakeJpeg(form, SamplePicture(form, random));
    const std::string sound = DecodeDct(file).bytes;
    // The second row of blocks loses its second half.
    const std::size_t begin = file.find("\xFF\xD0");
    const std::size_t end = file.find("\xFF\xD1");
    std::string damaged = file;
    damaged.erase((begin + end) / 2, end - (begin + end) / 2);
    const Decoded decoded = DecodeDct(damaged);
    constexpr std::size_t kBlockRow = std::size_t{64} * 8;
    EXPECT_EQ(decoded.progress, Progress::kEnd);
    ASSERT_EQ(decoded.bytes.size(), 4 * kBlockRow);
    EXPECT_EQ(decoded.bytes.substr(0, kBlockRow), sound.substr(0, kBlockRow));
    EXPECT_NE(decoded.bytes.substr(kBlockRow, kBlockRow), sound.substr(kBlockRow, kBlockRow));
    EXPECT_EQ(decoded.bytes.substr(2 * kBlockRow), sound.substr(2 * kBlockRow));
}

TEST(DctDecoder, StaysDamagedOnceItIs) {
    Reader reader{0, "no JPEG data"};
    const auto decoder = DecoderFrom(reader, FILTER_DECODE_DCT);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(DecodeRest(*decoder, 100), kDamagedAtOnce);
    }
}

TEST(DctDecoder, RefusesArithmeticCoding) {
    std::mt19937 random(4);
    const JpegForm form{.width = 16, .height = 16, .arithmetic = true};
    EXPECT_EQ(DecodeDct(MakeJpeg(form, SamplePicture(form, random))), kDamagedAtOnce);
}

// The file with the height and the width of its frame changed: marker, length, precision, then these.
std::string WithSize(std::string file, char frameMarker, std::string_view size) {
    const std::size_t frame = file.find({'\xFF', frameMarker});
    return file.replace(frame + 5, 4, size);
}

constexpr std::string_view kHugeSize = "\xFF\xDC\xFF\xDC";  // 65,500 each

TEST(DctDecoder, StreamsPicturesThatClaimToBeHuge) {
    std::mt19937 random(5);
    const JpegForm form{.width = 64, .height = 64};
    const std::string file = MakeJpeg(form, SamplePicture(form, random));
    // Not even the first row of blocks is there.
    EXPECT_EQ(DecodeDct(WithSize(file, '\xC0', kHugeSize)), Whole(""));
}

TEST(DctDecoder, RefusesProgressivePicturesTooLargeForMemory) {
    std::mt19937 random(6);
    const JpegForm form{.width = 64, .height = 64, .progressive = true};
    const std::string file = MakeJpeg(form, SamplePicture(form, random));
    EXPECT_EQ(DecodeDct(WithSize(file, '\xC2', kHugeSize)), kDamagedAtOnce);
    // 7,000 x 7,000 pixels have coefficients of 294 MB, and 6,000 x 6,000 of 216 MB.
    EXPECT_EQ(DecodeDct(WithSize(file, '\xC2', "\x1B\x58\x1B\x58")), kDamagedAtOnce);
    const Decoded large =
        Decode(FILTER_DECODE_DCT, WithSize(file, '\xC2', "\x17\x70\x17\x70"), 65536, 100000);
    EXPECT_EQ(large.bytes.size(), 100000U);
}

TEST(DctDecoder, RefusesScansWithoutNumber) {
    std::mt19937 random(7);
    const JpegForm form{.width = 64, .height = 64, .components = 1, .progressive = true};
    const std::string file = MakeJpeg(form, SamplePicture(form, random));
    // The last scan refines coefficients: it may come again and again.
    const std::size_t scan = file.rfind("\xFF\xDA");
    const std::string again = file.substr(scan, file.size() - 2 - scan);
    std::string many = file.substr(0, file.size() - 2);
    for (int i = 0; i < 200; ++i) {
        many += again;
    }
    EXPECT_EQ(DecodeDct(file).progress, Progress::kEnd);
    EXPECT_EQ(DecodeDct(many + "\xFF\xD9"), kDamagedAtOnce);
}

// Reads a block of a file, then throws.
struct ThrowingReader {
    static int ZORVAN_CALL Read(const int* slot, void* buffer, unsigned int wanted, unsigned int* read) {
        auto& reader = *reinterpret_cast<ThrowingReader*>(const_cast<int*>(slot));
        if (reader.blocks-- == 0) {
            throw std::runtime_error("read");
        }
        return Reader::Read(&reader.source.slot, buffer, wanted, read);
    }

    int slot = 0;
    int blocks = 0;
    Reader source;
};

TEST(DctDecoder, IsDamagedWhereTheReadFunctionThrowsInTheMiddle) {
    std::mt19937 random(8);
    for (const bool progressive : {false, true}) {
        const JpegForm form{.width = 200, .height = 200, .progressive = progressive};
        const std::string file = MakeJpeg(form, SamplePicture(form, random));
        const Decoded whole = DecodeDct(file);
        for (const int blocks : {1, 2, 5}) {
            ThrowingReader reader{0, blocks, {0, file}};
            const auto decoder = NewDecoder(FILTER_DECODE_DCT, {nullptr, &reader.slot, ThrowingReader::Read});
            const Decoded decoded = DecodeRest(*decoder, 1000);
            EXPECT_EQ(decoded.progress, Progress::kDamaged) << blocks;
            EXPECT_THAT(whole.bytes, StartsWith(decoded.bytes)) << blocks;
        }
    }
}

FilterDctParameters DctParametersOf(unsigned int width, unsigned int height, unsigned int components,
                                    unsigned int quality = 100, unsigned int transform = 0) {
    FilterDctParameters parameters{};
    parameters.words[FILTER_DCT_WIDTH] = width;
    parameters.words[FILTER_DCT_HEIGHT] = height;
    parameters.words[FILTER_DCT_COMPONENTS] = components;
    parameters.words[FILTER_DCT_QUALITY] = quality;
    parameters.words[FILTER_DCT_TRANSFORM] = transform;
    return parameters;
}

TEST(DctEncoder, WritesAFileOfTheSizeAndTheColorsAskedFor) {
    constexpr int kNone = -1;
    const std::pair<std::array<unsigned int, 2>, int> forms[] = {
        {{1, 0}, kNone}, {{3, 0}, kNone}, {{3, 1}, 0}, {{3, 2}, kNone},
        {{4, 0}, 0},     {{4, 1}, 0},     {{4, 2}, 2}};
    std::mt19937 random(9);
    for (const auto& [form, adobeTransform] : forms) {
        const FilterDctParameters parameters = DctParametersOf(37, 21, form[0], 90, form[1]);
        const std::string samples = SampleBytes(Kind::kNoise, std::size_t{37} * 21 * form[0], random);
        const JpegHeader header = ReadJpegHeader(Encode({FILTER_ENCODE_DCT, &parameters}, samples));
        EXPECT_EQ(header.width, 37U);
        EXPECT_EQ(header.height, 21U);
        EXPECT_EQ(header.components, static_cast<int>(form[0]));
        EXPECT_EQ(header.adobeTransform, adobeTransform);
    }
}

// The largest difference of two samples in the same place.
int LargestDifference(std::string_view left, std::string_view right) {
    EXPECT_EQ(left.size(), right.size());
    int largest = 0;
    for (std::size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
        largest = std::max(
            largest, std::abs(static_cast<unsigned char>(left[i]) - static_cast<unsigned char>(right[i])));
    }
    return largest;
}

TEST(DctEncoder, LosesNextToNothingAtTheBestQuality) {
    std::mt19937 random(10);
    for (const int components : {1, 3, 4}) {
        for (const unsigned int transform : {0U, 1U, 2U}) {
            const JpegForm form{.width = 67, .height = 33, .components = components};
            const std::string samples = SamplePicture(form, random);
            const auto parameters =
                DctParametersOf(67, 33, static_cast<unsigned int>(components), 100, transform);
            const std::string file = Encode({FILTER_ENCODE_DCT, &parameters}, samples);
            EXPECT_LE(LargestDifference(DecodeDct(file).bytes, samples), 4) << components << ' ' << transform;
        }
    }
}

TEST(DctEncoder, TakesTheQualityAskedForOr75) {
    std::mt19937 random(11);
    const JpegForm form{.width = 64, .height = 64};
    const std::string samples = SamplePicture(form, random);
    const auto size = [&samples](unsigned int quality) {
        const FilterDctParameters parameters = DctParametersOf(64, 64, 3, quality);
        return Encode({FILTER_ENCODE_DCT, &parameters}, samples).size();
    };
    EXPECT_LT(size(1), size(75));
    EXPECT_LT(size(75), size(100));
    EXPECT_EQ(size(0), size(75));
}

TEST(DctEncoder, WritesTheSameHoweverTheSamplesAreChunkedAndFlushed) {
    std::mt19937 random(12);
    const JpegForm form{.width = 90, .height = 70};
    const std::string samples = SamplePicture(form, random);
    const FilterDctParameters parameters = DctParametersOf(90, 70, 3);
    const Coding coding{FILTER_ENCODE_DCT, &parameters};
    const std::string file = Encode(coding, samples);
    EXPECT_GT(file.size(), 4096U);
    for (const std::size_t chunk : {std::size_t{1}, std::size_t{269}, std::size_t{1000}}) {
        EXPECT_EQ(Encode(coding, samples, chunk), file);
    }
    Writer writer;
    const auto encoder = EncoderTo(writer, coding);
    for (std::size_t at = 0; at < samples.size(); at += 100) {
        EXPECT_TRUE(encoder->Encode(AsBytes(samples).subspan(at, 100)));
        EXPECT_TRUE(encoder->Flush());
    }
    EXPECT_TRUE(encoder->End());
    EXPECT_EQ(writer.bytes, file);
}

TEST(DctEncoder, EncodesSeparatePicturesAfterAnEnd) {
    std::mt19937 random(13);
    const JpegForm form{.width = 20, .height = 10};
    const FilterDctParameters parameters = DctParametersOf(20, 10, 3);
    Writer writer;
    const auto encoder = EncoderTo(writer, {FILTER_ENCODE_DCT, &parameters});
    for (int i = 0; i < 3; ++i) {
        const std::string samples = SamplePicture(form, random);
        writer.bytes.clear();
        EXPECT_TRUE(encoder->Encode(AsBytes(samples)));
        EXPECT_TRUE(encoder->End());
        EXPECT_EQ(writer.bytes, Encode({FILTER_ENCODE_DCT, &parameters}, samples));
        EXPECT_TRUE(encoder->End());
    }
    EXPECT_FALSE(writer.wasGivenNothing);
}

TEST(DctEncoder, WritesNothingForNoSamples) {
    const FilterDctParameters parameters = DctParametersOf(65500, 65500, 4);
    EXPECT_EQ(Encode({FILTER_ENCODE_DCT, &parameters}, ""), "");
}

TEST(DctEncoder, FailsAtSamplesTooFewOrTooMany) {
    const FilterDctParameters parameters = DctParametersOf(4, 2, 1);
    const std::string_view samples = "12345678";
    for (const std::size_t count : {std::size_t{1}, std::size_t{4}, std::size_t{7}}) {
        Writer writer;
        const auto encoder = EncoderTo(writer, {FILTER_ENCODE_DCT, &parameters});
        EXPECT_TRUE(encoder->Encode(AsBytes(samples.substr(0, count))));
        EXPECT_FALSE(encoder->End()) << count;
        EXPECT_FALSE(encoder->Encode(AsBytes(samples)));
    }
    for (const std::string_view surplus : {"9", "9012"}) {
        Writer writer;
        const auto encoder = EncoderTo(writer, {FILTER_ENCODE_DCT, &parameters});
        EXPECT_TRUE(encoder->Encode(AsBytes(samples)));
        encoder->Encode(AsBytes(surplus));
        EXPECT_FALSE(encoder->End());
    }
}

TEST(DctEncoder, IsNotThereWithoutUsableParameters) {
    Writer writer;
    EXPECT_EQ(EncoderTo(writer, FILTER_ENCODE_DCT), nullptr);
    for (const FilterDctParameters& parameters :
         {FilterDctParameters{}, DctParametersOf(0, 5, 3), DctParametersOf(5, 0, 3),
          DctParametersOf(65501, 5, 3), DctParametersOf(5, 65501, 3), DctParametersOf(5, 5, 2),
          DctParametersOf(5, 5, 5), DctParametersOf(5, 5, 3, 101), DctParametersOf(5, 5, 3, 75, 3)}) {
        EXPECT_EQ(EncoderTo(writer, {FILTER_ENCODE_DCT, &parameters}), nullptr);
    }
}

TEST(DctEncoder, FailsForGoodAtEachRefusalOfTheWriteFunction) {
    std::mt19937 random(14);
    const std::string samples = SampleBytes(Kind::kNoise, 30000, random);
    const FilterDctParameters parameters = DctParametersOf(100, 100, 3);
    const std::size_t calls = Encode({FILTER_ENCODE_DCT, &parameters}, samples).size() / 4096 + 1;
    for (std::size_t accepted = 0; accepted < calls; ++accepted) {
        Writer writer;
        writer.accepted = accepted;
        const auto encoder = EncoderTo(writer, {FILTER_ENCODE_DCT, &parameters});
        encoder->Encode(AsBytes(samples));
        EXPECT_FALSE(encoder->End());
        EXPECT_FALSE(encoder->Encode(AsBytes(samples)) || encoder->Flush() || encoder->End());
        EXPECT_EQ(writer.calls, accepted + 1);
    }
}

int ZORVAN_CALL ThrowAtWrite(const int*, const void*, unsigned int, unsigned int*) {
    throw std::runtime_error("write");
}

TEST(DctEncoder, FailsWhereTheWriteFunctionThrowsInTheMiddle) {
    std::mt19937 random(15);
    const std::string samples = SampleBytes(Kind::kNoise, 30000, random);
    const FilterDctParameters parameters = DctParametersOf(100, 100, 3);
    const auto encoder = NewEncoder(FILTER_ENCODE_DCT, {&parameters, nullptr, ThrowAtWrite});
    EXPECT_FALSE(encoder->Encode(AsBytes(samples)));
    EXPECT_FALSE(encoder->End());
}

}  // namespace
}  // namespace zorvan::filter
