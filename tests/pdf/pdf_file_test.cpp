// Opening files: header, trailer, identifiers, catalog, and every way to fail.
#include "pdf/pdf_file.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>

#include "pdf/describe.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

/// A whole file whose catalog and trailer hold these entries.
std::string FileWith(std::string_view catalogEntries, std::string_view trailerEntries = "") {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog " + std::string(catalogEntries) + " >>");
    return pdf.Section("/Root 1 0 R " + std::string(trailerEntries)).Bytes();
}

FileIdentifier Identifier(std::initializer_list<unsigned> bytes) {
    FileIdentifier identifier{};
    std::ranges::transform(bytes, identifier.begin(),
                           [](unsigned byte) { return static_cast<std::uint8_t>(byte); });
    return identifier;
}

constexpr std::uint64_t kFourGibibytes = std::uint64_t{1} << 32;

class OpeningAFile : public JobTest {
protected:
    /// Opens by path, as the job does.
    static Status OpenAt(const std::string& path) {
        static_cast<void>(Open(FileWith("")));
        PdfFile other(nullptr);
        return other.OpenPdfFile(path);
    }
    static void ExpectRefusal(std::string_view bytes, Status status) {
        EXPECT_EQ(Open(bytes), status);
        EXPECT_EQ(Error().Code(), status);
        EXPECT_EQ(Error().Offset(), 0U);
        EXPECT_EQ(Error().Excerpt().size(), 0U);
    }
};

// --- header ---

TEST_F(OpeningAFile, AcceptsAPdfFileAndAJobTicket) {
    EXPECT_EQ(Open(FileWith("")), Status::kOk);
    PdfBuilder ticket("%JTF-1.1");
    EXPECT_EQ(Open(ticket.Object(1, "<< /JT 2 0 R >>").Bytes()), Status::kOk);
    EXPECT_EQ(File().JobTicket(), MakeReference(2, 0));
}

TEST_F(OpeningAFile, RefusesAByteOrderMarkBeforeTheHeader) {
    ExpectRefusal("\xEF\xBB\xBF" + FileWith(""), Status::kIllegalPdfFile);
}

TEST_F(OpeningAFile, RefusesABlankBeforeTheHeader) {
    ExpectRefusal(" " + FileWith(""), Status::kIllegalPdfFile);
}

TEST_F(OpeningAFile, RefusesWhatIsNoPdfFile) {
    ExpectRefusal("%!PS-Adobe-3.0\n%%EOF\n", Status::kIllegalPdfFile);
}

TEST_F(OpeningAFile, RefusesAHeaderInLowerCase) {
    ExpectRefusal("%pdf-1.4\n%%EOF\n", Status::kIllegalPdfFile);
}

TEST_F(OpeningAFile, RefusesAnEmptyFile) {
    ExpectRefusal("", Status::kIllegalPdfFile);
}

TEST_F(OpeningAFile, RefusesAFileShorterThanItsHeader) {
    ExpectRefusal("%PDF", Status::kIllegalPdfFile);
}

TEST_F(OpeningAFile, RefusesAHeaderAlone) {
    ExpectRefusal("%PDF-", Status::kIllegalPdfFile);
}

// --- the file itself ---

TEST_F(OpeningAFile, RefusesAFileThatIsNotThere) {
    EXPECT_EQ(OpenAt("/nonexistent/file.pdf"), Status::kOpenFileError);
    EXPECT_EQ(Error().Code(), Status::kOpenFileError);
}

TEST_F(OpeningAFile, RefusesADirectory) {
    EXPECT_EQ(OpenAt(std::filesystem::temp_directory_path().string()), Status::kOpenFileError);
}

TEST_F(OpeningAFile, RefusesFourGibibytes) {
    const TemporaryFile file(FileWith(""));
    std::filesystem::resize_file(file.Path(), kFourGibibytes);  // a hole, which takes no room
    EXPECT_EQ(OpenAt(file.Path()), Status::kOpenFileError);
}

// Addresses of 32 bits have no room for such a file beside the program.
TEST_F(OpeningAFile, MapsOneByteLessWhereThereAreAddressesForIt) {
    const TemporaryFile file(FileWith(""));
    std::filesystem::resize_file(file.Path(), kFourGibibytes - 1);
    if (sizeof(void*) == 4) {
        EXPECT_EQ(OpenAt(file.Path()), Status::kOpenFileError);
        return;
    }
    MappedFile mapped;
    ASSERT_TRUE(mapped.Map(file.Path()));
    EXPECT_EQ(mapped.Bytes().size(), kFourGibibytes - 1);
}

// --- trailer ---

TEST_F(OpeningAFile, KeepsTheReferencesOfTheTrailer) {
    ASSERT_EQ(Open(FileWith("", "/Info 5 2 R")), Status::kOk);
    EXPECT_EQ(File().Trailer().root, MakeReference(1, 0));
    EXPECT_EQ(File().Trailer().info, MakeReference(5, 2));
}

TEST_F(OpeningAFile, ReadsIdentifiersAsHexadecimalDigits) {
    ASSERT_EQ(
        Open(FileWith("", "/ID [<00112233445566778899aAbBcCdDeEfF><0123456789ABCDEF0123456789abcdef>]")),
        Status::kOk);
    EXPECT_EQ(File().Trailer().identifiers[0], Identifier({0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77,
                                                           0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF}));
    EXPECT_EQ(File().Trailer().identifiers[1], Identifier({0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF,
                                                           0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}));
}

