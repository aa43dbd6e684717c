// The exported functions: their order, their results, and what stays after a failure.
#include <array>
#include <climits>
#include <filesystem>
#include <fstream>
#include <string>

#include <gmock/gmock.h>

#include "api/c_host.h"
#include "api/session.h"
#include "support/system.h"

namespace zorvan::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kTrailer = "%%Trailer\n%%EOF\n";

/// A file in a folder of its own whose path has exactly this many bytes.
class FileWithPathOf {
public:
    FileWithPathOf(std::size_t length, std::string_view bytes)
        : folder_(TemporaryFile("").Path() + "-folder") {
        std::filesystem::path deep = folder_;
        while (deep.string().size() + 102 < length) {
            deep /= std::string(100, 'd');
        }
        std::filesystem::create_directories(deep);
        path_ = deep.string() + "/";
        path_ += std::string(length - path_.size(), 'f');
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~FileWithPathOf() { std::filesystem::remove_all(folder_); }
    FileWithPathOf(const FileWithPathOf&) = delete;
    FileWithPathOf& operator=(const FileWithPathOf&) = delete;

    [[nodiscard]] const std::string& Path() const { return path_; }

private:
    std::string folder_;
    std::string path_;
};

class Calls : public ::testing::Test {
protected:
    void SetUp() override { Pieces::Reset(); }
};

TEST_F(Calls, WithoutAJobDoNothing) {
    EXPECT_EQ(OpenFile(OnePage("n").Bytes()), -1);
    EXPECT_EQ(ZORVAN_GetTotalPages(), 0);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    ZORVAN_OneFileEnd();
    KAPRINE_End();
    EXPECT_EQ(Pieces::Calls(), 0U);
}

TEST_F(Calls, WithoutAJobLeaveTheErrorsOutputsAlone) {
    const char* message = "untouched";
    unsigned int offset = 42;
    const unsigned char* excerpt = nullptr;
    unsigned int length = 43;
    EXPECT_EQ(KAPRINE_GetErrInfo(&message, &offset, &excerpt, &length), 0);
    EXPECT_STREQ(message, "untouched");
    EXPECT_EQ(offset, 42U);
    EXPECT_EQ(excerpt, nullptr);
    EXPECT_EQ(length, 43U);
}

TEST_F(Calls, WithoutAFileDoNothing) {
    const Job job;
    EXPECT_EQ(job.Status(), 0);
    EXPECT_EQ(ZORVAN_GetTotalPages(), 0);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    ZORVAN_OneFileEnd();
    EXPECT_EQ(Pieces::Calls(), 0U);
    EXPECT_EQ(GetErrorInfo().code, 0);
}

TEST_F(Calls, BeginAJobWithAnEmptyErrorRecord) {
    const Job job;
    const ErrorInfo info = GetErrorInfo();
    EXPECT_EQ(info.code, 0);
    EXPECT_EQ(info.message, "");
    EXPECT_EQ(info.offset, 0U);
    EXPECT_EQ(info.excerpt, "");
}

TEST_F(Calls, MayLeaveOutputsOfTheErrorOut) {
    const Job job;
    EXPECT_EQ(OpenFile("no PDF"), -4069);
    EXPECT_EQ(KAPRINE_GetErrInfo(nullptr, nullptr, nullptr, nullptr), -4069);
}

TEST_F(Calls, KeepTheJobWhenTheCodecLibraryIsMissing) {
    const Job job("/nowhere/");
    EXPECT_EQ(job.Status(), -4089);
    EXPECT_EQ(GetErrorInfo().message, "Fail load DLL.");
    EXPECT_EQ(KAPRINE_Begin(FilterFolder().c_str()), -1);
    EXPECT_EQ(OpenFile(OnePage("n").Bytes()), -4089);
    EXPECT_EQ(Pieces::Calls(), 0U);
}

TEST_F(Calls, PutNoSeparatorBehindTheFolder) {
    const std::string folder = FilterFolder();
    const Job job(folder.substr(0, folder.size() - 1));
    EXPECT_EQ(job.Status(), -4089);
}

TEST_F(Calls, TakeNoFolderForTheCurrentOne) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path("/");
    EXPECT_EQ(KAPRINE_Begin(nullptr), -4089);
    KAPRINE_End();
    std::filesystem::current_path(FilterFolder());
    EXPECT_EQ(KAPRINE_Begin(nullptr), 0);
    KAPRINE_End();
    std::filesystem::current_path(before);
}

