// Sampled functions: their dictionaries, and the pieces that their procedures are made of.
#include <cstdint>
#include <string>

#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "paint/paint_page.h"
#include "support/ascii85_text.h"

namespace zorvan::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class SampledFunction : public PaintTest {
protected:
    static PdfBuilder Sampled(std::string_view samples, const std::string& entries) {
        return File().Stream(10, samples, "/FunctionType 0 " + entries);
    }
    std::string Written(FunctionForm form, std::string_view samples, const std::string& entries) {
        return Function(form, Sampled(samples, entries));
    }
};

const std::string kFour("\0\0\0\xFF", 4);  // 000000FF: the digits !!!$!
constexpr const char* kPlain = "/Domain [0 1] /Range [0 1] /Size [4] /BitsPerSample 8 ";

// --- as dictionaries ---

TEST_F(SampledFunction, HasItsKeysInOneOrder) {
    EXPECT_EQ(Written(kDictionary, kFour,
                      "/Decode [0 2.50] /Encode [3 0] /Order 3 /BitsPerSample 8 /Size [4] /Range [0 .5] "
                      "/Domain [-1 1.0]"),
              "/N10 <</FunctionType 0\n"
              "/Domain [-1 1 ]\n"
              "/Range [0 0.5 ]\n"
              "/Size [4 ]\n"
              "/BitsPerSample 8\n"
              "/Order 3\n"
              "/Encode [3 0 ]\n"
              "/Decode [0 2.5 ]\n"
              "/DataSource<~!!!$!~> >>\n"
              "/FunctionDictionary defineRes pop\n");
}

TEST_F(SampledFunction, LeavesOutWhatItLacks) {
    EXPECT_EQ(Written(kDictionary, kFour, kPlain),
              "/N10 <</FunctionType 0\n/Domain [0 1 ]\n/Range [0 1 ]\n/Size [4 ]\n/BitsPerSample 8\n"
              "/Order 1\n/DataSource<~!!!$!~> >>\n/FunctionDictionary defineRes pop\n");
    EXPECT_EQ(Written(kDictionary, kFour, "/Domain [0 1] /BitsPerSample 8"),
              "/N10 <</FunctionType 0\n/Domain [0 1 ]\n/BitsPerSample 8\n"
              "/Order 1\n/DataSource<~!!!$!~> >>\n/FunctionDictionary defineRes pop\n");
}

TEST_F(SampledFunction, LeavesOutWhatIsNoArray) {
    EXPECT_EQ(
        Written(kDictionary, kFour, "/Domain [0 1] /Range 5 /Size 4 /BitsPerSample 8 /Encode /E /Decode (x)"),
        "/N10 <</FunctionType 0\n/Domain [0 1 ]\n/BitsPerSample 8\n"
        "/Order 1\n/DataSource<~!!!$!~> >>\n/FunctionDictionary defineRes pop\n");
}

TEST_F(SampledFunction, FailsWithoutADomain) {
    for (const std::string domain : {"", "/Domain 5 ", "/Domain (01) "}) {
        PdfBuilder pdf = Sampled(kFour, domain + "/Range [0 1] /Size [4] /BitsPerSample 8");
        for (const FunctionForm form : {kDictionary, kProcedure}) {
            EXPECT_EQ(StatusOf(form, pdf), Status::kInvalidDataType) << domain;
            EXPECT_EQ(Error().Code(), Status::kInvalidDataType) << domain;
            EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10)) << domain;
            EXPECT_EQ(Pieces::Joined(), "") << domain;
        }
    }
}

TEST_F(SampledFunction, DecodesItsSamples) {
    EXPECT_THAT(Written(kDictionary, "000000FF>", std::string(kPlain) + "/Filter /ASCIIHexDecode"),
                HasSubstr("/DataSource<~!!!$!~> >>\n"));
}

TEST_F(SampledFunction, FailsToDecodeADamagedTable) {
    for (const FunctionForm form : {kDictionary, kProcedure}) {
        PdfBuilder pdf = Sampled("no such data", std::string(kPlain) + "/Filter /FlateDecode");
        EXPECT_EQ(StatusOf(form, pdf), Status::kDecodeError);
        EXPECT_EQ(Error().Code(), Status::kDecodeError);
        EXPECT_EQ(GetErrorInfo().offset, pdf.OffsetOf(10));
        EXPECT_THAT(Pieces::Joined(), Not(HasSubstr("defineRes")));
    }
}

TEST_F(SampledFunction, HasAShortTableAsOneStringAndALongOneAsMany) {
    const std::string entries = "/Domain [0 1] /Range [0 1] /Size [9] /BitsPerSample 8";
    const std::string shorter = Written(kDictionary, std::string(65535, 'a'), entries);
    EXPECT_EQ(CountOf(shorter, "<~"), 1);
    EXPECT_THAT(shorter, HasSubstr("/DataSource<~"));
    const std::string longer = Written(kDictionary, std::string(65536, 'a'), entries);
    EXPECT_EQ(CountOf(longer, "<~"), 1);
    EXPECT_THAT(longer, HasSubstr("/DataSource{{<~"));
    EXPECT_THAT(longer, EndsWith("~>\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \n >>\n"
                                 "/FunctionDictionary defineRes pop\n"));
    EXPECT_EQ(CountOf(Written(kDictionary, std::string(65537, 'a'), entries), "<~"), 2);
    EXPECT_EQ(FromAscii85(shorter.substr(shorter.find("<~") + 2)), std::string(65535, 'a'));
}

