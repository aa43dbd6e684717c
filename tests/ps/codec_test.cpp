// The codec wrapper: what it asks of the codec library, and what it answers to its callbacks.
#include "pdf/codec.h"

#include <array>
#include <new>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "api/current_job.h"
#include "pdf/name_table.h"
#include "platform/filter_library.h"
#include "support/job_fixture.h"

namespace zorvan::test {
namespace {

using ::testing::ElementsAre;

Bytes AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// What a codec library that does nothing was called with, and what it answers.
struct Calls {
    unsigned int filterCode = 0;
    const void* parameters = nullptr;
    const int* slot = nullptr;
    FilterReadFunction read = nullptr;
    FilterWriteFunction write = nullptr;
    int created = 0;
    int encodersDestroyed = 0;
    int decodersDestroyed = 0;
    int flushed = 0;
    bool creates = true;
    int result = 0;
};
Calls calls;

void* ZORVAN_CALL RecordDecoder(unsigned int filterCode, const void* parameters, const int* slot,
                                FilterReadFunction read) {
    calls.filterCode = filterCode;
    calls.parameters = parameters;
    calls.slot = slot;
    calls.read = read;
    ++calls.created;
    return calls.creates ? &calls : nullptr;
}

void* ZORVAN_CALL RecordEncoder(unsigned int filterCode, const void* parameters, const int* slot,
                                FilterWriteFunction write) {
    calls.filterCode = filterCode;
    calls.parameters = parameters;
    calls.slot = slot;
    calls.write = write;
    ++calls.created;
    return calls.creates ? &calls : nullptr;
}

int ZORVAN_CALL AnswerDecode(void* /*decoder*/, void* /*output*/, unsigned int* size) {
    *size = 0;
    return calls.result;
}
int ZORVAN_CALL AnswerEncode(void* /*encoder*/, const void* /*bytes*/, unsigned int /*count*/) {
    return calls.result;
}
int ZORVAN_CALL AnswerEod(void* /*encoder*/) {
    return calls.result;
}
int ZORVAN_CALL CountFlush(void* /*encoder*/) {
    ++calls.flushed;
    return 0;
}
void ZORVAN_CALL CountEncoderGone(void* /*encoder*/) {
    ++calls.encodersDestroyed;
}
void ZORVAN_CALL CountDecoderGone(void* /*decoder*/) {
    ++calls.decodersDestroyed;
}

std::string sunk;
int sinkCalls = 0;
Status sinkAnswer = Status::kOk;
Status Sink(std::string_view bytes) {
    ++sinkCalls;
    if (!Failed(sinkAnswer)) {
        sunk += bytes;
    }
    return sinkAnswer;
}

class CodecTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        calls = {};
        sunk.clear();
        sinkCalls = 0;
        sinkAnswer = Status::kOk;
    }

    /// From here on the job's codec library is the one above.
    static void UseRecordingLibrary() {
        FilterLibrary& library = CurrentJob()->filterLibrary;
        library.createDecoder = RecordDecoder;
        library.createEncoder = RecordEncoder;
        library.decodeData = AnswerDecode;
        library.encodeData = AnswerEncode;
        library.encodeEod = AnswerEod;
        library.flush = CountFlush;
        library.destroyEncoder = CountEncoderGone;
        library.destroyDecoder = CountDecoderGone;
    }

    static int DecodeOnce(Codec& codec) {
        std::array<std::uint8_t, 16> output{};
        std::uint32_t produced = 0;
        return codec.Decode(output, produced);
    }

    static std::uint32_t Intern(const char* name) { return CurrentNames().InternName(name); }
};

TEST_F(CodecTest, KnowsTheFiltersByTheirPdfNames) {
    std::vector<std::uint32_t> kinds;
    for (const char* const name : {"ASCIIHexDecode", "ASCII85Decode", "LZWDecode", "FlateDecode",
                                   "RunLengthDecode", "CCITTFaxDecode", "DCTDecode", "JBIG2Decode"}) {
        kinds.push_back(static_cast<std::uint32_t>(DecoderKindOf(Intern(name))));
    }
    EXPECT_THAT(kinds, ElementsAre(1, 2, 3, 4, 5, 6, 7, 0));
}

TEST_F(CodecTest, AsksForADecoderWithTheInputLengthAboveTheFilterCode) {
    UseRecordingLibrary();
    const std::string input(100000, 'x');
    constexpr std::pair<std::uint32_t, unsigned> kCodes[] = {{7, 1}, {6, 3},  {4, 5}, {3, 7},
                                                             {5, 9}, {2, 11}, {1, 13}};
    for (const auto& [kind, code] : kCodes) {
        Codec codec(static_cast<CodecKind>(kind), std::monostate{}, AsBytes(input));
        EXPECT_EQ(DecodeOnce(codec), 0);
        EXPECT_EQ(calls.filterCode, (100000U << 8U) | code) << kind;
    }
}

