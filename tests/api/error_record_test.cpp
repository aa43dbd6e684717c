// The error table in both languages, and what is recorded of an error.
#include "api/error_record.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/job_fixture.h"
#include "support/language_setting.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

struct Row {
    int code;
    int messageId;
    const char* english;
    const char* chinese;
};

constexpr Row kTable[] = {
#define ZORVAN_ERROR(code, name, messageId, english, chinese) {code, messageId, english, chinese},
#include "api/error_table.inc"
#undef ZORVAN_ERROR
};

constexpr const char* kEnglish[] = {"Invalid data type.",
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
                                    "Invalid file access. Check your password, please."};

std::span<const std::uint8_t> AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string ExcerptOf(const ErrorRecord& record) {
    return {record.Excerpt().begin(), record.Excerpt().end()};
}

/// 1010 bytes that are all different from their neighbours.
std::string SampleFile() {
    std::string file = "%PDF-1.4 ";
    while (file.size() < 1010) {
        file += static_cast<char>('a' + file.size() % 23);
    }
    return file;
}

std::string Excerpt(std::uint32_t offset, std::string_view bytes) {
    const std::string file = SampleFile();
    ErrorRecord record;
    record.Record(Status::kDecodeError, AsBytes(file), offset, AsBytes(bytes));
    return ExcerptOf(record);
}

TEST(ErrorTable, RunsWithoutAGapFrom4095To4068AndLeavesMessage4Out) {
    ASSERT_EQ(std::size(kTable), 28U);
    for (int row = 0; row < 28; ++row) {
        EXPECT_EQ(kTable[row].code, -4095 + row);
        EXPECT_EQ(kTable[row].messageId, row < 2 ? row + 2 : row + 3);
        EXPECT_STREQ(kTable[row].english, kEnglish[row]);
    }
}

TEST(ErrorTable, HasEveryMessageInBothLanguages) {
    for (const Row& row : kTable) {
        const auto code = static_cast<Status>(row.code);
        EXPECT_STREQ((LanguageSetting("en_US.UTF-8"), MessageText(code)), row.english);
        const LanguageSetting chinese("zh_CN.UTF-8");
        EXPECT_STREQ(MessageText(code), row.chinese);
        EXPECT_GT(static_cast<unsigned char>(row.chinese[0]), 0x7F) << row.code;
    }
}

TEST(ErrorTable, SpeaksOfTheUsersPasswordInChineseUnder8) {
    const LanguageSetting chinese("zh_CN");
    EXPECT_STREQ(MessageText(Status::kInvalidFileAccess), "用户口令错误。");
}

TEST(ErrorTable, IsEnglishForEveryOtherLanguage) {
    for (const char* const name : {"C", "de_DE.UTF-8", "zh_TW.UTF-8", "POSIX"}) {
        const LanguageSetting locale(name);
        EXPECT_STREQ(MessageText(Status::kDecodeError), "Decode error.") << name;
    }
}

TEST(ErrorTable, CallsEveryOtherCodeUnknown) {
    for (const int code : {-5, -1, 7, -4096, -4067, 0}) {
        EXPECT_STREQ(MessageText(static_cast<Status>(code)), "Unknown error.") << code;
    }
    const LanguageSetting chinese("zh_CN.UTF-8");
    EXPECT_STREQ(MessageText(static_cast<Status>(-5)), "未知错误。");
}

TEST(ErrorRecord, IsEmptyAtFirst) {
    const ErrorRecord record;
    EXPECT_EQ(record.Code(), Status::kOk);
    EXPECT_STREQ(record.Message(), "");
    EXPECT_EQ(record.Offset(), 0U);
    EXPECT_TRUE(record.Excerpt().empty());
}

TEST(ErrorRecord, KeepsTheFirstError) {
    const std::string file = SampleFile();
    ErrorRecord record;
    record.Record(Status::kDecodeError, AsBytes(file), 100, {});
    record.Record(Status::kIllegalFont, AsBytes(file), 200, AsBytes("later"));
    EXPECT_EQ(record.Code(), Status::kDecodeError);
    EXPECT_STREQ(record.Message(), "Decode error.");
    EXPECT_EQ(record.Offset(), 100U);
    EXPECT_EQ(ExcerptOf(record), file.substr(100, 32));
}