TEST_F(Calls, FailWithACodecLibraryThatLacksAnyEntryPoint) {
    for (const char* const missing : {"CreateEncoder", "EncodeData", "Encode_EOD", "Flush", "DestroyEncoder",
                                      "CreateDecoder", "DecodeData", "DestroyDecoder"}) {
        const Job job(std::string(ZORVAN_INCOMPLETE_FILTERS "/") + missing + "/");
        EXPECT_EQ(job.Status(), -4078) << missing;
        EXPECT_EQ(GetErrorInfo().message, "Illegal Function.") << missing;
    }
}

TEST_F(Calls, SucceedWithACodecLibraryThatHasAllOfThem) {
    const Job job(ZORVAN_INCOMPLETE_FILTERS "/Nothing/");
    EXPECT_EQ(job.Status(), 0);
}

TEST_F(Calls, RefuseASecondJobAndLeaveTheFirstWhole) {
    const Job job;
    ASSERT_EQ(OpenFile(OnePage("1 w").Bytes()), 0);
    EXPECT_EQ(KAPRINE_Begin("/nowhere/"), -1);
    EXPECT_EQ(GetErrorInfo().code, 0);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    EXPECT_EQ(ContentOf(Pieces::Joined()), "1 w\n");
    ZORVAN_OneFileEnd();
}

TEST_F(Calls, RefuseASecondFileAndLeaveTheFirstWhole) {
    const Job job;
    ASSERT_EQ(OpenFile(OnePage("1 w").Bytes()), 0);
    const std::uint64_t before = Pieces::Calls();
    EXPECT_EQ(OpenFile(Pages({"", "", ""}).Bytes()), -1);
    EXPECT_EQ(OpenFile("no PDF"), -1);
    EXPECT_EQ(Pieces::Calls(), before);
    EXPECT_EQ(ZORVAN_GetTotalPages(), 1);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    EXPECT_EQ(ContentOf(Pieces::Joined()), "1 w\n");
    ZORVAN_OneFileEnd();
    EXPECT_EQ(GetErrorInfo().code, 0);
}

TEST_F(Calls, WriteNothingForAPageThatDoesNotExist) {
    const Job job;
    ASSERT_EQ(OpenFile(Pages({"", ""}).Bytes()), 0);
    const std::uint64_t before = Pieces::Calls();
    for (const unsigned page : {0U, 3U, 4294967295U}) {
        EXPECT_EQ(ZORVAN_OutputOnePage(page), 0) << page;
    }
    EXPECT_EQ(Pieces::Calls(), before);
    ZORVAN_OneFileEnd();
}

TEST_F(Calls, CountThePages) {
    const Job job;
    ASSERT_EQ(OpenFile(Pages({"", "", ""}).Bytes()), 0);
    EXPECT_EQ(ZORVAN_GetTotalPages(), 3);
    ZORVAN_OneFileEnd();
    EXPECT_EQ(ZORVAN_GetTotalPages(), 0);
}