TEST_F(CodecTest, AsksForAnEncoderByItsCodeAlone) {
    UseRecordingLibrary();
    constexpr std::pair<std::uint32_t, unsigned> kCodes[] = {{23, 0}, {22, 2},  {20, 4}, {19, 6},
                                                             {21, 8}, {18, 10}, {17, 12}};
    for (const auto& [kind, code] : kCodes) {
        Codec codec(static_cast<CodecKind>(kind), Sink);
        EXPECT_EQ(codec.EncodeChunk(AsBytes("x")), Status::kOk);
        EXPECT_EQ(calls.filterCode, code) << kind;
        EXPECT_EQ(calls.parameters, nullptr);
    }
}

TEST_F(CodecTest, CreatesItsHandleOnFirstUseAndOnce) {
    UseRecordingLibrary();
    Codec encoder(CodecKind::kASCII85DecodeEncoder, Sink);
    EXPECT_EQ(calls.created, 0);
    EXPECT_EQ(encoder.EncodeChunk(AsBytes("x")), Status::kOk);
    EXPECT_EQ(encoder.EncodeChunk(AsBytes("y")), Status::kOk);
    EXPECT_EQ(encoder.EndEncoding(), Status::kOk);
    EXPECT_EQ(calls.created, 1);
}

TEST_F(CodecTest, DestroysAHandleByItsKindAndOnlyWhenThereIsOne) {
    UseRecordingLibrary();
    {
        Codec unused(CodecKind::kFlateDecode, std::monostate{}, AsBytes("x"));
        Codec decoder(CodecKind::kFlateDecode, std::monostate{}, AsBytes("x"));
        Codec encoder(CodecKind::kLZWDecodeEncoder, Sink);
        EXPECT_EQ(DecodeOnce(decoder), 0);
        EXPECT_EQ(encoder.EndEncoding(), Status::kOk);
    }
    EXPECT_EQ(calls.decodersDestroyed, 1);
    EXPECT_EQ(calls.encodersDestroyed, 1);
    EXPECT_EQ(calls.flushed, 0);
}

TEST_F(CodecTest, KeepsSlot0ForEncodersAndGivesDecodersTheOthers) {
    UseRecordingLibrary();
    Codec first(CodecKind::kFlateDecode, std::monostate{}, AsBytes("x"));
    EXPECT_EQ(DecodeOnce(first), 0);
    EXPECT_EQ(*calls.slot, 1);
    Codec second(CodecKind::kFlateDecode, std::monostate{}, AsBytes("x"));
    EXPECT_EQ(DecodeOnce(second), 0);
    EXPECT_EQ(*calls.slot, 2);
    Codec encoder(CodecKind::kLZWDecodeEncoder, Sink);
    EXPECT_EQ(encoder.EndEncoding(), Status::kOk);
    EXPECT_EQ(*calls.slot, 0);
}

TEST_F(CodecTest, AnswersNothingForASlotThatIsCleared) {
    UseRecordingLibrary();
    {
        Codec decoder(CodecKind::kFlateDecode, std::monostate{}, AsBytes("abc"));
        EXPECT_EQ(DecodeOnce(decoder), 0);
        Codec encoder(CodecKind::kLZWDecodeEncoder, Sink);
        EXPECT_EQ(encoder.EndEncoding(), Status::kOk);
    }
    char buffer[4];
    unsigned int count = 9;
    for (const int slot : {0, 1, 2, 1000, -1}) {
        EXPECT_EQ(calls.read(&slot, buffer, 4, &count), 0);
        EXPECT_EQ(count, 0U);
        count = 9;
        EXPECT_EQ(calls.write(&slot, "abcd", 4, &count), 0);
        EXPECT_EQ(count, 0U);
    }
    EXPECT_EQ(sinkCalls, 0);
}

TEST_F(CodecTest, GivesAFreedSlotToTheNextCodec) {
    UseRecordingLibrary();
    for (int round = 0; round < 3; ++round) {
        Codec decoder(CodecKind::kFlateDecode, std::monostate{}, AsBytes("x"));
        EXPECT_EQ(DecodeOnce(decoder), 0);
        EXPECT_EQ(*calls.slot, 1);
    }
}

