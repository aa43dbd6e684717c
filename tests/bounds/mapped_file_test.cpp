// Files that fill their last page: what stands at their very end is read, and nothing behind it.
#include <array>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "bounds/guarded_mapping.h"
#include "bounds/seeds.h"
#include "fuzz/memory_file.h"
#include "pdf/describe.h"
#include "pdf/object_parser.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

constexpr std::size_t kPage = 4096;

/// The text with blanks behind it, and the tail at the end of a page.
std::string EndingIn(std::string_view text, std::string_view tail) {
    const std::size_t pages = (text.size() + tail.size() + kPage) / kPage;
    std::string file(text);
    file.resize(pages * kPage - tail.size(), ' ');
    return file += tail;
}

class MappedFileEnd : public JobTest {
protected:
    /// Opens a file that need not reach a disk: there are too many for one.
    static Status OpenInMemory(std::string_view bytes) {
        static const fuzz::MemoryFile file;
        CurrentJob()->CloseFile();
        file.Write(BytesOf(bytes));
        return OpenPath(file.Path());
    }
    /// What the parser makes of an object at the very end of a sound file.
    static std::string Parsed(std::string_view tail) {
        const std::string file = EndingIn(OnePage("n").Bytes(), tail);
        static_cast<void>(OpenInMemory(file));  // the tail may hold an end marker, too
        EXPECT_EQ(File().Bytes().size() % kPage, 0U);
        return Describe(
            OwnedObject(ParseObjectAt(File(), static_cast<std::uint32_t>(file.size() - tail.size()))).Get());
    }

    void SetUp() override {
        JobTest::SetUp();
        before_ = GuardedMappings();
    }
    void TearDown() override {
        EXPECT_GT(GuardedMappings(), before_);
        JobTest::TearDown();
    }

private:
    std::size_t before_ = 0;
};

using MappedFileEndDeathTest = MappedFileEnd;

TEST_F(MappedFileEndDeathTest, EndsAProgramThatReadsBehindIt) {
    ASSERT_EQ(OpenInMemory(EndingIn(OnePage("n").Bytes(), "end")), Status::kOk);
    const auto file = File().Bytes();
    const volatile std::uint8_t* const bytes = file.data();
    EXPECT_EQ(bytes[file.size() - 1], 'd');
    EXPECT_DEATH(static_cast<void>(bytes[file.size()]), "");
}

TEST_F(MappedFileEnd, BoundsEachKindOfToken) {
    // The last byte of the input stays in a hexadecimal string, whatever it is.
    const std::pair<const char*, const char*> tokens[] = {
        {"12", "12"},       {"-0.5", "-0.5r"},        {"/Name", "/Name"},   {"(text)", "(text)"},
        {"<41>", "<41>>"},  {"true", "true"},         {"null", "null"},     {"7 0 R", "7 0 R"},
        {"[1 2]", "[1 2]"}, {"<</A 1>>", "<</A 1>>"}, {"1 % comment", "1"}, {"1 0 obj 5", "5"},
    };
    for (const auto& [tail, value] : tokens) {
        EXPECT_EQ(Parsed(tail), value) << tail;
    }
}

TEST_F(MappedFileEnd, BoundsObjectsThatAreCutAnywhere) {
    EXPECT_GT(ForEachPrefix("pdf_object", [](std::string_view prefix) { Parsed(prefix); }), 0);
    EXPECT_GT(ForEachPrefix("pdf_lexer", [](std::string_view prefix) { Parsed(prefix); }), 0);
}

TEST_F(MappedFileEnd, BoundsCrossReferenceSectionsThatAreCutAnywhere) {
    const auto open = [](std::string_view section) {
        const std::string offset = std::to_string(kPage - section.size());
        const Status status = OpenInMemory(EndingIn("%PDF-1.4\nstartxref\n" + offset + "\n%%EOF\n", section));
        EXPECT_NE(status, Status::kIllegalPdfFile);
    };
    EXPECT_GT(ForEachPrefix("pdf_xref", open), 0);
}

TEST_F(MappedFileEnd, BoundsTheSearchForTheEndMarker) {
    constexpr std::string_view kMarker = "%%EOF";
    for (std::size_t length = 0; length <= kMarker.size(); ++length) {
        const Status status = OpenInMemory(EndingIn("%PDF-1.4\n", kMarker.substr(0, length)));
        EXPECT_EQ(status, length == kMarker.size() ? Status::kInvalidDataType : Status::kIllegalPdfFile);
    }
}

/// Its content is the last object, whose offset is that of the tail.
std::string WithContent(std::string_view tail) {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R] >>");
    pdf.Object(3, "<< /Type /Page /MediaBox [0 0 9 9] /Contents 4 0 R >>").Object(4, "null");
    const std::string place = std::to_string(10000000000 + kPage - tail.size()).substr(1);
    std::string head = pdf.Bytes();
    const std::string entry = std::to_string(10000000000 + pdf.OffsetOf(4)).substr(1);
    return EndingIn(head.replace(head.find(entry), entry.size(), place), tail);
}

TEST_F(MappedFileEnd, BoundsContentsThatAreCutAnywhere) {
    DestroyJob();
    const std::string start = "4 0 obj << /Length 9999 /Filter ";
    for (const std::string filter :
         {"[]", "/FlateDecode", "/LZWDecode", "/ASCII85Decode", "/CCITTFaxDecode"}) {
        for (const std::string_view data : {"", "q", "(", "1 0 0 rg /Na", "BI /W 9 ID ab", "z~", "<~"}) {
            const std::string tail = start + filter + " >>\nstream\n" + std::string(data);
            const Conversion conversion = Convert(WithContent(tail));
            EXPECT_EQ(conversion.fileBegin, 0);
            EXPECT_EQ(conversion.pages.size(), 1U) << tail;
        }
    }
    ASSERT_TRUE(CreateJob());
}

}  // namespace
}  // namespace zorvan::test