TEST_F(Calls, LeaveNoFileOpenThatIsNoPdf) {
    for (const char* const bytes :
         {"", "%PDF", "%pdf-1.4 %%EOF", " %PDF-1.4 %%EOF", "%!PS-Adobe %%EOF", "%PDF-1.4"}) {
        const Job job;
        EXPECT_EQ(OpenFile(bytes), -4069) << bytes;
        EXPECT_EQ(ZORVAN_GetTotalPages(), 0);
        ZORVAN_OneFileEnd();
        EXPECT_EQ(Pieces::Calls(), 0U);
        const ErrorInfo info = GetErrorInfo();
        EXPECT_EQ(info.message, "Illegal PDF file.");
        EXPECT_EQ(info.offset, 0U);
        EXPECT_EQ(info.excerpt, "");
        EXPECT_EQ(OpenFile(OnePage("n").Bytes()), 0);
        ZORVAN_OneFileEnd();
        Pieces::Reset();
    }
}

TEST_F(Calls, FailForAFileThatCannotBeOpened) {
    const std::string folder = std::filesystem::temp_directory_path().string();
    for (const char* const path : {"/nowhere/at all.pdf", "", folder.c_str(), "/dev/null"}) {
        const Job job;
        EXPECT_EQ(ZORVAN_OneFileBegin(path, Pieces::Take, nullptr), -4086) << path;
        EXPECT_EQ(GetErrorInfo().message, "Open file error.");
        EXPECT_EQ(ZORVAN_GetTotalPages(), 0);
    }
    const Job job;
    EXPECT_EQ(ZORVAN_OneFileBegin(nullptr, Pieces::Take, nullptr), -4086);
}

TEST_F(Calls, FailForAFileOf4GibAndMore) {
    const TemporaryFile file("%PDF-1.4\n");
    std::filesystem::resize_file(file.Path(), std::uint64_t{1} << 32U);
    const Job job;
    EXPECT_EQ(ZORVAN_OneFileBegin(file.Path().c_str(), Pieces::Take, nullptr), -4086);
}

TEST_F(Calls, TakePathsOf259BytesAndNoLongerOnes) {
    const std::string bytes = OnePage("n").Bytes();
    const FileWithPathOf fits(259, bytes);
    const FileWithPathOf tooLong(260, bytes);
    ASSERT_EQ(fits.Path().size(), 259U);
    ASSERT_EQ(tooLong.Path().size(), 260U);
    const Job job;
    EXPECT_EQ(ZORVAN_OneFileBegin(fits.Path().c_str(), Pieces::Take, nullptr), 0);
    ZORVAN_OneFileEnd();
    EXPECT_EQ(ZORVAN_OneFileBegin(tooLong.Path().c_str(), Pieces::Take, nullptr), -4086);
    EXPECT_EQ(ZORVAN_OneFileBegin(std::string(100000, 'x').c_str(), Pieces::Take, nullptr), -4086);
}

TEST_F(Calls, KeepTheFileOpenWhenTheHeaderIsRefused) {
    const Job job;
    Pieces::Refuse(1, 7, false);
    EXPECT_EQ(OpenFile(OnePage("n").Bytes()), 7);
    EXPECT_EQ(GetErrorInfo().code, 0);
    EXPECT_EQ(ZORVAN_GetTotalPages(), 1);
    EXPECT_EQ(Pieces::Calls(), 1U);
    ZORVAN_OneFileEnd();
    EXPECT_EQ(Pieces::Joined(), kTrailer);
    EXPECT_EQ(ZORVAN_GetTotalPages(), 0);
}

TEST_F(Calls, WriteTheTrailerOnceEvenIfItIsRefused) {
    const Job job;
    ASSERT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    const std::uint64_t before = Pieces::Calls();
    Pieces::Refuse(before + 1, 7, true);
    ZORVAN_OneFileEnd();
    ZORVAN_OneFileEnd();
    EXPECT_EQ(Pieces::Calls(), before + 1);
    EXPECT_EQ(GetErrorInfo().code, 0);
}

// A system has so many of some things for a process: 1,088 thread slots, for one.
TEST_F(Calls, BeginAndEndJobsAsOftenAsAHostLikes) {
    const std::string folder = FilterFolder();
    EXPECT_EQ(KAPRINE_Begin(folder.c_str()), 0);
    KAPRINE_End();
    const std::ptrdiff_t before = OpenHandles();
    for (int job = 0; job < 1200; ++job) {
        ASSERT_EQ(KAPRINE_Begin(folder.c_str()), 0) << job;
        KAPRINE_End();
    }
    EXPECT_EQ(OpenHandles(), before);
}