TEST_F(OpeningAFile, ReadsLiteralIdentifiersAsHexadecimalDigitsToo) {
    ASSERT_EQ(Open(FileWith("", "/ID [(12zG4) (\\)fg-0123456789)]")), Status::kOk);
    EXPECT_EQ(File().Trailer().identifiers[0], Identifier({0x12, 0x00, 0x40}));
    EXPECT_EQ(File().Trailer().identifiers[1], Identifier({0x00, 0xF0, 0x00, 0x12, 0x34, 0x56, 0x78, 0x90}));
}

TEST_F(OpeningAFile, ReadsNoMoreThan32DigitsOfAnIdentifier) {
    ASSERT_EQ(Open(FileWith("", "/ID [<" + std::string(100, 'f') + ">]")), Status::kOk);
    FileIdentifier all{};
    all.fill(0xFF);
    EXPECT_EQ(File().Trailer().identifiers[0], all);
    EXPECT_EQ(File().Trailer().identifiers[1], FileIdentifier{});
}

TEST_F(OpeningAFile, HasZeroIdentifiersWithoutUsableOnes) {
    for (const char* entry : {"", "/ID 5", "/ID []", "/ID [7 /Name]", "/ID (0123)"}) {
        ASSERT_EQ(Open(FileWith("", entry)), Status::kOk);
        EXPECT_EQ(File().Trailer().identifiers[0], FileIdentifier{}) << entry;
        EXPECT_EQ(File().Trailer().identifiers[1], FileIdentifier{}) << entry;
    }
}

TEST_F(OpeningAFile, RefusesAnEncryptedFile) {
    EXPECT_EQ(Open(FileWith("", "/Encrypt << /Filter /Unheard >>")), Status::kUnknownSecurityHandler);
    EXPECT_TRUE(File().Trailer().encrypted);
    EXPECT_EQ(Describe(File().Trailer().encrypt.Get()), "<</Filter /Unheard>>");
    EXPECT_EQ(Error().Code(), Status::kUnknownSecurityHandler);
}

// --- catalog ---

TEST_F(OpeningAFile, KeepsTheReferencesOfTheCatalog) {
    ASSERT_EQ(Open(FileWith("/Pages 7 1 R /JT 8 0 R")), Status::kOk);
    EXPECT_EQ(File().Pages(), MakeReference(7, 1));
    EXPECT_EQ(File().JobTicket(), MakeReference(8, 0));
}

TEST_F(OpeningAFile, KeepsNoDirectValueOfTheCatalog) {
    ASSERT_EQ(Open(FileWith("/Pages << >> /JT (s)")), Status::kOk);
    EXPECT_EQ(File().Pages(), MakeNull());
    EXPECT_EQ(File().JobTicket(), MakeNull());
}

TEST_F(OpeningAFile, RefusesACatalogThatIsNoDictionary) {
    PdfBuilder pdf;
    EXPECT_EQ(Open(pdf.Object(1, "[1 2]").Bytes()), Status::kInvalidDataType);
    EXPECT_EQ(Error().Code(), Status::kInvalidDataType);
    EXPECT_EQ(Error().Offset(), pdf.OffsetOf(1));
    EXPECT_EQ(TextOf(Error().Excerpt()), "1 0 obj\n[1 2]\nendobj\nxref\n1 1\n00");
}

TEST_F(OpeningAFile, RefusesATrailerWithoutAUsableCatalog) {
    for (const char* root : {"/Root 9 0 R", "/Root 1 1 R", "/Root << /Type /Catalog >>", "/Root /Name", ""}) {
        PdfBuilder pdf;
        EXPECT_EQ(Open(pdf.Object(1, "<< >>").Section(root).Bytes()), Status::kInvalidDataType) << root;
    }
}

TEST_F(OpeningAFile, ReadsACatalogOfAGenerationAboveZero) {
    PdfBuilder pdf;
    EXPECT_EQ(Open(pdf.Object(1, "<< >>", 7).Section("/Root 1 7 R").Bytes()), Status::kOk);
}

// --- password ---

TEST(PasswordCopy, TakesAtMostFortyBytes) {
    ZORVAN_PasswordRecord record{};
    std::memset(record.text, 'p', sizeof record.text);
    record.length = 4000000000U;
    const Password copy(&record);
    EXPECT_EQ(copy.length, 40U);
    EXPECT_EQ(std::string(copy.text.begin(), copy.text.end()), std::string(40, 'p'));
}

TEST(PasswordCopy, IsEmptyWithoutARecord) {
    EXPECT_EQ(Password(nullptr).length, 0U);
}

TEST(PasswordCopy, TakesNoByteBeyondTheLength) {
    ZORVAN_PasswordRecord record{};
    std::memcpy(record.text, "secret", 6);
    record.length = 3;
    const Password copy(&record);
    EXPECT_EQ(copy.length, 3U);
    EXPECT_STREQ(copy.text.data(), "sec");
}

}  // namespace
}  // namespace zorvan::test
