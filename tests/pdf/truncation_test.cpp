// A file cut off at any byte opens as what is left of it or is refused; nothing in between.
#include <string>

#include "pdf/describe.h"
#include "pdf/page_tree.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

class PageCounter : public PageReceiver {
public:
    void AddPage(const PageAttributes& page) override {
        boxes += static_cast<int>(page.box[2]);
        ++pages;
    }
    int pages = 0;
    int boxes = 0;
};

class TruncatedFile : public JobTest {};

TEST_F(TruncatedFile, OpensAsItsLastWholeVersionOrIsRefused) {
    PdfBuilder pdf = OnePage("0 0 m 9 9 l S", "/Resources << /A [1 (b) <63>] >> /Rotate 90");
    const std::string first = pdf.Section().Bytes();
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R 5 0 R] >>")
        .Object(5, "<< /Type /Page /MediaBox [0 0 1 1] >>");
    const std::string whole = pdf.Section().Bytes();
    const std::size_t firstEnd = first.rfind("%%EOF") + 5;
    const std::size_t secondEnd = whole.rfind("%%EOF") + 5;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const Status status = Open(whole.substr(0, length));
        if (length < firstEnd) {
            ASSERT_EQ(status, Status::kIllegalPdfFile) << length;
            continue;
        }
        ASSERT_EQ(status, Status::kOk) << length;
        PageCounter counter;
        ASSERT_EQ(WalkPageTree(File(), File().Pages(), counter), Status::kOk);
        ASSERT_EQ(counter.pages, length < secondEnd ? 1 : 2) << length;
        ASSERT_EQ(counter.boxes, length < secondEnd ? 612 : 613) << length;
    }
}

TEST_F(TruncatedFile, IsRefusedWithoutItsFirstBytes) {
    const std::string whole = OnePage("n").Bytes();
    for (std::size_t lost = 1; lost <= whole.size(); ++lost) {
        ASSERT_EQ(Open(whole.substr(lost)), Status::kIllegalPdfFile) << lost;
    }
}

TEST_F(TruncatedFile, NeverBringsTheReaderDownWhenABlockIsMissing) {
    const std::string whole = OnePage("n", "/Resources << /A [1 (b) <63>] >>").Bytes();
    for (const std::size_t lost : {std::size_t{1}, std::size_t{7}, std::size_t{40}}) {
        for (std::size_t start = 5; start + lost < whole.size(); ++start) {
            const Status status = Open(whole.substr(0, start) + whole.substr(start + lost));
            if (status == Status::kOk) {
                PageCounter counter;
                static_cast<void>(WalkPageTree(File(), File().Pages(), counter));
                ASSERT_LE(counter.pages, 1);
            } else {
                ASSERT_TRUE(status == Status::kIllegalPdfFile || status == Status::kInvalidDataType)
                    << ToNumber(status);
            }
        }
    }
}

}  // namespace
}  // namespace zorvan::test
