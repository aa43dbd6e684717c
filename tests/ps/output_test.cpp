// Pieces, and how they reach the callback.
#include "ps/output.h"

#include <string>

#include <gmock/gmock.h>

#include "api/job.h"
#include "support/job_fixture.h"

namespace zorvan::test {
namespace {

using ::testing::ElementsAre;

class OutputTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        CurrentJob()->file = std::make_unique<FileContext>(Pieces::Take, nullptr, CurrentJob()->factories);
    }
};

std::string Operand(PdfObject object) {
    OutputPiece piece;
    return std::string(piece.AppendOperand(object).View());
}

TEST_F(OutputTest, OneWriteIsOneCallOfTheCallback) {
    EXPECT_EQ(WriteOutput("a"), Status::kOk);
    EXPECT_EQ(WriteOutput("bc"), Status::kOk);
    EXPECT_THAT(Pieces::Taken(), ElementsAre("a", "bc"));
}

TEST_F(OutputTest, AnEmptyPieceIsHandedOnToo) {
    EXPECT_EQ(WriteOutput(""), Status::kOk);
    EXPECT_EQ(OutputPiece().Write(), Status::kOk);
    EXPECT_THAT(Pieces::Taken(), ElementsAre("", ""));
}

TEST_F(OutputTest, TheCallbacksStatusComesBackUnchangedAndUnrecorded) {
    for (const int status : {7, -1, -4088, -2147483647 - 1}) {
        Pieces::Refuse(Pieces::Calls() + 1, status, false);
        CurrentJob()->file->output.BeginCall();
        EXPECT_EQ(WriteOutput("a"), static_cast<Status>(status));
    }
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(OutputTest, ARefusedCallIsNotRetriedUntilTheNextExportedCall) {
    Pieces::Refuse(1, 7, false);
    EXPECT_EQ(WriteOutput("a"), static_cast<Status>(7));
    EXPECT_EQ(WriteOutput("b"), static_cast<Status>(7));
    EXPECT_EQ(Pieces::Calls(), 1U);
    CurrentJob()->file->output.BeginCall();
    EXPECT_EQ(WriteOutput("c"), Status::kOk);
    EXPECT_THAT(Pieces::Taken(), ElementsAre("c"));
}

TEST_F(OutputTest, NoErrorIsRecordedWhileTheHostRefuses) {
    Pieces::Refuse(1, 7, false);
    EXPECT_EQ(WriteOutput("a"), static_cast<Status>(7));
    EXPECT_EQ(Fail(Status::kDecodeError), Status::kDecodeError);
    EXPECT_EQ(Error().Code(), Status::kOk);
}

TEST_F(OutputTest, WithoutACallbackItFailsAndIsRecorded) {
    CurrentJob()->file = std::make_unique<FileContext>(nullptr, nullptr, CurrentJob()->factories);
    EXPECT_EQ(WriteOutput("a"), Status::kCanNotOutputPs);
    EXPECT_EQ(Error().Code(), Status::kCanNotOutputPs);
}

TEST(OutputPiece, GrowsAsFarAsItMust) {
    OutputPiece piece;
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        piece.AppendInteger(i).Append(" ").AppendReal(0.5F).Append("\n");
        expected += std::to_string(i) + " 0.5\n";
    }
    EXPECT_EQ(piece.View(), expected);
}

TEST(OutputPiece, BeginsAnewAfterClear) {
    OutputPiece piece;
    piece.Append("abc").Clear();
    EXPECT_EQ(piece.Append("d").View(), "d");
}

TEST(FormatOperand, WritesAnIntegerAndTheEqualRealAlike) {
    EXPECT_EQ(Operand(MakeInteger(2)), "2");
    EXPECT_EQ(Operand(MakeReal(2.0F)), "2");
}

TEST(FormatOperand, KeepsEveryDigitOfAnInteger) {
    EXPECT_EQ(Operand(MakeInteger(2147483647)), "2147483647");
    EXPECT_EQ(Operand(MakeInteger(-16777217)), "-16777217");
}

TEST(FormatOperand, CountsWhatIsNoNumberAsZero) {
    EXPECT_EQ(Operand(MakeNull()), "0");
    EXPECT_EQ(Operand(MakeBoolean(true)), "0");
    EXPECT_EQ(Operand(MakeName(12)), "0");
    EXPECT_EQ(Operand(MakeReference(12, 0)), "0");
}

}  // namespace
}  // namespace zorvan::test
