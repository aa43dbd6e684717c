// Stream data as it stands and through its filters.
#include "pdf/stream_reader.h"

#include <algorithm>
#include <string>

#include "api/current_job.h"
#include "pdf/byte_buffer.h"
#include "pdf/describe.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "platform/filter_library.h"
#include "platform/limits.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

std::string encoded;  // NOLINT: the encoder's sink is a plain function

Status KeepEncoded(std::string_view bytes) {
    encoded += bytes;
    return Status::kOk;
}

/// `text` so many times over through an encoder. Needs a job.
std::string Encoded(CodecKind encoder, std::string_view text, int times = 1) {
    encoded.clear();
    Codec codec(encoder, KeepEncoded);
    for (int i = 0; i < times; ++i) {
        EXPECT_EQ(codec.EncodeChunk(BytesOf(text)), Status::kOk);
    }
    EXPECT_EQ(codec.EndEncoding(), Status::kOk);
    return encoded;
}

unsigned int lastDecoderCode = 0;
CreateDecoderFunction realCreateDecoder = nullptr;

void* ZORVAN_CALL NoteDecoderCode(unsigned int code, const void* parameters, const int* slot,
                                  FilterReadFunction read) {
    lastDecoderCode = code;
    return realCreateDecoder(code, parameters, slot, read);
}

constexpr std::uint32_t kNumber = 10;

class Streams : public JobTest {
protected:
    /// Opens a file whose object 10 is a stream with this data.
    void Prepare(std::string_view data, std::string_view entries = "") {
        pdf.Object(1, "<< >>").Stream(kNumber, data, entries);
        OpenStream();
    }
    /// Object 10 as it is written.
    void PrepareWritten(std::string_view body) {
        pdf.Object(1, "<< >>").Object(kNumber, body);
        OpenStream();
    }
    std::string Raw() {
        StreamReader reader(stream.Get());
        Bytes chunk;
        EXPECT_EQ(reader.ReadChunk(chunk), 0);
        return TextOf(chunk);
    }
    std::string Decoded(Status expected = Status::kOk) {
        StreamReader reader(stream.Get());
        ByteBuffer data;
        EXPECT_EQ(DecodeWholeStream(reader, MakeReference(kNumber, 0), data), expected);
        return TextOf(data.Bytes());
    }
    void TearDown() override {
        stream = OwnedObject();
        JobTest::TearDown();
    }

    PdfBuilder pdf;
    OwnedObject stream;

private:
    void OpenStream() {
        stream = OwnedObject();  // while its file is still open
        ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
        stream = OwnedObject(ResolveReference(File(), MakeReference(kNumber, 0)));
        ASSERT_TRUE(Is(stream.Get(), ObjectType::kStream));
    }
};

// --- raw data ---

TEST_F(Streams, HandTheirWholeDataOutAtOnce) {
    Prepare("0 0 m\n");
    EXPECT_EQ(Raw(), "0 0 m\n");
    EXPECT_EQ(Decoded(), "0 0 m\n");
}

TEST_F(Streams, HandTheirDataOutAsItStandsUntilDecodingIsStarted) {
    Prepare("414243>", "/Filter /ASCIIHexDecode");
    EXPECT_EQ(Raw(), "414243>");
    EXPECT_EQ(Decoded(), "ABC");
}

TEST_F(Streams, EndWithTheFile) {
    PrepareWritten("<< /Length 1000000 >> stream\nabc\nendstream");
    const StreamReader reader(stream.Get());
    EXPECT_TRUE(reader.IsCutShort());
    EXPECT_EQ(reader.Length(), File().Bytes().size() - StreamDataOffset(stream.Get()));
    EXPECT_TRUE(Raw().starts_with("abc\nendstream"));
}

TEST_F(Streams, AreNotCutShortByTheEndsOfTheirWords) {
    Prepare("abc");
    EXPECT_FALSE(StreamReader(stream.Get()).IsCutShort());
    EXPECT_EQ(StreamReader(stream.Get()).Length(), 3U);
}

TEST_F(Streams, WithLengthsOutOfRangeEndWithTheFile) {
    for (const char* length : {"-1", "-2147483648", "2147483647", "4294967295"}) {
        pdf = PdfBuilder();
        PrepareWritten("<< /Length " + std::string(length) + " >> stream\nabc\nendstream");
        EXPECT_TRUE(StreamReader(stream.Get()).IsCutShort()) << length;
        EXPECT_TRUE(Raw().starts_with("abc\nendstream")) << length;
    }
}

