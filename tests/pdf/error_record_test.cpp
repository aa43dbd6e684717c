// The record of a job's first error, and the table of messages.
#include "api/error_record.h"

#include <string>
#include <vector>

#include "pdf/describe.h"
#include "support/job_fixture.h"
#include "support/language_setting.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

constexpr Status kUnlisted = static_cast<Status>(-5);

/// A file of so many bytes in which every 10 bytes say where they stand.
std::string NumberedFile(std::size_t size) {
    std::string text;
    while (text.size() < size) {
        std::string place = std::to_string(text.size());
        text += std::string(9 - place.size(), '.') + place + ' ';
    }
    return text.substr(0, size);
}

/// What a record holds after one error in such a file.
std::string ExcerptOf(std::size_t fileSize, std::uint32_t offset, std::string_view bytes) {
    const std::string file = NumberedFile(fileSize);
    ErrorRecord record;
    record.Record(Status::kDecodeError, BytesOf(file), offset, BytesOf(bytes));
    EXPECT_EQ(record.Offset(), offset);
    return TextOf(record.Excerpt());
}

// --- the excerpt ---

TEST(ErrorRecord, IsEmptyAtFirst) {
    const ErrorRecord record;
    EXPECT_EQ(record.Code(), Status::kOk);
    EXPECT_STREQ(record.Message(), "");
    EXPECT_EQ(record.Offset(), 0U);
    EXPECT_EQ(record.Excerpt().size(), 0U);
}

TEST(ErrorRecord, ShowsTheFileFromTheOffsetOn) {
    EXPECT_EQ(ExcerptOf(1010, 500, ""), NumberedFile(1010).substr(500, 32));
}

TEST(ErrorRecord, ShowsTheLastTenBytesForAnObjectAtTen) {
    EXPECT_EQ(ExcerptOf(1010, 1000, ""), NumberedFile(1010).substr(1000));
}

TEST(ErrorRecord, ShowsNothingWithoutAnOffsetAndBytes) {
    EXPECT_EQ(ExcerptOf(1010, 0, ""), "");
}

TEST(ErrorRecord, ShowsNothingForAnOffsetBeyondTheFile) {
    EXPECT_EQ(ExcerptOf(1010, 1010, ""), "");
    EXPECT_EQ(ExcerptOf(1010, 0xFFFFFFFF, ""), "");
}

TEST(ErrorRecord, ShowsUpTo32BytesOfTheFailingData) {
    EXPECT_EQ(ExcerptOf(1010, 0, "data"), "data");
    EXPECT_EQ(ExcerptOf(1010, 0, std::string(100, 'd')), std::string(32, 'd'));
}

TEST(ErrorRecord, ShowsTheStartOfTheFileBeforeTheFailingDataOfAnObject) {
    EXPECT_EQ(ExcerptOf(1010, 500, "data"), NumberedFile(1010).substr(0, 32) + "\n...\ndata");
}

TEST(ErrorRecord, ShowsAsMuchOfTheStartAsStandsBehindTheOffset) {
    EXPECT_EQ(ExcerptOf(1010, 1000, "data"), NumberedFile(1010).substr(0, 10) + "\n...\ndata");
}

TEST(ErrorRecord, FillsAShortExcerptUpTo32Bytes) {
    EXPECT_EQ(ExcerptOf(1010, 1000, std::string(100, 'd')),
              NumberedFile(1010).substr(0, 10) + "\n...\n" + std::string(17, 'd'));
}

TEST(ErrorRecord, HasRoomForALongStartAndAsMuchFailingData) {
    const std::string excerpt = ExcerptOf(1010, 500, std::string(100, 'd'));
    EXPECT_EQ(excerpt, NumberedFile(1010).substr(0, 32) + "\n...\n" + std::string(32, 'd'));
    EXPECT_EQ(excerpt.size(), 69U);
}

TEST(ErrorRecord, ShowsTheFailingDataAloneForAnOffsetBeyondTheFile) {
    EXPECT_EQ(ExcerptOf(1010, 2000, "data"), "data");
}

TEST(ErrorRecord, ShowsNothingWithoutAFile) {
    ErrorRecord record;
    record.Record(Status::kDecodeError, {}, 500, BytesOf("data"));
    EXPECT_EQ(record.Code(), Status::kDecodeError);
    EXPECT_STREQ(record.Message(), "Decode error.");
    EXPECT_EQ(record.Offset(), 0U);
    EXPECT_EQ(record.Excerpt().size(), 0U);
}