// --- as procedures ---

TEST_F(SampledFunction, HoldsItsTableInADictionaryOfItsOwn) {
    const std::string written =
        Written(kProcedure, kFour, "/Domain [-1 0.5] /Range [0 1] /Size [4] /BitsPerSample 8");
    EXPECT_THAT(written, StartsWith("/N10 ["));
    EXPECT_THAT(written, HasSubstr(" dict begin\n currentfile 4 string\n%%BeginData:4 Bytes\n"
                                   "{readstring pop} bind exec\n" +
                                   kFour + "\n%%EndData\n/Sample exch def\n"));
    for (const char* piece :
         {"{dup -1 le {pop 0}\n", "dup 0.5 ge {pop 3}\n", "-1 sub\n", "3 mul\n", "/min0 _tmp0 cvi def\n",
          "/max0 _tmp0 ceiling cvi def\n", "-3 bitshift Sample exch get", "_tmp0 min0 max0 5 3 roll int\n",
          " 255 div mul", "0 1 3 2 roll limit", " mul 0.5 add floor ", "currentdict end\n"}) {
        EXPECT_THAT(written, HasSubstr(piece));
    }
    EXPECT_THAT(written, EndsWith("} bind aload pop] cvx readonly\n/Function defineRes pop\n"));
}

TEST_F(SampledFunction, HasStepsForEachInput) {
    const std::string written = Written(kProcedure, std::string(8, 'a'),
                                        "/Domain [0 1 0 1 0 1] /Range [0 1] /Size [2 2 2] /BitsPerSample 8");
    for (const std::string input : {"0", "1", "2"}) {
        for (const char* name : {"/prm", "/f", "/min", "/max", "/_x", "/_tmp"}) {
            EXPECT_THAT(written, HasSubstr(name + input));
        }
    }
    EXPECT_THAT(written, Not(HasSubstr("/prm3")));
}

TEST_F(SampledFunction, ReadsSamplesBelowAByteByShifting) {
    EXPECT_THAT(Written(kProcedure, kFour, "/Domain [0 1] /Range [0 1] /Size [8] /BitsPerSample 4"),
                HasSubstr("dup 7 and exch -3 bitshift Sample exch get exch 4 sub bitshift 15 and"));
    EXPECT_THAT(Written(kProcedure, kFour, "/Domain [0 1] /Range [0 1] /Size [16] /BitsPerSample 2"),
                HasSubstr("dup 7 and exch -3 bitshift Sample exch get exch 6 sub bitshift 3 and"));
    EXPECT_THAT(Written(kProcedure, kFour, "/Domain [0 1] /Range [0 1] /Size [32] /BitsPerSample 1"),
                HasSubstr("dup 7 and exch -3 bitshift Sample exch get exch 7 sub bitshift 1 and"));
}

TEST_F(SampledFunction, IsADictionaryWhereNoProcedureCanBe) {
    for (const std::string entries : {
             "/Domain [0 1] /Size [4] /BitsPerSample 8",                   // no range
             "/Domain [0 1] /Range [0 1] /BitsPerSample 8",                // no size
             "/Domain [0 1] /Range [0 1] /Size [5] /BitsPerSample 8",      // too few samples
             "/Domain [0 1] /Range [0 1 0 1] /Size [4] /BitsPerSample 8",  // of two outputs
             "/Domain [0 1] /Range [0 1] /Size [0] /BitsPerSample 8",      // of none
             "/Domain [0 1] /Range [0 1] /Size [-4] /BitsPerSample 8",     //
             "/Domain [0 1] /Range [0 1] /Size [4] /BitsPerSample 7",      // a number that is not allowed
             "/Domain [0 1] /Range [0 1] /Size [4] /BitsPerSample -8",     //
             "/Domain [0 1] /Range [0 1] /Size [4]",                       //
             "/Domain [] /Range [0 1] /Size [4] /BitsPerSample 8",         // no input
             "/Domain [0 1 0 1] /Range [0 1] /Size [4] /BitsPerSample 8",  // no size for the second
             "/Domain [0 1 0 1] /Range [0 1] /Size [2147483647 2147483647] /BitsPerSample 32",
             "/Domain [0 1 0 1 0 1 0 1] /Range [0 1] /Size [65536 65536 65536 65536] /BitsPerSample 16",
         }) {
        const std::string written = Written(kProcedure, kFour, entries);
        EXPECT_THAT(written, StartsWith("/N10 <</FunctionType 0\n/Domain [")) << entries;
        EXPECT_THAT(written, EndsWith("/DataSource<~!!!$!~> >>\n/Function defineRes pop\n")) << entries;
    }
}

TEST_F(SampledFunction, IsADictionaryFromATableOn65536Bytes) {
    const std::string entries = "/Domain [0 1] /Range [0 1] /Size [65535] /BitsPerSample 8";
    EXPECT_THAT(Written(kProcedure, std::string(65535, 'a'), entries),
                HasSubstr("\n%%BeginData:65535 Bytes\n{readstring pop} bind exec\n"));
    EXPECT_THAT(Written(kProcedure, std::string(65536, 'a'), entries),
                EndsWith("ID \n >>\n/Function defineRes pop\n"));
}

}  // namespace
}  // namespace zorvan::test