TEST_F(Streams, BeyondTheFileAreEmpty) {
    Prepare("abc");
    const OwnedObject beyond(NewStream(0xFFFFFFFF, 0xFFFFFFFF, MakeNull()));
    const StreamReader reader(beyond.Get());
    EXPECT_EQ(reader.Length(), 0U);
    EXPECT_TRUE(reader.IsCutShort());
}

TEST_F(Streams, AreEmptyWhenTheyAreNone) {
    Prepare("abc");
    EXPECT_EQ(StreamReader(MakeInteger(5)).Length(), 0U);
    EXPECT_FALSE(StreamReader(MakeNull()).IsCutShort());
}

// --- filters ---

TEST_F(Streams, AreDecodedByEachFilterThatTheCodecLibraryHas) {
    const std::string text = "q 1 0 0 1 72 72 cm BT ET Q q q q q q q q q";
    const std::pair<const char*, CodecKind> filters[] = {
        {"ASCIIHexDecode", CodecKind::kASCIIHexDecodeEncoder},
        {"ASCII85Decode", CodecKind::kASCII85DecodeEncoder},
        {"LZWDecode", CodecKind::kLZWDecodeEncoder},
        {"FlateDecode", CodecKind::kFlateDecodeEncoder},
        {"RunLengthDecode", CodecKind::kRunLengthDecodeEncoder}};
    for (const auto& [name, encoder] : filters) {
        pdf = PdfBuilder();
        Prepare(Encoded(encoder, text), "/Filter /" + std::string(name));
        EXPECT_EQ(Decoded(), text) << name;
    }
}

TEST_F(Streams, PassTheirLengthInTheUpperBitsOfTheFilterCode) {
    Prepare(Encoded(CodecKind::kFlateDecodeEncoder, "abc", 1000), "/Filter /FlateDecode");
    realCreateDecoder = CurrentFilterLibrary().createDecoder;
    CurrentFilterLibrary().createDecoder = NoteDecoderCode;
    static_cast<void>(Decoded());
    EXPECT_EQ(lastDecoderCode & 0xFFU, 5U);
    EXPECT_EQ(lastDecoderCode >> 8U, StreamReader(stream.Get()).Length());
}

TEST_F(Streams, AreDecodedByTwoFiltersInOrder) {
    const std::string text(100000, 'x');
    Prepare(Encoded(CodecKind::kASCIIHexDecodeEncoder, Encoded(CodecKind::kFlateDecodeEncoder, text)),
            "/Filter [/ASCIIHexDecode /FlateDecode]");
    EXPECT_EQ(Decoded(), text);
}

TEST_F(Streams, AreDecodedByAnArrayOfOneFilterAndOfNone) {
    Prepare("4142>", "/Filter [/ASCIIHexDecode]");
    EXPECT_EQ(Decoded(), "AB");
    pdf = PdfBuilder();
    Prepare("4142>", "/Filter []");
    EXPECT_EQ(Decoded(), "4142>");
}

TEST_F(Streams, WithThreeFiltersAreNotDecoded) {
    Prepare("3431>", "/Filter [/ASCIIHexDecode /ASCIIHexDecode /ASCIIHexDecode]");
    EXPECT_EQ(Decoded(Status::kDecodeError), "");
    EXPECT_EQ(Error().Code(), Status::kDecodeError);
    EXPECT_EQ(Error().Offset(), pdf.OffsetOf(kNumber));
    EXPECT_EQ(StreamReader(stream.Get()).Filters().size(), 3U);
    EXPECT_EQ(Raw(), "3431>");
}

TEST_F(Streams, WithAnUnknownFilterAreNotDecoded) {
    for (const char* filter : {"/Crypt", "/flatedecode", "[/ASCIIHexDecode /Crypt]",
                               "[/Crypt /ASCIIHexDecode]", "[7]", "[(FlateDecode)]", "[null]"}) {
        pdf = PdfBuilder();
        Prepare("4142>", "/Filter " + std::string(filter));
        EXPECT_EQ(Decoded(Status::kDecodeError), "") << filter;
    }
}

TEST_F(Streams, HaveNoFilterWhenItIsNeitherANameNorAnArray) {
    for (const char* filter : {"7", "(ASCIIHexDecode)", "<< >>", "null", "99 0 R"}) {
        pdf = PdfBuilder();
        Prepare("4142>", "/Filter " + std::string(filter));
        EXPECT_EQ(Decoded(), "4142>") << filter;
    }
}

TEST_F(Streams, ResolveTheirFiltersAndParameters) {
    pdf.Object(20, "[21 0 R]").Object(21, "/ASCIIHexDecode").Object(22, "[23 0 R]").Object(23, "<< /K 5 >>");
    Prepare("4142>", "/Filter 20 0 R /DecodeParms 22 0 R");
    const StreamReader reader(stream.Get());
    ASSERT_EQ(reader.Filters().size(), 1U);
    EXPECT_EQ(reader.Filters()[0].name, names::kASCIIHexDecode);
    EXPECT_EQ(Describe(reader.Filters()[0].decodeParms), "<</K 5>>");
    EXPECT_EQ(Decoded(), "AB");
}