// --- the first error ---

TEST(ErrorRecord, KeepsTheFirstOfTwoErrors) {
    const std::string file = NumberedFile(100);
    ErrorRecord record;
    record.Record(Status::kIllegalFont, BytesOf(file), 10, {});
    record.Record(Status::kDecodeError, BytesOf(file), 20, BytesOf("data"));
    EXPECT_EQ(record.Code(), Status::kIllegalFont);
    EXPECT_STREQ(record.Message(), "Illegal Font.");
    EXPECT_EQ(record.Offset(), 10U);
    EXPECT_EQ(TextOf(record.Excerpt()), file.substr(10, 32));
}

TEST(ErrorRecord, TakesSuccessForNoError) {
    ErrorRecord record;
    record.Record(Status::kOk, BytesOf("file"), 1, BytesOf("data"));
    EXPECT_EQ(record.Excerpt().size(), 0U);
    EXPECT_STREQ(record.Message(), "");
    record.Record(Status::kIllegalFont, {}, 0, {});
    EXPECT_EQ(record.Code(), Status::kIllegalFont);
}

// --- the job's record ---

class ErrorsOfAJob : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        pdf.Object(1, "<< >>").Object(7, "(an object)").Object(8, "(another)", 2);
        ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
    }
    PdfBuilder pdf;
};

TEST_F(ErrorsOfAJob, TellTheOffsetOfTheObject) {
    EXPECT_EQ(Fail(Status::kIllegalFont, MakeReference(8, 2)), Status::kIllegalFont);
    EXPECT_EQ(Error().Offset(), pdf.OffsetOf(8, 2));
    EXPECT_TRUE(TextOf(Error().Excerpt()).starts_with("8 2 obj\n(another)\n"));
}

TEST_F(ErrorsOfAJob, TellNoOffsetForAnObjectThatIsNotInTheTable) {
    static_cast<void>(Fail(Status::kIllegalFont, MakeReference(5, 0)));
    EXPECT_EQ(Error().Offset(), 0U);
    EXPECT_EQ(Error().Excerpt().size(), 0U);
}

TEST_F(ErrorsOfAJob, TellNoOffsetForADirectValue) {
    constexpr std::uint32_t kLikelyHandles = 100;
    for (std::uint32_t number = 1; number <= kLikelyHandles; ++number) {
        pdf.Object(number, "null", static_cast<std::uint16_t>(ObjectType::kArray));
    }
    ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
    const PdfObject direct = NewArray(1);
    ASSERT_NE(File().Xref().Lookup(direct.payload, direct.type), 0U) << "an object is in the way";
    static_cast<void>(Fail(Status::kIllegalFont, direct));
    EXPECT_EQ(Error().Offset(), 0U);
}

TEST_F(ErrorsOfAJob, StayAcrossFiles) {
    static_cast<void>(Fail(Status::kIllegalFont, MakeReference(7, 0)));
    CurrentJob()->CloseFile();
    EXPECT_EQ(Open("no PDF"), Status::kIllegalPdfFile);
    EXPECT_EQ(Error().Code(), Status::kIllegalFont);
    EXPECT_EQ(Error().Offset(), pdf.OffsetOf(7));
}

TEST_F(ErrorsOfAJob, ShowNothingBetweenFiles) {
    CurrentJob()->CloseFile();
    static_cast<void>(Fail(Status::kIllegalFont, MakeReference(7, 0), BytesOf("data")));
    EXPECT_EQ(Error().Code(), Status::kIllegalFont);
    EXPECT_EQ(Error().Offset(), 0U);
    EXPECT_EQ(Error().Excerpt().size(), 0U);
}

