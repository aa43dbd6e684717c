// Stream data inside the PostScript: passed through, compressed, counted, and as strings.
#include "ps/embedded_data.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "api/current_job.h"
#include "pdf/byte_buffer.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"
#include "support/ascii85_text.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;
using ::testing::AllOf;
using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr std::uint32_t kNumber = 10;
constexpr const char* kCycle = "\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \n";

/// Bytes without a pattern that a compressor would see.
std::string Noise(std::size_t count) {
    std::string bytes;
    std::uint32_t seed = 1;
    for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 1103515245 + 12345;
        bytes += static_cast<char>(seed >> 16U);
    }
    return bytes;
}

/// Decodes a stream and embeds what comes out.
template <Status (*embed)(Bytes)>
Status Decoded(PdfObject stream, PdfObject reference) {
    StreamReader reader(stream);
    ByteBuffer data;
    const Status status = DecodeWholeStream(reader, reference, data);
    return Failed(status) ? status : embed(data.Bytes());
}

class EmbeddedData : public JobTest {
protected:
    static PdfObject Reference() { return MakeReference(kNumber, 0); }

    /// Makes object 10 a stream of a new file in a new job.
    void Prepare(std::string_view data, std::string_view entries = "") {
        DestroyJob();  // and with it the error record, which keeps the first error
        JobTest::SetUp();
        PdfBuilder pdf;
        pdf.Object(1, "<< >>").Stream(kNumber, data, entries);
        pdf.Object(20, "/FlateDecode").Object(21, "<< /Predictor 12 >>").Object(22, "4");
        ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
        Pieces::Reset();
    }

    template <class... Arguments>
    static Status Embed(Status (*embed)(PdfObject, PdfObject, Arguments...), Arguments... arguments) {
        const Resolved stream(Reference());
        return embed(stream.Get(), Reference(), arguments...);
    }

    /// What becomes of a stream; all must go well.
    std::string Streamed(std::string_view data, std::string_view entries = "",
                         DataIntent intent = DataIntent::kImage) {
        Prepare(data, entries);
        EXPECT_EQ(Embed(EmbedStream, intent), Status::kOk);
        EXPECT_EQ(Error().Code(), Status::kOk);
        return Pieces::Joined();
    }
    std::string Written(Status (*embed)(PdfObject, PdfObject), std::string_view data,
                        std::string_view entries = "") {
        Prepare(data, entries);
        EXPECT_EQ(Embed(embed), Status::kOk);
        return Pieces::Joined();
    }
};

// Codes of nine bits: 256 to begin, 97 98 99, 257 to end.
TEST_F(EmbeddedData, WithoutAFilterIsCompressed) {
    EXPECT_EQ(Streamed("abc"),
              " currentfile <</Filter /LZWDecode /Intent 0>> /ReusableStreamDecode\n"
              "%%BeginData: 256 Bytes\n"
              "filter\n"
              "\x80\x18\x4C\x46\x38\x08"
              "\n%%EndData\n");
    EXPECT_EQ(Pieces::Taken().front(),
              " currentfile <</Filter /LZWDecode /Intent 0>> /ReusableStreamDecode\n"
              "%%BeginData: 256 Bytes\nfilter\n");
    EXPECT_EQ(Streamed("abc", "/Filter []"), Streamed("abc"));
}

TEST_F(EmbeddedData, WithoutAFilterIsAnnouncedAs256BytesWhateverItsSize) {
    for (const std::size_t size : {0U, 1U, 256U, 10000U, 200000U}) {
        const std::string written = Streamed(Noise(size), "", DataIntent::kOther);
        EXPECT_THAT(written, StartsWith(" currentfile <</Filter /LZWDecode /Intent 3>> "
                                        "/ReusableStreamDecode\n%%BeginData: 256 Bytes\nfilter\n"));
        EXPECT_TRUE(written.ends_with("\n%%EndData\n"));
    }
}

// Begin and end: 100000000 100000001, and six bits to fill up.
TEST_F(EmbeddedData, WithoutAFilterAndEmptyStillEndsItself) {
    EXPECT_THAT(Streamed(""), HasSubstr("filter\n\x80\x40\x40\n%%EndData\n"));
}

TEST_F(EmbeddedData, WithAFilterIsPassedThroughByteForByte) {
    EXPECT_EQ(Streamed("no real data", "/Filter /FlateDecode"),
              " currentfile <</Filter /FlateDecode\n"
              "/Intent 0 >> /ReusableStreamDecode\n"
              "%%BeginData: 12 Bytes\n"
              "filter\n"
              "no real data"
              "\n%%EndData\n");
    const std::string data = Noise(10000);
    EXPECT_EQ(Streamed(data, "/Filter /FlateDecode"),
              " currentfile <</Filter /FlateDecode\n/Intent 0 >> /ReusableStreamDecode\n"
              "%%BeginData: 10000 Bytes\nfilter\n" +
                  data + "\n%%EndData\n");
}