TEST_F(Streams, GiveEachFilterOfAnArrayItsOwnParameters) {
    Prepare("", "/Filter [/LZWDecode /DCTDecode /FlateDecode] /DecodeParms [null << /K 1 >>]");
    const StreamReader reader(stream.Get());
    ASSERT_EQ(reader.Filters().size(), 3U);
    EXPECT_EQ(Describe(reader.Filters()[0].decodeParms), "null");
    EXPECT_EQ(Describe(reader.Filters()[1].decodeParms), "<</K 1>>");
    EXPECT_EQ(Describe(reader.Filters()[2].decodeParms), "null");
}

TEST_F(Streams, GiveASingleFilterTheParametersAsTheyStand) {
    Prepare("", "/Filter /LZWDecode /DecodeParms << /K 1 >>");
    EXPECT_EQ(Describe(StreamReader(stream.Get()).Filters()[0].decodeParms), "<</K 1>>");
}

TEST_F(Streams, WithAPredictorAreInflatedWithoutUndoingIt) {
    const std::string rows("\2abcde\2fghij", 12);
    Prepare(Encoded(CodecKind::kFlateDecodeEncoder, rows),
            "/Filter /FlateDecode /DecodeParms << /Predictor 12 /Columns 5 >>");
    EXPECT_EQ(Decoded(), rows);
}

TEST_F(Streams, ThatAreEmptyDecodeToNothing) {
    for (const char* filter :
         {"/FlateDecode", "/LZWDecode", "/ASCII85Decode", "[/ASCIIHexDecode /FlateDecode]"}) {
        pdf = PdfBuilder();
        Prepare("", "/Filter " + std::string(filter));
        EXPECT_EQ(Decoded(), "") << filter;
    }
}

TEST_F(Streams, ThatAreCutShortAreDeliveredAsFarAsTheyGo) {
    const std::string whole = Encoded(CodecKind::kASCII85DecodeEncoder, "abcdefghijkl");
    Prepare(whole.substr(0, 10), "/Filter /ASCII85Decode");
    EXPECT_EQ(Decoded(), "abcdefgh");
}

TEST_F(Streams, ThatAreDamagedAreDeliveredUpToTheDamageAndRecorded) {
    // A stored block of 30,000 bytes (RFC 1951), and behind it a block of the type that there is not.
    const std::string text(0x7530, 'x');
    Prepare("\x78\x01" + std::string("\x00\x30\x75\xCF\x8A", 5) + text + "\x07", "/Filter /FlateDecode");
    EXPECT_EQ(Decoded(Status::kDecodeError), text);
    EXPECT_EQ(Error().Code(), Status::kDecodeError);
    EXPECT_EQ(Error().Offset(), pdf.OffsetOf(kNumber));
}

TEST_F(Streams, ThatAreDamagedBeforeTheirSecondFilterAreRecordedToo) {
    Prepare("x\x9C this is no deflate data", "/Filter [/FlateDecode /ASCIIHexDecode]");
    EXPECT_EQ(Decoded(Status::kDecodeError), "");
}

TEST_F(Streams, ComeInPiecesOfAtMost65536Bytes) {
    Prepare(Encoded(CodecKind::kFlateDecodeEncoder, std::string(100000, 'x'), 10), "/Filter /FlateDecode");
    StreamReader reader(stream.Get());
    reader.StartDecoding();
    std::size_t total = 0;
    for (int state = 1; state > 0;) {
        Bytes chunk;
        state = reader.ReadChunk(chunk);
        EXPECT_GE(state, 0);
        EXPECT_LE(chunk.size(), 65536U);
        total += chunk.size();
    }
    EXPECT_EQ(total, 1000000U);
}

TEST_F(Streams, ThatDecodeBeyondTheLimitAreMemoryNotEnough) {
    const std::string zeros(1 << 20, '\0');
    Prepare(Encoded(CodecKind::kFlateDecodeEncoder, zeros, 257), "/Filter /FlateDecode");
    StreamReader reader(stream.Get());
    ByteBuffer data;
    EXPECT_EQ(DecodeWholeStream(reader, MakeReference(kNumber, 0), data), Status::kMemoryNotEnough);
    EXPECT_LE(data.Size(), limits::kDecodedStream);
    EXPECT_EQ(Error().Code(), Status::kMemoryNotEnough);
    EXPECT_EQ(Error().Offset(), pdf.OffsetOf(kNumber));
}