TEST(ErrorRecord, DoesNotRecordSuccess) {
    ErrorRecord record;
    record.Record(Status::kOk, AsBytes("%PDF-"), 2, {});
    EXPECT_EQ(record.Offset(), 0U);
    record.Record(static_cast<Status>(-5), {}, 0, {});
    EXPECT_EQ(ToNumber(record.Code()), -5);
    EXPECT_STREQ(record.Message(), "Unknown error.");
}

TEST(ErrorRecord, HasNoPlaceWithoutAFile) {
    ErrorRecord record;
    record.Record(Status::kFailLoadDll, {}, 100, AsBytes("data"));
    EXPECT_EQ(record.Offset(), 0U);
    EXPECT_TRUE(record.Excerpt().empty());
}

TEST(ErrorExcerpt, IsTheFileFromTheObjectOn) {
    EXPECT_EQ(Excerpt(100, ""), SampleFile().substr(100, 32));
    EXPECT_EQ(Excerpt(1000, ""), SampleFile().substr(1000, 10));
    EXPECT_EQ(Excerpt(0, ""), "");
}

TEST(ErrorExcerpt, IsEmptyForAnOffsetBeyondTheFile) {
    EXPECT_EQ(Excerpt(1010, ""), "");
    EXPECT_EQ(Excerpt(4000000000U, ""), "");
}

TEST(ErrorExcerpt, WithDataBeginsWithTheStartOfTheFile) {
    EXPECT_EQ(Excerpt(1000, "data"), SampleFile().substr(0, 10) + "\n...\ndata");
    EXPECT_EQ(Excerpt(1000, std::string(100, 'x')),
              SampleFile().substr(0, 10) + "\n...\n" + std::string(17, 'x'));
}

TEST(ErrorExcerpt, HasRoomForDataBehindAFullPieceOfTheFile) {
    EXPECT_EQ(Excerpt(100, std::string(100, 'x')),
              SampleFile().substr(0, 32) + "\n...\n" + std::string(32, 'x'));
}

TEST(ErrorExcerpt, IsTheDataAloneWithoutAnObject) {
    EXPECT_EQ(Excerpt(0, "data"), "data");
    EXPECT_EQ(Excerpt(0, std::string(100, 'x')), std::string(32, 'x'));
}

class RecordErrorTest : public JobTest {};

TEST_F(RecordErrorTest, FindsTheObjectsPlaceInTheCrossReferenceTable) {
    PdfBuilder pdf = OnePage("n");
    ASSERT_EQ(Open(pdf.Object(10, "<< /Ten 10 >>", 2).Bytes()), Status::kOk);
    EXPECT_EQ(Fail(Status::kIllegalFont, MakeReference(10, 2)), Status::kIllegalFont);
    EXPECT_EQ(Error().Offset(), pdf.OffsetOf(10, 2));
    EXPECT_THAT(ExcerptOf(Error()), ::testing::StartsWith("10 2 obj\n<< /Ten 10 >>"));
}

TEST_F(RecordErrorTest, HasNoPlaceForAnObjectThatIsNotThere) {
    ASSERT_EQ(Open(OnePage("n").Bytes()), Status::kOk);
    EXPECT_EQ(Fail(Status::kIllegalFont, MakeReference(99, 0)), Status::kIllegalFont);
    EXPECT_EQ(Error().Offset(), 0U);
    EXPECT_TRUE(Error().Excerpt().empty());
}

TEST_F(RecordErrorTest, NeverTakesABlockForAnObjectNumber) {
    ASSERT_EQ(Open(OnePage("n").Bytes()), Status::kOk);
    const OwnedObject array(NewArray(1));
    EXPECT_EQ(Fail(Status::kIllegalFont, array.Get()), Status::kIllegalFont);
    EXPECT_EQ(Error().Offset(), 0U);
}

TEST(RecordErrorWithoutAJob, DoesNothing) {
    EXPECT_EQ(Fail(Status::kIllegalFont), Status::kIllegalFont);
}

}  // namespace
}  // namespace zorvan::test