TEST_F(CodecTest, DeliversInputAndSaysWhetherAllThatWasWantedWasThere) {
    UseRecordingLibrary();
    Codec decoder(CodecKind::kFlateDecode, std::monostate{}, AsBytes("abcdefg"));
    EXPECT_EQ(DecodeOnce(decoder), 0);
    char buffer[8];
    unsigned int count = 0;
    EXPECT_EQ(calls.read(calls.slot, buffer, 3, &count), 1);
    EXPECT_EQ(std::string(buffer, count), "abc");
    EXPECT_EQ(calls.read(calls.slot, buffer, 4, &count), 1);
    EXPECT_EQ(std::string(buffer, count), "defg");
    EXPECT_EQ(calls.read(calls.slot, buffer, 4, &count), 0);
    EXPECT_EQ(count, 0U);
}

TEST_F(CodecTest, DeliversARestThatIsShorterThanWantedWithTheAnswer0) {
    UseRecordingLibrary();
    Codec decoder(CodecKind::kFlateDecode, std::monostate{}, AsBytes("ab"));
    EXPECT_EQ(DecodeOnce(decoder), 0);
    char buffer[8];
    unsigned int count = 0;
    EXPECT_EQ(calls.read(calls.slot, buffer, 8, &count), 0);
    EXPECT_EQ(std::string(buffer, count), "ab");
}

TEST_F(CodecTest, TakesEncodedBytesAndRefusesAnEmptyPiece) {
    UseRecordingLibrary();
    Codec encoder(CodecKind::kLZWDecodeEncoder, Sink);
    EXPECT_EQ(encoder.EndEncoding(), Status::kOk);
    unsigned int count = 9;
    EXPECT_EQ(calls.write(calls.slot, "abc", 3, &count), 1);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(calls.write(calls.slot, "", 0, &count), 0);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(sunk, "abc");
    EXPECT_EQ(sinkCalls, 1);
}

TEST_F(CodecTest, FailsWhenTheLibraryMakesNoEncoder) {
    UseRecordingLibrary();
    calls.creates = false;
    Codec encoder(CodecKind::kLZWDecodeEncoder, Sink);
    EXPECT_EQ(encoder.EncodeChunk(AsBytes("x")), Status::kNoObject);
    EXPECT_EQ(encoder.EndEncoding(), Status::kNoObject);
    EXPECT_EQ(Error().Code(), Status::kMemoryNotEnough);  // which -1 does not tell
}

TEST_F(CodecTest, LacksMemoryWhenTheLibraryMakesNoDecoder) {
    UseRecordingLibrary();
    calls.creates = false;
    Codec decoder(CodecKind::kFlateDecode, std::monostate{}, AsBytes("x"));
    EXPECT_THROW(DecodeOnce(decoder), std::bad_alloc);
}

TEST_F(CodecTest, FailsWhenTheEncoderFails) {
    UseRecordingLibrary();
    calls.result = -1;
    Codec encoder(CodecKind::kLZWDecodeEncoder, Sink);
    EXPECT_EQ(encoder.EncodeChunk(AsBytes("x")), Status::kNoObject);
    EXPECT_EQ(encoder.EndEncoding(), Status::kNoObject);
}

TEST_F(CodecTest, DoesNotDecodeAFilterThatItDoesNotKnow) {
    UseRecordingLibrary();
    Codec decoder(CodecKind::kNone, std::monostate{}, AsBytes("x"));
    EXPECT_EQ(DecodeOnce(decoder), -1);
    EXPECT_EQ(calls.created, 0);
}

TEST_F(CodecTest, EncodesThroughTheRealLibrary) {
    Codec encoder(CodecKind::kASCIIHexDecodeEncoder, Sink);
    EXPECT_EQ(encoder.EncodeChunk(AsBytes("AB")), Status::kOk);
    EXPECT_EQ(encoder.EndEncoding(), Status::kOk);
    EXPECT_EQ(sunk.substr(0, 4), "4142");
    EXPECT_EQ(sunk.back(), '>');
}

TEST_F(CodecTest, KeepsTheHostsStatusAndHandsItNoMore) {
    for (const int status : {7, -1, -4088}) {
        sinkAnswer = static_cast<Status>(status);
        sinkCalls = 0;
        Codec encoder(CodecKind::kASCII85DecodeEncoder, Sink);
        Status answer = Status::kOk;
        const std::string data(100000, 'x');
        for (int i = 0; i < 10 && !Failed(answer); ++i) {
            answer = encoder.EncodeChunk(AsBytes(data));
        }
        EXPECT_EQ(answer, static_cast<Status>(status));
        EXPECT_EQ(encoder.EndEncoding(), static_cast<Status>(status));
        EXPECT_EQ(encoder.EncodeChunk(AsBytes(data)), static_cast<Status>(status));
        EXPECT_EQ(sinkCalls, 1);
    }
}