TEST_F(Calls, EndAJobWithAnOpenFileWithoutATrailer) {
    EXPECT_EQ(KAPRINE_Begin(FilterFolder().c_str()), 0);
    EXPECT_EQ(OpenFile(OnePage("n").Bytes()), 0);
    const std::uint64_t before = Pieces::Calls();
    KAPRINE_End();
    EXPECT_EQ(Pieces::Calls(), before);
    EXPECT_EQ(ZORVAN_GetTotalPages(), 0);
    const Job next;
    EXPECT_EQ(next.Status(), 0);
    EXPECT_EQ(OpenFile(OnePage("n").Bytes()), 0);
}

TEST_F(Calls, OutOfOrderWriteWhatTheyAreAskedFor) {
    const Job job;
    ASSERT_EQ(OpenFile(Pages({"", ""}).Bytes()), 0);
    EXPECT_EQ(ZORVAN_OutputOnePage(2), 0);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    ZORVAN_OneFileEnd();
    const std::string output = Pieces::Joined();
    EXPECT_LT(output.find("%%Page: 2 2\n"), output.find("%%EndSetup\n"));
    EXPECT_LT(output.find("%%EndSetup\n"), output.find("%%Page: 1 1\n"));
    EXPECT_THAT(output, EndsWith(kTrailer));
}

TEST_F(Calls, FailWithoutACallback) {
    const Job job;
    EXPECT_EQ(OpenFile(OnePage("n").Bytes(), nullptr), -4085);
    EXPECT_EQ(GetErrorInfo().message, "Can not output ps.");
    EXPECT_EQ(ZORVAN_GetTotalPages(), 1);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), -4085);
    EXPECT_EQ(ZORVAN_OutputOnePage(1), -4085);
    ZORVAN_OneFileEnd();
}

TEST_F(Calls, TellTheFirstErrorOfAJobOnly) {
    const Job job;
    EXPECT_EQ(OpenFile("no PDF"), -4069);
    EXPECT_EQ(ZORVAN_OneFileBegin("/nowhere", Pieces::Take, nullptr), -4086);
    EXPECT_THAT(RunFile(OnePage("m").Bytes()).pages, ::testing::ElementsAre(-4093));
    EXPECT_EQ(GetErrorInfo().code, -4069);
    EXPECT_EQ(GetErrorInfo().message, "Illegal PDF file.");
}

TEST_F(Calls, ForgetTheErrorWithTheJob) {
    {
        const Job job;
        EXPECT_EQ(OpenFile("no PDF"), -4069);
    }
    const Job job;
    EXPECT_EQ(GetErrorInfo().code, 0);
}

TEST_F(Calls, ConvertTheNextFileAfterOneThatFailed) {
    const Job job;
    EXPECT_EQ(OpenFile("no PDF"), -4069);
    const FileRun run = RunFile(OnePage("1 w").Bytes());
    EXPECT_EQ(run.pages, std::vector<int>{0});
    EXPECT_EQ(ContentOf(run.output), "1 w\n");
}

TEST_F(Calls, WriteTheSameBytesForTheSameFileAgain) {
    std::string content = "/Perceptual ri /Unknown#20Name ri [1 2] 3 d ";
    for (int i = 0; i < 1000; ++i) {
        content +=
            std::to_string(i) + ".37 " + std::to_string(i * 7) + " m /Name" + std::to_string(i) + " ri S ";
    }
    const std::string bytes = Pages({"/Contents 10 0 R", "/Contents 10 0 R"}).Stream(10, content).Bytes();
    const std::string first = Convert(bytes).output;
    EXPECT_EQ(Convert(bytes).output, first);
    const Job job;
    EXPECT_EQ(RunFile(bytes).output, first);
    EXPECT_EQ(RunFile(bytes).output, first);
}

