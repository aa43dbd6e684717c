// The whole way once: a page in, its PostScript out.
#include <gtest/gtest.h>

#include "support/host.h"
#include "support/pdf_builder.h"

namespace zorvan::test {
namespace {

TEST(Conversion, TranslatesEachOperatorIntoOneLine) {
    EXPECT_EQ(Translate("q 1 0 0 1 72 72 cm 0.50 w 0 0 m 100 100 l S Q"),
              "q\n"
              "1 0 0 1 72 72 cm\n"
              "0.5 w\n"
              "0 0 m\n"
              "100 100 l\n"
              "S\n"
              "Q\n");
}

TEST(Conversion, WritesOneDocumentFromHeaderToTrailer) {
    const Conversion conversion = Convert(OnePage("n").Bytes());
    EXPECT_EQ(conversion.begin, 0);
    EXPECT_EQ(conversion.fileBegin, 0);
    EXPECT_EQ(conversion.global, 0);
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, 0);
    EXPECT_TRUE(conversion.output.starts_with("%!PS-Adobe-3.0\n%%Version: 1 3\n"));
    EXPECT_TRUE(conversion.output.ends_with("%%PageTrailer\n%%EndPage\n%%Trailer\n%%EOF\n"));
}

}  // namespace
}  // namespace zorvan::test
