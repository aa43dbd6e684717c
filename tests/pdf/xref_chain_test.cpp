// Cross-reference sections as files have them, and as they should not.
#include <cinttypes>
#include <cstdio>
#include <string>
#include <string_view>

#include "pdf/xref_table.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

std::string Entry(std::uint64_t offset, unsigned generation = 0, char kind = 'n') {
    char text[32];
    std::snprintf(text, sizeof text, "%010" PRIu64 " %05u %c \n", offset, generation, kind);
    return text;
}

std::string EndOfFile(std::size_t section) {
    return "startxref\n" + std::to_string(section) + "\n%%EOF\n";
}

constexpr std::string_view kTrailer = "trailer\n<< /Size 20 /Root 1 0 R >>\n";
constexpr std::size_t kCatalog = 9;  // where the catalog stands in kStart

/// A file with a catalog and text of the test's own behind it.
class HandMadeFile {
public:
    [[nodiscard]] std::size_t Size() const { return text_.size(); }
    HandMadeFile& Add(std::string_view text) {
        text_ += text;
        return *this;
    }
    /// Adds a section; `trailer` with its keyword. Its place becomes the newest.
    HandMadeFile& AddSection(std::string_view subsections, std::string_view trailer = kTrailer) {
        newest_ = Size();
        return Add("xref\n").Add(subsections).Add(trailer);
    }
    [[nodiscard]] std::size_t Newest() const { return newest_; }
    [[nodiscard]] std::string Bytes() const { return text_ + EndOfFile(newest_); }

private:
    std::string text_ = "%PDF-1.4\n1 0 obj\n<< /Type /Catalog >>\nendobj\n";
    std::size_t newest_ = 0;
};

const std::string kCatalogEntry = "1 1\n" + Entry(kCatalog);

std::string TrailerWithPrev(std::size_t previous) {
    return "trailer\n<< /Size 20 /Root 1 0 R /Prev " + std::to_string(previous) + " >>\n";
}

class XrefChain : public JobTest {
protected:
    static std::uint32_t OffsetIn(std::string_view file, std::uint32_t number, std::uint16_t generation = 0) {
        EXPECT_EQ(Open(file), Status::kOk);
        return File().Xref().Lookup(number, generation);
    }
    static std::uint32_t OffsetOf(std::uint32_t number, std::uint16_t generation = 0) {
        return File().Xref().Lookup(number, generation);
    }
};

// --- the chain ---

TEST_F(XrefChain, GivesARedefinedObjectItsNewestOffset) {
    PdfBuilder pdf;
    pdf.Object(1, "<< >>").Object(5, "(old)").Object(6, "(only here)").Section();
    const std::size_t old = pdf.OffsetOf(5);
    pdf.Object(5, "(new)").Section();
    ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
    EXPECT_NE(pdf.OffsetOf(5), old);
    EXPECT_EQ(OffsetOf(5), pdf.OffsetOf(5));
    EXPECT_EQ(OffsetOf(6), pdf.OffsetOf(6));
}

TEST_F(XrefChain, FollowsManySections) {
    PdfBuilder pdf;
    for (unsigned number = 1; number <= 300; ++number) {
        pdf.Object(number, "<< >>").Section();
    }
    ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
    EXPECT_EQ(OffsetOf(1), pdf.OffsetOf(1));
    EXPECT_EQ(OffsetOf(150), pdf.OffsetOf(150));
    EXPECT_EQ(OffsetOf(300), pdf.OffsetOf(300));
}

TEST_F(XrefChain, FindsAGenerationAboveZeroUnderItAlone) {
    PdfBuilder pdf;
    pdf.Object(1, "<< >>").Object(5, "(s)", 1).Object(6, "(s)", 65535);
    ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
    EXPECT_EQ(OffsetOf(5, 1), pdf.OffsetOf(5, 1));
    EXPECT_EQ(OffsetOf(5, 0), XrefTable::kNoOffset);
    EXPECT_EQ(OffsetOf(6, 65535), pdf.OffsetOf(6, 65535));
}