TEST_F(ErrorsOfAJob, AreNotRecordedWhileTheHostRefusesOutput) {
    Pieces::Refuse(1, 7, true);
    EXPECT_EQ(ToNumber(CurrentJob()->file->output.Write("piece")), 7);
    static_cast<void>(Fail(Status::kDecodeError));
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST(ErrorsWithoutAJob, AreHandedBackAndNotRecorded) {
    EXPECT_EQ(Fail(Status::kDecodeError, MakeReference(1, 0)), Status::kDecodeError);
}

TEST(ErrorsOfAHost, ShowNothingOfWhatIsNoPdfFile) {
    const Conversion conversion = Convert("just text");
    EXPECT_EQ(conversion.fileBegin, -4069);
    EXPECT_EQ(conversion.error.code, -4069);
    EXPECT_EQ(conversion.error.message, "Illegal PDF file.");
    EXPECT_EQ(conversion.error.offset, 0U);
    EXPECT_EQ(conversion.error.excerpt, "");
}

// --- the table ---

struct Row {
    int code;
    int identifier;
    const char* english;
    const char* chinese;
};

constexpr Row kRows[] = {
#define ZORVAN_ERROR(code, name, messageId, english, chinese) {code, messageId, english, chinese},
#include "api/error_table.inc"
#undef ZORVAN_ERROR
};

TEST(MessageTable, NumbersCodesWithoutAGapAndIdentifiersWithoutFour) {
    int code = -4095;
    int identifier = 2;
    for (const Row& row : kRows) {
        EXPECT_EQ(row.code, code++);
        EXPECT_EQ(row.identifier, identifier++);
        identifier += identifier == 4 ? 1 : 0;
    }
    EXPECT_EQ(code, -4067);
    EXPECT_EQ(identifier, 31);
}

TEST(MessageTable, HasATextOfItsOwnForEveryCodeInBothLanguages) {
    for (const Row& row : kRows) {
        const auto code = static_cast<Status>(row.code);
        const LanguageSetting english("C");
        EXPECT_STREQ(MessageText(code), row.english);
        EXPECT_STRNE(MessageText(code), MessageText(kUnlisted));
        const LanguageSetting chinese("zh_CN.UTF-8");
        EXPECT_STREQ(MessageText(code), row.chinese);
        EXPECT_STRNE(MessageText(code), MessageText(kUnlisted));
        EXPECT_STRNE(row.english, row.chinese);
    }
}

TEST(MessageTable, SaysToTheByteWhatHostsMayCompareWith) {
    const LanguageSetting english("en_US.UTF-8");
    const char* const texts[] = {
        "Invalid data type.",
        "Data is not enough.",
        "Operator is not enough.",
        "Decode error.",
        "Unknown security handler.",
        "Invalid file access.",
        "Fail load DLL.",
        "Memory is not enough.",
        "Application error.",
        "Open file error.",
        "Can not output ps.",
        "Illegal Font.",
        "Illegal colorspace.",
        "Illegal ExtGState.",
        "Illegal XObject.",
        "Illegal Pattern.",
        "Illegal Shading.",
        "Illegal Function.",
        "Illegal Encoding.",
        "Illegal Halftone.",
        "Unregistered resources.",
        "Unsupported Type3 Image.",
        "Undefined colorspace.",
        "Lose required entry.",
        "Scan token error.",
        "Illegal cmap.",
        "Illegal PDF file.",
        "Invalid file access. Check your password, please.",
    };
    int code = -4095;
    for (const char* text : texts) {
        EXPECT_STREQ(MessageText(static_cast<Status>(code++)), text);
    }
    EXPECT_EQ(code, -4067);
}

TEST(MessageTable, CallsAnyOtherCodeUnknown) {
    const LanguageSetting english("C");
    for (const int code : {-5, -1, 1, -4096, -4067, 2147483647}) {
        EXPECT_STREQ(MessageText(static_cast<Status>(code)), "Unknown error.");
    }
    const LanguageSetting chinese("zh_CN");
    EXPECT_STREQ(MessageText(kUnlisted), "未知错误。");
}

TEST(MessageTable, SpeaksOfTheUsersPasswordInChineseAlone) {
    const LanguageSetting english("C");
    EXPECT_STREQ(MessageText(Status::kInvalidFileAccess), "Invalid file access.");
    const LanguageSetting chinese("zh_CN.UTF-8");
    EXPECT_STREQ(MessageText(Status::kInvalidFileAccess), "用户口令错误。");
}

TEST(MessageTable, GivesTheRecordItsTextInTheUsersLanguage) {
    const LanguageSetting chinese("zh_CN.UTF-8");
    ErrorRecord record;
    record.Record(kUnlisted, {}, 0, {});
    EXPECT_EQ(record.Code(), kUnlisted);
    EXPECT_STREQ(record.Message(), "未知错误。");
}

}  // namespace
}  // namespace zorvan::test
