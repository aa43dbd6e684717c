// Each error that the library raises, through the exported functions. (Those of the resource classes are with
// the resource registry, those of paths and of the codec library with the calls.)
#include <string>

#include <gmock/gmock.h>
#include <zlib.h>

#include "api/session.h"

namespace zorvan::test {
namespace {

Conversion ConvertPage(std::string_view content, std::string_view entries = "") {
    auto pdf = Pages({"/Contents 10 0 R"});
    return Convert(pdf.Stream(10, content, entries).Bytes());
}

void ExpectPageFails(const Conversion& conversion, int code, const char* message) {
    EXPECT_EQ(conversion.begin, 0);
    EXPECT_EQ(conversion.fileBegin, 0);
    EXPECT_EQ(conversion.pages, std::vector<int>{code});
    EXPECT_EQ(conversion.error.code, code);
    EXPECT_EQ(conversion.error.message, message);
    EXPECT_THAT(conversion.error.excerpt, ::testing::StartsWith("10 0 obj\n<< /Length "));
}

/// Zeros, deflated.
std::string DeflatedZeros(std::size_t count) {
    z_stream stream{};
    EXPECT_EQ(deflateInit(&stream, 9), Z_OK);
    std::string zeros(1U << 20U, ' ');
    std::string out(count / 500 + 4096, '\0');
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    for (std::size_t done = 0; done < count; done += zeros.size()) {
        stream.next_in = reinterpret_cast<Bytef*>(zeros.data());
        stream.avail_in = static_cast<uInt>(zeros.size());
        const bool last = done + zeros.size() >= count;
        EXPECT_GE(deflate(&stream, last ? Z_FINISH : Z_NO_FLUSH), Z_OK);
    }
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

TEST(ErrorCodes, InvalidDataTypeForAnXObjectThatIsNoName) {
    ExpectPageFails(ConvertPage("(x) Do"), -4095, "Invalid data type.");
}

TEST(ErrorCodes, InvalidDataTypeForACatalogThatIsNoDictionary) {
    for (const char* const catalog : {"5", "[1]", "(x)", "null"}) {
        const Conversion conversion = Convert(PdfBuilder().Object(1, catalog).Bytes());
        EXPECT_EQ(conversion.fileBegin, -4095) << catalog;
        EXPECT_EQ(conversion.error.code, -4095) << catalog;
        EXPECT_EQ(conversion.output, "") << catalog;
    }
}

TEST(ErrorCodes, InvalidDataTypeForAPageTreeNodeOfNoKindWhichEndsTheDocument) {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R 4 0 R 3 0 R] >>");
    pdf.Object(3, "<< /Type /Page /MediaBox [0 0 9 9] >>").Object(4, "<< /Type /Outlines >>");
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.fileBegin, 0);
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, -4095);
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(4));
}

TEST(ErrorCodes, DataNotEnoughForAStreamBeyondTheFile) {
    auto pdf = Pages({"/Contents 10 0 R"});
    const Conversion conversion = Convert(pdf.Object(10, "<< /Length 99999 >>\nstream\nn").Bytes());
    EXPECT_EQ(conversion.error.code, -4094);
    EXPECT_EQ(conversion.error.message, "Data is not enough.");
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(10));
}

TEST(ErrorCodes, OperatorNotEnough) {
    ExpectPageFails(ConvertPage("1 m"), -4093, "Operator is not enough.");
}

TEST(ErrorCodes, DecodeErrorForDamagedDataUnknownFiltersAndTooMany) {
    constexpr std::pair<const char*, const char*> kStreams[] = {
        {"v~>", "/Filter /ASCII85Decode"},
        {"no zlib data", "/Filter /FlateDecode"},
        {"no JPEG data", "/Filter /DCTDecode"},
        {"n", "/Filter /NoSuchDecode"},
        {"6E>", "/Filter [/ASCIIHexDecode /NoSuchDecode]"},
        {"n", "/Filter [/ASCIIHexDecode /ASCIIHexDecode /ASCIIHexDecode]"},
        {"n", "/Filter [5]"}};
    for (const auto& [data, filter] : kStreams) {
        ExpectPageFails(ConvertPage(data, filter), -4092, "Decode error.");
    }
}

TEST(ErrorCodes, UnknownSecurityHandlerForAnEncryptedFile) {
    for (const char* const encrypt : {"/Encrypt 9 0 R", "/Encrypt << /Filter /Other >>"}) {
        PdfBuilder pdf = OnePage("n");
        pdf.Object(9, "<< /Filter /Other >>").Section("/Root 1 0 R " + std::string(encrypt));
        const Conversion conversion = Convert(pdf.Bytes());
        EXPECT_EQ(conversion.fileBegin, -4091);
        EXPECT_EQ(conversion.error.code, -4091);
        EXPECT_EQ(conversion.error.message, "Unknown security handler.");
        EXPECT_EQ(conversion.output, "");
    }
}

TEST(ErrorCodes, MemoryNotEnoughForAStreamThatUnpacksWithoutEnd) {
    const std::string bomb = DeflatedZeros((std::size_t{256} << 20U) + 1);
    const Conversion conversion = ConvertPage(bomb, "/Filter /FlateDecode");
    ExpectPageFails(conversion, -4088, "Memory is not enough.");
}

TEST(ErrorCodes, ScanTokenErrorForTextThatIsNoToken) {
    ExpectPageFails(ConvertPage("n (open"), -4071, "Scan token error.");
}

TEST(ErrorCodes, ScanTokenErrorForAnObjectThatIsNoTokenWithTheFailingBytes) {
    PdfBuilder pdf = OnePage("n", "/Resources 10 0 R");
    const Conversion conversion =
        Convert(pdf.Object(10, "<< /A > /B 2 /C (abcdefghijklmnopqrst) >>").Bytes());
    EXPECT_EQ(conversion.error.code, -4071);
    EXPECT_EQ(conversion.error.offset, 0U);
    EXPECT_EQ(conversion.error.excerpt.size(), 32U);
}

TEST(ErrorCodes, IllegalPdfFileWithoutAnEndMarker) {
    std::string bytes = OnePage("n").Bytes();
    bytes.resize(bytes.find("%%EOF"));
    const Conversion conversion = Convert(bytes);
    EXPECT_EQ(conversion.fileBegin, -4069);
    EXPECT_EQ(conversion.error.message, "Illegal PDF file.");
}

TEST(ErrorCodes, NeverMinusOneRecordedForAHostThatAnswersIt) {
    const Job job;
    Pieces::Reset();
    Pieces::Refuse(1, -1, true);
    EXPECT_EQ(OpenFile(OnePage("n").Bytes()), -1);
    EXPECT_EQ(GetErrorInfo().code, 0);
    ZORVAN_OneFileEnd();
}

}  // namespace
}  // namespace zorvan::test