TEST_F(EmbeddedData, IsToldApartByItsIntent) {
    EXPECT_THAT(Streamed("x", "/Filter /FlateDecode", DataIntent::kMask), HasSubstr("\n/Intent 1 >> /Reu"));
    EXPECT_THAT(Streamed("x", "/Filter /FlateDecode", DataIntent::kLookup), HasSubstr("\n/Intent 2 >> /Reu"));
    EXPECT_THAT(Streamed("x", "/Filter /FlateDecode", DataIntent::kOther), HasSubstr("\n/Intent 3 >> /Reu"));
    EXPECT_THAT(Streamed("x", "", DataIntent::kMask), HasSubstr(" /Intent 1>> /Reu"));
}

TEST_F(EmbeddedData, NamesEachFilterThatPostScriptHas) {
    for (const std::string filter : {"ASCIIHexDecode", "ASCII85Decode", "LZWDecode", "FlateDecode",
                                     "RunLengthDecode", "CCITTFaxDecode", "DCTDecode"}) {
        EXPECT_EQ(Streamed("x", "/Filter /" + filter),
                  " currentfile <</Filter /" + filter +
                      "\n/Intent 0 >> /ReusableStreamDecode\n%%BeginData: 1 Bytes\nfilter\nx\n%%EndData\n");
    }
}

TEST_F(EmbeddedData, TakesTheParametersOfOneFilterAlong) {
    const std::string expected =
        " currentfile <</Filter /CCITTFaxDecode\n/DecodeParms << /K -1 >>/Intent 0 >> /ReusableStreamDecode\n"
        "%%BeginData: 1 Bytes\nfilter\nx\n%%EndData\n";
    EXPECT_EQ(Streamed("x", "/Filter /CCITTFaxDecode /DecodeParms << /K -1 >>"), expected);
    EXPECT_EQ(Streamed("x", "/Filter [/CCITTFaxDecode] /DecodeParms [<< /K -1 >>]"), expected);
}

TEST_F(EmbeddedData, PassesOverParametersThatAreNoDictionary) {
    const std::string expected = Streamed("x", "/Filter /FlateDecode");
    EXPECT_EQ(Streamed("x", "/Filter /FlateDecode /DecodeParms null"), expected);
    EXPECT_EQ(Streamed("x", "/Filter /FlateDecode /DecodeParms 5"), expected);
    EXPECT_EQ(Streamed("x", "/Filter [/FlateDecode] /DecodeParms [null]"), expected);
}

TEST_F(EmbeddedData, WritesEachKindOfParameterAsItIs) {
    constexpr std::pair<const char*, const char*> kValues[] = {
        {"8", "8"},         {"-1", "-1"},       {"1.50", "1.5"}, {"true", "true"},
        {"false", "false"}, {"/Name", "/Name"}, {"22 0 R", "4"}};
    for (const auto& [given, written] : kValues) {
        EXPECT_THAT(Streamed("x", "/Filter /FlateDecode /DecodeParms << /Key "s + given + " >>"),
                    HasSubstr("/DecodeParms << /Key "s + written + " >>/Intent"))
            << given;
    }
    EXPECT_THAT(Streamed("x", "/Filter /FlateDecode /DecodeParms << /A 1 /B (x) /C true >>"),
                AllOf(HasSubstr(" /A 1 "), HasSubstr(" /B null "), HasSubstr(" /C true ")));
}

// A filter that closed its source at its own end would have the rest of the data run.
TEST_F(EmbeddedData, LeavesOutTheParameterThatClosesItsSource) {
    EXPECT_THAT(Streamed("x", "/Filter /FlateDecode /DecodeParms << /K 1 /CloseSource true /N 2 >>"),
                HasSubstr("/DecodeParms << /K 1 /N 2 >>/Intent"));
}

TEST_F(EmbeddedData, TakesFiltersAndParametersByReference) {
    EXPECT_THAT(
        Streamed("x", "/Filter 20 0 R /DecodeParms 21 0 R"),
        StartsWith(" currentfile <</Filter /FlateDecode\n/DecodeParms << /Predictor 12 >>/Intent 0 "));
    EXPECT_THAT(Streamed("x", "/Filter [/ASCII85Decode 20 0 R] /DecodeParms [null 21 0 R]"),
                StartsWith(" currentfile <</Filter [/ASCII85Decode /FlateDecode]\n"
                           "/DecodeParms [null << /Predictor 12 >>]/Intent 0 "));
}