TEST_F(CodecTest, DecodesPieceByPieceThroughTwoDecoders) {
    const std::string encoded = "34 31 34 32 34 33 >";  // hexadecimal of hexadecimal of "ABC"
    Codec inner(CodecKind::kASCIIHexDecode, std::monostate{}, AsBytes(encoded));
    std::array<std::uint8_t, 2> buffer{};
    Codec outer(CodecKind::kASCIIHexDecode, std::monostate{}, inner, buffer);
    std::string decoded;
    int result = 1;
    while (result > 0) {
        std::array<std::uint8_t, 1> output{};
        std::uint32_t produced = 0;
        result = outer.Decode(output, produced);
        decoded.append(output.begin(), output.begin() + produced);
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(decoded, "ABC");
}

/// The block for `DecodeParms` written like this.
class CodecParametersTest : public CodecTest {
protected:
    static CodecParameters Of(CodecKind kind,
                              std::initializer_list<std::pair<const char*, PdfObject>> entries) {
        const OwnedObject dictionary(NewDictionary(8));
        for (const auto& [key, value] : entries) {
            EXPECT_TRUE(DictPut(dictionary.Get(), Intern(key), value));
        }
        return DecoderParametersOf(kind, dictionary.Get());
    }
};

TEST_F(CodecParametersTest, OfCcittHaveTheFormatsDefaults) {
    const auto block = std::get<FilterCcittParameters>(Of(CodecKind::kCCITTFaxDecode, {}));
    EXPECT_EQ(block.k, 0);
    EXPECT_EQ(block.end_of_line, 0);
    EXPECT_EQ(block.encoded_byte_align, 0);
    EXPECT_EQ(block.columns, 1728);
    EXPECT_EQ(block.rows, 0);
    EXPECT_EQ(block.end_of_block, 1);
    EXPECT_EQ(block.black_is_1, 0);
}

TEST_F(CodecParametersTest, OfCcittAreTakenFromDecodeParms) {
    const auto block = std::get<FilterCcittParameters>(
        Of(CodecKind::kCCITTFaxDecode, {{"K", MakeInteger(-1)},
                                        {"EndOfLine", MakeBoolean(true)},
                                        {"EncodedByteAlign", MakeBoolean(true)},
                                        {"Columns", MakeInteger(100)},
                                        {"Rows", MakeInteger(50)},
                                        {"EndOfBlock", MakeBoolean(false)}}));
    EXPECT_EQ(block.k, -1);
    EXPECT_EQ(block.end_of_line, 1);
    EXPECT_EQ(block.encoded_byte_align, 1);
    EXPECT_EQ(block.columns, 100);
    EXPECT_EQ(block.rows, 50);
    EXPECT_EQ(block.end_of_block, 0);
}

TEST_F(CodecParametersTest, OfCcittNeverSeeAFilesBlackIs1) {
    EXPECT_EQ(
        std::get<FilterCcittParameters>(Of(CodecKind::kCCITTFaxDecode, {{"BlackIs1", MakeBoolean(true)}}))
            .black_is_1,
        0);
    EXPECT_EQ(
        std::get<FilterCcittParameters>(Of(CodecKind::kCCITTFaxDecode, {{"Blackls1", MakeBoolean(true)}}))
            .black_is_1,
        1);
}

TEST_F(CodecParametersTest, OfDctAre48EmptyBytes) {
    static_assert(sizeof(FilterDctParameters) == 48);
    const CodecParameters parameters = DecoderParametersOf(CodecKind::kDCTDecode, MakeNull());
    for (const unsigned int word : std::get<FilterDctParameters>(parameters).words) {
        EXPECT_EQ(word, 0U);
    }
}

TEST_F(CodecParametersTest, OfTheOthersAreNone) {
    for (const CodecKind kind : {CodecKind::kASCIIHexDecode, CodecKind::kASCII85Decode, CodecKind::kLZWDecode,
                                 CodecKind::kFlateDecode, CodecKind::kRunLengthDecode}) {
        EXPECT_TRUE(std::holds_alternative<std::monostate>(Of(kind, {{"Predictor", MakeInteger(12)}})));
    }
}

TEST_F(CodecParametersTest, ReachTheLibraryAsABlockOrNull) {
    UseRecordingLibrary();
    Codec dct(CodecKind::kDCTDecode, FilterDctParameters{}, AsBytes("x"));
    EXPECT_EQ(DecodeOnce(dct), 0);
    EXPECT_NE(calls.parameters, nullptr);
    Codec flate(CodecKind::kFlateDecode, std::monostate{}, AsBytes("x"));
    EXPECT_EQ(DecodeOnce(flate), 0);
    EXPECT_EQ(calls.parameters, nullptr);
}

}  // namespace
}  // namespace zorvan::test
