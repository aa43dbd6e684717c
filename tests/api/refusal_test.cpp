// A host that refuses any one piece of a job, or everything from it on.
#include <climits>
#include <string>

#include <gmock/gmock.h>

#include "api/every_resource.h"
#include "api/session.h"
#include "ps/fake_resources.h"

namespace zorvan::test {
namespace {

struct Refusal {
    std::uint64_t call = 0;  // 0: none
    int status = 0;
    bool fromThenOn = false;
};

/// A host that stops at the first failure and ends the file. Each call is checked on its own.
class RefusingHost {
public:
    RefusingHost(std::string_view bytes, const Refusal& refusal) : refusal_(refusal) {
        Pieces::Reset();
        Pieces::Refuse(refusal.call, refusal.status, refusal.fromThenOn);
        if (Check(OpenFile(bytes)) && Check(ZORVAN_OutputGlobalResources())) {
            WritePages();
        }
        accepted_ = Pieces::Joined();
        const std::uint64_t before = Pieces::Calls();
        Pieces::ResetRefusal();
        ZORVAN_OneFileEnd();
        EXPECT_EQ(Pieces::Calls(), before + 1);
        EXPECT_EQ(GetErrorInfo().code, 0);
    }

    [[nodiscard]] bool Failed() const { return failed_; }
    /// What was accepted before the file was ended.
    [[nodiscard]] const std::string& Accepted() const { return accepted_; }

private:
    void WritePages() {
        for (int page = 1; page <= ZORVAN_GetTotalPages(); ++page) {
            if (!Check(ZORVAN_OutputOnePage(static_cast<unsigned>(page)))) {
                return;
            }
        }
    }

    /// The very status comes back from the call in which a piece was refused, which is its last piece.
    bool Check(int status) {
        failed_ = refusal_.call != 0 && Pieces::Calls() >= refusal_.call;
        EXPECT_EQ(status, failed_ ? refusal_.status : 0);
        EXPECT_EQ(Pieces::CallsAfterRefusal(), 0U);
        return !failed_;
    }

    Refusal refusal_;
    bool failed_ = false;
    std::string accepted_;
};

/// Refuses every piece in turn, in every way.
void RefuseEachPiece(std::string_view bytes) {
    const std::string whole = RefusingHost(bytes, {}).Accepted();
    const std::uint64_t pieces = Pieces::Calls() - 1;  // without the trailer
    ASSERT_GT(pieces, 40U);
    for (const int status : {7, -1, INT_MIN, -4088}) {
        for (const bool fromThenOn : {false, true}) {
            for (std::uint64_t call = 1; call <= pieces; ++call) {
                const RefusingHost host(bytes, {call, status, fromThenOn});
                EXPECT_TRUE(host.Failed());
                EXPECT_TRUE(whole.starts_with(host.Accepted())) << call;
                EXPECT_EQ(Pieces::Taken().size(), fromThenOn ? call - 1 : call) << "trailer or not";
            }
        }
    }
    EXPECT_EQ(RefusingHost(bytes, {}).Accepted(), whole);
}

class Refusals : public FakeResourceTest {};

TEST_F(Refusals, OfAnyPieceOfVectorPagesComeBackAsTheyAre) {
    CurrentJob()->factories = {};
    auto pdf = Pages({"/Contents 10 0 R /SeparationInfo << /DeviceColorant /Cyan >>",
                      "/Contents [10 0 R 11 0 R] /Rotate 90", "/Contents 11 0 R"});
    pdf.Stream(10, "q 1 0 0 1 5 5 cm 0.5 w [1 2] 0 d 0 0 m 10 10 l S 1 0 0 rg 0 0 5 5 re f Q");
    pdf.Stream(11, "/DeviceCMYK cs 0 0 0 1 sc /Perceptual ri h W* n /GS0 gs BT (x) Tj ET B*");
    RefuseEachPiece(pdf.Bytes());
}

TEST_F(Refusals, OfAnyPieceOfPagesWithResourcesComeBackAsTheyAre) {
    const std::string resources =
        "/Contents 10 0 R /Resources << /ColorSpace << /DefaultRGB 20 0 R /C 20 0 R >> /ExtGState << /G 21 0 "
        "R >> "
        "/Pattern << /P 22 0 R >> /XObject << /X 23 0 R >> /Font << /F 24 0 R >> /Shading << /S 25 0 R >> >>";
    auto pdf = Pages({resources, resources, resources});
    pdf.Stream(10, "/C cs 1 0.5 0 sc /P scn /G gs /X Do /S sh");
    pdf.Object(20, "<< /N 3 /UsedFunction 26 0 R >>").Object(21, "<< /op true /UsedHalftone 27 0 R >>");
    pdf.Object(22, "<< /PaintType 1 >>")
        .Object(23, "<< /Contents 11 0 R /Resources << /Font << /F 24 0 R >> >> >>");
    pdf.Stream(11, "1 w n").Object(24, "<< /Subtype /Type3 >>").Object(25, "<< /A 1 >>");
    pdf.Object(26, "<< /A 1 >>").Object(27, "<< /A 1 >>");
    RefuseEachPiece(pdf.Bytes());
}

TEST(RefusalsWithRealResources, OfAnyPieceComeBackAsTheyAre) {
    const Job job;
    RefuseEachPiece(EveryResource());
}

}  // namespace
}  // namespace zorvan::test