TEST_F(EmbeddedData, WithTwoFiltersNamesBoth) {
    EXPECT_EQ(Streamed("xy", "/Filter [/ASCII85Decode /FlateDecode]"),
              " currentfile <</Filter [/ASCII85Decode /FlateDecode]\n/Intent 0 >> /ReusableStreamDecode\n"
              "%%BeginData: 2 Bytes\nfilter\nxy\n%%EndData\n");
    EXPECT_THAT(Streamed("x", "/Filter [/LZWDecode /DCTDecode] /DecodeParms [<< /EarlyChange 0 >> null]"),
                StartsWith(" currentfile <</Filter [/LZWDecode /DCTDecode]\n"
                           "/DecodeParms [<< /EarlyChange 0 >> null]/Intent 0 >> "));
    EXPECT_THAT(Streamed("x", "/Filter [/ASCIIHexDecode /RunLengthDecode] /DecodeParms [null null]"),
                StartsWith(" currentfile <</Filter [/ASCIIHexDecode /RunLengthDecode]\n/Intent 0 >> "));
}

TEST_F(EmbeddedData, WithThreeFiltersNamesAll) {
    EXPECT_THAT(Streamed("x",
                         "/Filter [/ASCIIHexDecode /ASCII85Decode /FlateDecode] "
                         "/DecodeParms [null null << /Predictor 12 >>]"),
                StartsWith(" currentfile <</Filter [/ASCIIHexDecode /ASCII85Decode /FlateDecode]\n"
                           "/DecodeParms [null null << /Predictor 12 >>]/Intent 0 >> "));
}

TEST_F(EmbeddedData, WithAFilterThatPostScriptLacksIsNotWritten) {
    for (const std::string filter :
         {"/JPXDecode", "/JBIG2Decode", "/Crypt", "[/FlateDecode /JPXDecode]", "[/JPXDecode /FlateDecode]",
          "[5]", "[/ASCIIHexDecode /ASCII85Decode /Unknown]"}) {
        Prepare("x", "/Filter " + filter);
        EXPECT_EQ(Embed(EmbedStream, DataIntent::kImage), Status::kDecodeError) << filter;
        EXPECT_EQ(Error().Code(), Status::kDecodeError) << filter;
        EXPECT_THAT(Pieces::Taken(), IsEmpty()) << filter;
        EXPECT_FALSE(HasDeviceFilters(Resolved(Reference()).Get())) << filter;
    }
}

// The first 62 bytes bring the codes of the others, nine bits each, to where together they read
// "\n%%EndData\n".
TEST_F(EmbeddedData, ThatWouldHoldTheEndLineOnceCompressedGoesOutInHexadecimalDigits) {
    std::string data;
    for (char byte = 0; byte < 62; ++byte) {
        data += byte;
    }
    data += "\x0A\x4A\x95\x2B\xE6\x88\x16\x17\xBA\x61\x14\xFF";
    const std::string written = Streamed(data);
    EXPECT_THAT(written, StartsWith(" currentfile <</Filter /ASCIIHexDecode\n/Intent 0 >> "
                                    "/ReusableStreamDecode\n%%BeginData: 151 Bytes\nfilter\n000102"));
    EXPECT_TRUE(written.ends_with("61\n14FF>\n%%EndData\n")) << written;
    EXPECT_EQ(written.find("\n%%EndData\n"), written.size() - 11);
}

TEST_F(EmbeddedData, StopsAtTheFirstPieceThatTheHostRefuses) {
    for (const std::string filter : {"", "/Filter /FlateDecode"}) {
        Prepare("abc", filter);
        EXPECT_EQ(Embed(EmbedStream, DataIntent::kImage), Status::kOk);
        const std::uint64_t calls = Pieces::Calls();
        for (std::uint64_t call = 1; call <= calls; ++call) {
            Prepare("abc", filter);
            Pieces::Refuse(call, -7, false);
            EXPECT_NE(Embed(EmbedStream, DataIntent::kImage), Status::kOk) << filter << call;
            EXPECT_EQ(Pieces::CallsAfterRefusal(), 0U) << filter << call;
        }
    }
}

// A blank stands before the number: "currentfile3" would be another name.
TEST_F(EmbeddedData, ThatIsCountedIsReadIntoAString) {
    EXPECT_EQ(Written(Decoded<EmbedCountedString>, "abc"),
              " currentfile 3 string\n"
              "%%BeginData:3 Bytes\n"
              "{readstring pop} bind exec\n"
              "abc"
              "\n%%EndData\n");
}

TEST_F(EmbeddedData, ThatIsCountedIsDecoded) {
    EXPECT_EQ(Written(Decoded<EmbedCountedString>, "61 62 0A 00 63>", "/Filter /ASCIIHexDecode"),
              " currentfile 5 string\n%%BeginData:5 Bytes\n{readstring pop} bind exec\n"
              "ab\n\0c\n%%EndData\n"s);
    EXPECT_EQ(
        Written(Decoded<EmbedCountedString>, "02 616263 80>", "/Filter [/ASCIIHexDecode /RunLengthDecode]"),
        " currentfile 3 string\n%%BeginData:3 Bytes\n{readstring pop} bind exec\nabc\n%%EndData\n");
    EXPECT_EQ(Written(Decoded<EmbedCountedString>, ""),
              " currentfile 0 string\n%%BeginData:0 Bytes\n{readstring pop} bind exec\n\n%%EndData\n");
}