TEST_F(XrefChain, KeepsSixteenBitsOfAGeneration) {
    HandMadeFile file;
    file.AddSection("1 2\n" + Entry(kCatalog) + Entry(15, 65537));
    EXPECT_EQ(OffsetIn(file.Bytes(), 2, 1), 15U);
}

TEST_F(XrefChain, LooksEveryObjectUpByHashWithoutASize) {
    PdfBuilder pdf;
    pdf.Object(1, "<< >>");
    std::string bytes = pdf.Bytes();
    bytes.replace(bytes.find("/Size 2"), 7, "/Sise 2");
    ASSERT_EQ(Open(bytes), Status::kOk);
    EXPECT_EQ(OffsetOf(1), pdf.OffsetOf(1));
    EXPECT_EQ(OffsetOf(2), 0U);
}

TEST_F(XrefChain, FindsObjectsAboveTheSizeToo) {
    HandMadeFile file;
    file.AddSection("1 3\n" + Entry(kCatalog) + Entry(20) + Entry(21),
                    "trailer\n<< /Size 2 /Root 1 0 R >>\n");
    EXPECT_EQ(OffsetIn(file.Bytes(), 3), 21U);
}

TEST_F(XrefChain, SkipsFreeEntries) {
    HandMadeFile file;
    file.AddSection("0 3\n" + Entry(0, 65535, 'f') + Entry(kCatalog) + Entry(20, 0, 'f'));
    ASSERT_EQ(Open(file.Bytes()), Status::kOk);
    EXPECT_EQ(OffsetOf(0, 65535), 0U);
    EXPECT_EQ(OffsetOf(2), XrefTable::kNoOffset);
}

TEST_F(XrefChain, ReadsSeveralSubsectionsWithCommentsBetween) {
    HandMadeFile file;
    file.AddSection(kCatalogEntry + "% a comment\r% 7 1\n 5 2 \n" + Entry(20) + Entry(21) + "9 0\n12 1 " +
                    Entry(22) + "\n\n% last\n");
    ASSERT_EQ(Open(file.Bytes()), Status::kOk);
    EXPECT_EQ(OffsetOf(5), 20U);
    EXPECT_EQ(OffsetOf(6), 21U);
    EXPECT_EQ(OffsetOf(12), 22U);
    EXPECT_EQ(OffsetOf(7), XrefTable::kNoOffset);
}

TEST_F(XrefChain, TakesEveryByteUpToABlankForABlank) {
    HandMadeFile file;
    file.Add("\x01\v").AddSection(
        "\x02\v1\x1F"
        "1\f" +
        Entry(kCatalog));
    EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog);
}

TEST_F(XrefChain, AcceptsBlanksBeforeTheSectionAtAPreviousOffset) {
    HandMadeFile file;
    const std::size_t blanks = file.Size();
    file.Add(" \r\n\t ").AddSection(kCatalogEntry).AddSection("", TrailerWithPrev(blanks));
    EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog);
}

TEST_F(XrefChain, IgnoresASectionThatDoesNotBeginWithItsKeyword) {
    HandMadeFile file;
    file.AddSection(kCatalogEntry);
    const std::size_t whole = file.Newest();
    const std::size_t broken = file.Size();
    file.Add("xerf\n2 1\n" + Entry(20)).Add(TrailerWithPrev(whole)).Add(EndOfFile(broken));
    // Its trailer counts all the same: it is searched for.
    ASSERT_EQ(Open(file.Bytes().substr(0, file.Size())), Status::kOk);
    EXPECT_EQ(OffsetOf(1), kCatalog);
    EXPECT_EQ(OffsetOf(2), XrefTable::kNoOffset);
}