TEST_F(Calls, TakeThePasswordByItsLengthAndNoMoreThan40Bytes) {
    const TemporaryFile file(OnePage("n").Bytes());
    ZORVAN_PasswordRecord password;
    std::fill(std::begin(password.text), std::end(password.text), 'p');
    for (const unsigned length : {0U, 5U, 40U, 41U, 4294967295U}) {
        const Job job;
        password.length = length;
        EXPECT_EQ(ZORVAN_OneFileBegin(file.Path().c_str(), Pieces::Take, &password), 0) << length;
        ZORVAN_OneFileEnd();
    }
}

TEST_F(Calls, ConvertAJobTicketLikeAPdf) {
    PdfBuilder ticket("%JTF-1.1");
    ticket.Object(1, "<< /Type /Catalog /Pages 2 0 R /JT 5 0 R >>");
    ticket.Object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
    ticket.Object(3, "<< /Type /Page /MediaBox [0 0 100 200] /Contents 4 0 R >>");
    ticket.Stream(4, "0.5 w 1 2 m").Object(5, "<< /V 1.1 /Cn [] >>");
    const Conversion conversion = Convert(ticket.Bytes());
    EXPECT_EQ(conversion.fileBegin, 0);
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(ContentOf(conversion.output), "0.5 w\n1 2 m\n");
    EXPECT_THAT(conversion.output, HasSubstr("%%BoundingBox: 0.000000 0.000000 100.000000 200.000000\n"));
    EXPECT_THAT(conversion.output, EndsWith(kTrailer));
}

TEST_F(Calls, ReadObjectsOfAGenerationAboveZero) {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 3 R >>", 2);
    pdf.Object(2, "<< /Type /Pages /Kids [3 1 R] /Count 1 >>", 3);
    pdf.Object(3, "<< /Type /Page /MediaBox [0 0 9 9] /Contents 4 7 R >>", 1);
    pdf.Object(4, "<< /Length 3 >>\nstream\n1 w\nendstream", 7).Section("/Root 1 2 R");
    EXPECT_EQ(ContentOf(Convert(pdf.Bytes()).output), "1 w\n");
}

TEST_F(Calls, AreThoseOfAPlainCProgram) {
    const TemporaryFile file(OnePage("1 w").Bytes());
    EXPECT_EQ(ConvertFromC(FilterFolder().c_str(), file.Path().c_str()), 1);
    EXPECT_EQ(ConvertFromC("/nowhere/", file.Path().c_str()), -4089);
}

/// A page whose contents name one stream of blanks, so large and so often that they are 200 times the file.
std::string PageOfManyBlanks(int times) {
    constexpr std::size_t kBlanks = std::size_t{4} << 20;
    std::string contents = "/Contents [";
    for (int i = 0; i < times; ++i) {
        contents += " 10 0 R";
    }
    return Pages({contents + "]"}).Stream(10, std::string(kBlanks, ' ')).Bytes();
}

TEST_F(Calls, EndWhenTheyCostFarMoreThanTheFileIsLarge) {
    const Job job;
    const FileRun run = RunFile(PageOfManyBlanks(200));
    EXPECT_EQ(run.begin, 0);
    EXPECT_EQ(run.pages, std::vector<int>{-4088});
    EXPECT_EQ(KAPRINE_GetErrInfo(nullptr, nullptr, nullptr, nullptr), -4088);
}

TEST_F(Calls, MayEachCostAsMuchAgain) {
    const Job job;
    const std::string file = PageOfManyBlanks(100);
    ASSERT_EQ(OpenFile(file), 0);
    EXPECT_EQ(ZORVAN_OutputGlobalResources(), 0);
    for (int call = 0; call < 3; ++call) {
        EXPECT_EQ(ZORVAN_OutputOnePage(1), 0);
    }
    ZORVAN_OneFileEnd();
}

}  // namespace
}  // namespace zorvan::test