// --- decoder parameters ---

class DecoderParameters : public Streams {
protected:
    FilterCcittParameters Ccitt(std::string_view dictionary) {
        pdf = PdfBuilder();
        Prepare("", "/Filter /CCITTFaxDecode /DecodeParms " + std::string(dictionary));
        const StreamReader reader(stream.Get());
        return std::get<FilterCcittParameters>(
            DecoderParametersOf(CodecKind::kCCITTFaxDecode, reader.Filters()[0].decodeParms));
    }
};

TEST_F(DecoderParameters, OfFaxDataHaveTheirDefaults) {
    const FilterCcittParameters block = Ccitt("<< >>");
    EXPECT_EQ(block.k, 0);
    EXPECT_EQ(block.end_of_line, 0);
    EXPECT_EQ(block.encoded_byte_align, 0);
    EXPECT_EQ(block.columns, 1728);
    EXPECT_EQ(block.rows, 0);
    EXPECT_EQ(block.end_of_block, 1);
    EXPECT_EQ(block.black_is_1, 0);
}

TEST_F(DecoderParameters, OfFaxDataAreReadFromTheDictionary) {
    const FilterCcittParameters block =
        Ccitt("<< /K -1 /EndOfLine true /EncodedByteAlign true /Columns 100 /Rows 7 /EndOfBlock false >>");
    EXPECT_EQ(block.k, -1);
    EXPECT_EQ(block.end_of_line, 1);
    EXPECT_EQ(block.encoded_byte_align, 1);
    EXPECT_EQ(block.columns, 100);
    EXPECT_EQ(block.rows, 7);
    EXPECT_EQ(block.end_of_block, 0);
}

TEST_F(DecoderParameters, OfFaxDataNeverSayThatBlackIsOne) {
    EXPECT_EQ(Ccitt("<< /BlackIs1 true >>").black_is_1, 0);
    EXPECT_EQ(Ccitt("<< /Blackls1 true >>").black_is_1, 1) << "the name under which it is looked up";
}

TEST_F(DecoderParameters, OfFaxDataAreNoneWithoutADictionary) {
    EXPECT_TRUE(
        std::holds_alternative<std::monostate>(DecoderParametersOf(CodecKind::kCCITTFaxDecode, MakeNull())));
}

TEST_F(DecoderParameters, OfJpegDataAreTheDefaultBlockOnlyWithoutADictionary) {
    const CodecParameters block = DecoderParametersOf(CodecKind::kDCTDecode, MakeNull());
    ASSERT_TRUE(std::holds_alternative<FilterDctParameters>(block));
    EXPECT_TRUE(std::ranges::all_of(std::get<FilterDctParameters>(block).words,
                                    [](unsigned word) { return word == 0; }));
    const OwnedObject dictionary(NewDictionary(1));
    EXPECT_TRUE(
        std::holds_alternative<std::monostate>(DecoderParametersOf(CodecKind::kDCTDecode, dictionary.Get())));
}

TEST_F(DecoderParameters, OfOtherFiltersAreNone) {
    const OwnedObject dictionary(NewDictionary(1));
    for (const CodecKind kind : {CodecKind::kFlateDecode, CodecKind::kLZWDecode, CodecKind::kRunLengthDecode,
                                 CodecKind::kASCII85Decode, CodecKind::kASCIIHexDecode, CodecKind::kNone}) {
        EXPECT_TRUE(std::holds_alternative<std::monostate>(DecoderParametersOf(kind, dictionary.Get())));
    }
}

TEST(FilterTable, KnowsTheKindsAndCodesOfEachFilter) {
    EXPECT_EQ(DecoderKindOf(names::kASCIIHexDecode), static_cast<CodecKind>(1));
    EXPECT_EQ(DecoderKindOf(names::kASCII85Decode), static_cast<CodecKind>(2));
    EXPECT_EQ(DecoderKindOf(names::kLZWDecode), static_cast<CodecKind>(3));
    EXPECT_EQ(DecoderKindOf(names::kFlateDecode), static_cast<CodecKind>(4));
    EXPECT_EQ(DecoderKindOf(names::kRunLengthDecode), static_cast<CodecKind>(5));
    EXPECT_EQ(DecoderKindOf(names::kCCITTFaxDecode), static_cast<CodecKind>(6));
    EXPECT_EQ(DecoderKindOf(names::kDCTDecode), static_cast<CodecKind>(7));
    EXPECT_EQ(DecoderKindOf(names::kFilter), CodecKind::kNone);
    EXPECT_EQ(DecoderKindOf(0), CodecKind::kNone);
}

}  // namespace
}  // namespace zorvan::test