TEST_F(XrefChain, StopsWithWhatItHasAtAnOlderSectionWithoutItsKeyword) {
    HandMadeFile file;
    file.AddSection("2 1\n" + Entry(20));
    const std::size_t oldest = file.Newest();
    const std::size_t broken = file.Size();
    file.Add("(no section)\n")
        .Add(TrailerWithPrev(oldest))
        .AddSection(kCatalogEntry, TrailerWithPrev(broken));
    ASSERT_EQ(Open(file.Bytes()), Status::kOk);
    EXPECT_EQ(OffsetOf(1), kCatalog);
    EXPECT_EQ(OffsetOf(2), XrefTable::kNoOffset);
}

TEST_F(XrefChain, EndsALoopOfPreviousSections) {
    for (const std::string_view target : {"itself", "each other"}) {
        HandMadeFile file;
        file.Add(std::string(100, '\n'));  // so that both places have three digits
        const std::size_t first = file.Size();
        const std::size_t second = first + 5 + kCatalogEntry.size() + TrailerWithPrev(first).size();
        const bool itself = target == "itself";
        file.AddSection(kCatalogEntry, TrailerWithPrev(itself ? first : second));
        ASSERT_EQ(file.Size(), second) << "the place of the second section as foreseen";
        if (!itself) {
            file.AddSection("2 1\n" + Entry(20), TrailerWithPrev(first));
        }
        EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog) << target;
    }
}

TEST_F(XrefChain, StopsAtAPreviousOffsetThatLeadsNowhere) {
    for (const char* previous :
         {"0", "-5", "99999999", "4294967296", "4294967295", "/Name", "(s)", "[1]", "1 0 R"}) {
        HandMadeFile file;
        file.AddSection(kCatalogEntry,
                        "trailer\n<< /Size 20 /Root 1 0 R /Prev " + std::string(previous) + " >>\n");
        EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog) << previous;
    }
}

TEST_F(XrefChain, ReadsTheSectionsWhenTheTrailerIsNoDictionary) {
    HandMadeFile file;
    file.AddSection(kCatalogEntry, "trailer\n[1 2]\n");
    EXPECT_EQ(Open(file.Bytes()), Status::kInvalidDataType);
    EXPECT_EQ(OffsetOf(1), kCatalog);
    EXPECT_EQ(OffsetOf(2), 0U) << "there is no direct part";
}

TEST_F(XrefChain, TakesNothingButPrevFromOlderTrailers) {
    HandMadeFile file;
    file.AddSection("2 1\n" + Entry(20), "trailer\n<< /Size 99 /Root 2 0 R /Info 2 0 R /Encrypt << >> >>\n");
    file.AddSection(kCatalogEntry, TrailerWithPrev(file.Newest()));
    ASSERT_EQ(Open(file.Bytes()), Status::kOk);
    EXPECT_EQ(File().Trailer().root, MakeReference(1, 0));
    EXPECT_EQ(File().Trailer().info, MakeNull());
    EXPECT_EQ(OffsetOf(50), 0U);
}

// --- finding the newest section ---

TEST_F(XrefChain, FindsTheLastEndMarkerWhateverFollowsIt) {
    const std::string tails[] = {"", "\n\n  \r\n", "garbage %%EO", std::string(4, '\0'), "FFFFFFFFFF %%E OF"};
    for (const std::string& tail : tails) {
        HandMadeFile file;
        file.AddSection(kCatalogEntry);
        EXPECT_EQ(OffsetIn(file.Bytes() + tail, 1), kCatalog) << tail;
    }
}

TEST_F(XrefChain, FindsAnEndMarkerBeforeMegabytesOfGarbage) {
    HandMadeFile file;
    file.AddSection(kCatalogEntry);
    EXPECT_EQ(OffsetIn(file.Bytes() + std::string(3000000, 'F'), 1), kCatalog);
}