TEST_F(EmbeddedData, ThatCannotBeDecodedIsRecordedAndNotWritten) {
    for (const auto embed : {Decoded<EmbedCountedString>, Decoded<EmbedStrings>}) {
        for (const std::string filter : {"/FlateDecode", "/JPXDecode"}) {
            Prepare("damaged", "/Filter " + filter);
            EXPECT_EQ(Embed(embed), Status::kDecodeError) << filter;
            EXPECT_EQ(Error().Code(), Status::kDecodeError) << filter;
            EXPECT_THAT(Pieces::Taken(), IsEmpty()) << filter;
        }
    }
}

constexpr auto kStrings = Decoded<EmbedStrings>;

TEST_F(EmbeddedData, OfShadingsAndFunctionsIsAnAscii85String) {
    EXPECT_EQ(Written(kStrings, "Man sure."), "<~9jqo^F*2M7/c~>");
    EXPECT_EQ(Written(kStrings, "4D616E20>", "/Filter /ASCIIHexDecode"), "<~9jqo^~>");
    EXPECT_EQ(Written(kStrings, ""), "<~~>");
}

TEST_F(EmbeddedData, Of65535BytesIsOneString) {
    EXPECT_EQ(Unfolded(Written(kStrings, std::string(65535, '\0'))),
              "<~" + std::string(16383, 'z') + "!!!!~>");
    const std::string noise = Noise(65535);
    const std::string written = Written(kStrings, noise);
    EXPECT_THAT(written, AllOf(StartsWith("<~"), testing::EndsWith("~>")));
    EXPECT_EQ(FromAscii85(std::string_view(written).substr(2)), noise);
}

TEST_F(EmbeddedData, Of65536BytesIsAnArrayOfOneString) {
    const std::string written = Written(kStrings, std::string(65536, '\0'));
    ASSERT_TRUE(written.ends_with(std::string("~>") + kCycle));
    EXPECT_EQ(Unfolded(written), "{{<~" + std::string(16384, 'z') + "~>" + Unfolded(kCycle));
}

TEST_F(EmbeddedData, Of65537BytesHasAShortLastString) {
    const std::string written = Written(kStrings, std::string(65537, '\0'));
    ASSERT_TRUE(written.ends_with(std::string("~>") + kCycle));
    EXPECT_EQ(Unfolded(written), "{{<~" + std::string(16384, 'z') + "~><~!!~>" + Unfolded(kCycle));
}

TEST_F(EmbeddedData, OfMoreThan81StringsHoldsThemAllAndCountsTo81) {
    constexpr std::size_t kPiece = 65536;
    constexpr std::size_t kPieces = 83;
    std::string data;
    for (std::size_t piece = 0; piece < kPieces; ++piece) {
        data.append(kPiece, static_cast<char>(piece + 1));
    }
    data.resize(data.size() - 5);
    const std::string written = Written(kStrings, data);
    EXPECT_THAT(written, StartsWith("{{<~"));
    std::string_view rest = std::string_view(written).substr(2);
    for (std::size_t piece = 0; piece < kPieces; ++piece) {
        ASSERT_THAT(rest.substr(0, 2), "<~") << piece;
        rest.remove_prefix(2);
        EXPECT_TRUE(FromAscii85(rest) == data.substr(piece * kPiece, kPiece)) << piece;
        rest.remove_prefix(rest.find("~>") + 2);
    }
    EXPECT_EQ(rest, kCycle);
}

TEST_F(EmbeddedData, InStringsStopsAtTheFirstPieceThatTheHostRefuses) {
    const std::string data(65537, '\0');
    Written(kStrings, data);
    const std::uint64_t calls = Pieces::Calls();
    for (std::uint64_t call = 1; call <= calls; call += 1 + calls / 40) {
        Prepare(data);
        Pieces::Refuse(call, -7, false);
        EXPECT_NE(Embed(kStrings), Status::kOk) << call;
        EXPECT_EQ(Pieces::CallsAfterRefusal(), 0U) << call;
    }
}

TEST_F(EmbeddedData, OfALookupTableIsAnAscii85String) {
    Prepare("");
    EXPECT_EQ(EmbedAscii85String({}), Status::kOk);
    const std::uint8_t bytes[] = {'M', 'a', 'n', ' '};
    EXPECT_EQ(EmbedAscii85String(bytes), Status::kOk);
    EXPECT_EQ(Pieces::Joined(), "<~~><~9jqo^~>");
}

}  // namespace
}  // namespace zorvan::test