TEST_F(XrefChain, ReadsTheOffsetRightBeforeTheEndMarkerWithoutItsKeyword) {
    HandMadeFile file;
    file.AddSection(kCatalogEntry);
    const std::string offset = std::to_string(file.Newest());
    for (const std::string& end : {"startle " + offset + "%%EOF", "startxref /x" + offset + "\x01\t\n %%EOF",
                                   "startxref\n00000000000000000000" + offset + " %%EOF"}) {
        HandMadeFile other;
        other.AddSection(kCatalogEntry).Add(end);
        EXPECT_EQ(OffsetIn(other.Bytes().substr(0, other.Size()), 1), kCatalog) << end;
    }
}

TEST_F(XrefChain, RefusesAFileWithoutAnEndMarker) {
    HandMadeFile file;
    file.AddSection(kCatalogEntry);
    std::string bytes = file.Bytes();
    bytes.replace(bytes.find("%%EOF"), 5, "%%EOG");
    EXPECT_EQ(Open(bytes), Status::kIllegalPdfFile);
    EXPECT_EQ(Error().Code(), Status::kIllegalPdfFile);
    EXPECT_EQ(Error().Offset(), 0U);
    EXPECT_EQ(Error().Excerpt().size(), 0U);
}

TEST_F(XrefChain, HasNoCatalogWhenTheNewestOffsetLeadsNowhere) {
    for (const char* offset : {"", "0", "123456789", "4294967296", "99999999999999999999999999999999"}) {
        HandMadeFile file;
        file.AddSection(kCatalogEntry).Add("startxref\n").Add(offset).Add("\n%%EOF\n");
        const std::string bytes = file.Bytes().substr(0, file.Size());
        // From the start of the file the trailer is found, but no section is there.
        EXPECT_EQ(Open(bytes), Status::kInvalidDataType) << offset;
    }
}

// --- hostile numbers ---

TEST_F(XrefChain, TakesASizeOfFourBillionForANumber) {
    for (const char* size : {"4294967295", "4000000000", "2147483647", "-1", "-2147483648"}) {
        HandMadeFile file;
        file.AddSection(kCatalogEntry, "trailer\n<< /Root 1 0 R /Size " + std::string(size) + " >>\n");
        EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog) << size;
        EXPECT_EQ(OffsetOf(2), XrefTable::kNoOffset) << size;
        EXPECT_EQ(OffsetOf(2000000000), XrefTable::kNoOffset) << size;
    }
}

TEST_F(XrefChain, TakesASizeThatIsNoIntegerForNone) {
    for (const char* size : {"/Name", "(s)", "1.5", "1 0 R", "<< >>"}) {
        HandMadeFile file;
        file.AddSection(kCatalogEntry, "trailer\n<< /Root 1 0 R /Size " + std::string(size) + " >>\n");
        EXPECT_EQ(OffsetIn(file.Bytes(), 2), 0U) << size;
        EXPECT_EQ(OffsetOf(1), kCatalog) << size;
    }
}

TEST_F(XrefChain, KeepsObjectZeroInUseApartFromAllOthers) {
    HandMadeFile file;
    file.AddSection("0 2\n" + Entry(20) + Entry(kCatalog));
    EXPECT_EQ(OffsetIn(file.Bytes(), 0), 20U);
    EXPECT_EQ(OffsetOf(1), kCatalog);
    EXPECT_EQ(OffsetOf(2), XrefTable::kNoOffset);
}

TEST_F(XrefChain, DropsObjectNumbersBeyond32Bits) {
    HandMadeFile file;
    file.AddSection(kCatalogEntry + "4294967295 3\n" + Entry(20) + Entry(21) + Entry(22));
    EXPECT_EQ(OffsetIn(file.Bytes(), 0xFFFFFFFF), 20U);
    EXPECT_EQ(OffsetOf(0), 0U);
    EXPECT_EQ(OffsetOf(1), kCatalog);
}

TEST_F(XrefChain, DropsObjectNumbersThatWouldWrapIn64Bits) {
    for (const char* first : {"18446744073709551615", "18446744073709551614", "99999999999999999999999999"}) {
        HandMadeFile file;
        file.AddSection(std::string(first) + " 4\n" + Entry(20) + Entry(21) + Entry(22) + Entry(23) +
                        kCatalogEntry);
        EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog) << first;
        EXPECT_EQ(OffsetOf(0), 0U) << first;
        EXPECT_EQ(OffsetOf(2), XrefTable::kNoOffset) << first;
    }
}

TEST_F(XrefChain, ReadsNoMoreEntriesThanTheFileHolds) {
    for (const char* count : {"4294967295", "4294967297", "18446744073709551615", "99999999999999999999"}) {
        HandMadeFile file;
        file.AddSection("1 " + std::string(count) + "\n" + Entry(kCatalog) + Entry(20));
        EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog) << count;
        EXPECT_EQ(OffsetOf(2), 20U) << count;
    }
}

TEST_F(XrefChain, ReadsNoEntryThatTheEndOfTheFileCutsShort) {
    constexpr std::size_t kPrevious = 1000;
    HandMadeFile file;
    file.AddSection(kCatalogEntry, TrailerWithPrev(kPrevious));
    std::string bytes = file.Bytes();
    ASSERT_LT(bytes.size(), kPrevious);
    bytes.resize(kPrevious, '\n');
    bytes += "xref\n2 2\n" + Entry(20) + Entry(21).substr(0, 19);
    EXPECT_EQ(OffsetIn(bytes, 2), 20U);
    EXPECT_EQ(OffsetOf(3), XrefTable::kNoOffset);
}

TEST_F(XrefChain, TakesACountBelowOneForNoEntries) {
    HandMadeFile file;
    file.AddSection("5 -3\n5 0\n5 x\n" + kCatalogEntry);
    EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog);
    EXPECT_EQ(OffsetOf(5), XrefTable::kNoOffset);
}

TEST_F(XrefChain, TakesAnOffsetBeyondTheFileForNoneThatStillHidesAnOlderOne) {
    HandMadeFile file;
    file.AddSection(kCatalogEntry + "2 2\n" + Entry(20) + Entry(21));
    file.AddSection("2 2\n" + Entry(9999999999) + Entry(4294967295), TrailerWithPrev(file.Newest()));
    EXPECT_EQ(OffsetIn(file.Bytes(), 2), 0U);
    EXPECT_EQ(OffsetOf(3), 0U);
    EXPECT_EQ(OffsetOf(1), kCatalog);
}

TEST_F(XrefChain, GetsThroughASectionOfGarbage) {
    HandMadeFile file;
    file.AddSection(std::string(100, 'x') + " \xFF\x80 <<>> ((( %%%\r" + std::string(500, '-') + "\n");
    EXPECT_EQ(Open(file.Bytes()), Status::kInvalidDataType);
}

/// Padded with blanks to the size of an entry or three.
std::string Padded(std::string text, std::size_t size) {
    text.resize(size, ' ');
    return text;
}

TEST_F(XrefChain, GetsThroughSectionsThatShareTheirEntries) {
    // Each of these sections begins with all the later ones, goes on with the same entries and ends with a
    // trailer of its own: read in full, they would take hours.
    constexpr std::size_t kSections = 60000;
    constexpr std::size_t kEntries = 100000;
    HandMadeFile file;
    const std::size_t start = file.Size();
    for (std::size_t i = 0; i < kSections; ++i) {
        file.Add(Padded("xref\n1 " + std::to_string(kSections + kEntries + 2 * i - 1), 20));
    }
    for (std::size_t i = 0; i < kEntries; ++i) {
        file.Add(Entry(20));
    }
    for (std::size_t i = 0; i < kSections; ++i) {
        file.Add(Padded("trailer<</Prev " + std::to_string(start + 20 * (i + 1)) + ">>startxref", 60));
    }
    file.Add("\n").AddSection(kCatalogEntry, TrailerWithPrev(start));
    EXPECT_EQ(OffsetIn(file.Bytes(), 1), kCatalog);
    EXPECT_EQ(OffsetOf(kSections + 1), 20U) << "the first of them is read";
}

}  // namespace
}  // namespace zorvan::test
