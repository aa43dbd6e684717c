// One page that names colour spaces, and what its setup becomes.
#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "content/xobject_page.h"

namespace zorvan::test {

/// A document of one page with these spaces; the objects from 10 on are the test's.
inline PdfBuilder SpacePage(std::string_view content = "n", std::string_view spaces = "/CS 10 0 R") {
    return OnePage(content, "/Resources << /ColorSpace << " + std::string(spaces) + " >> >>");
}

/// What both setups define; everything must go well.
struct Definitions {
    std::string document;
    std::string page;
};
inline Definitions Defined(PdfBuilder pdf) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.global, 0);
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, 0) << conversion.error.message;
    return {SetupOf(conversion.output), PageSetupOf(conversion.output)};
}

/// What the page's setup defines for a space, object 10.
inline std::string Defined(std::string_view space) {
    return Defined(SpacePage().Object(10, space)).page;
}

inline std::string Definition(std::string_view name, std::string_view text) {
    return "/" + std::string(name) + " " + std::string(text) + " /ColorSpace defineRes pop\n";
}

constexpr const char* kCalGray = "[/CalGray << /WhitePoint [0.9505 1 1.089] >>]";
constexpr const char* kCalGrayText =
    "[/CIEBasedA <<\n/MatrixA [0.9505 1 1.089]\n/RangeLMN [0 0.9505 0 1 0 1.089]\n"
    "/WhitePoint [0.9505 1 1.089]\n>>]";
constexpr const char* kCalRgb = "[/CalRGB << /WhitePoint [0.9505 1 1.089] >>]";
constexpr const char* kCalRgbText = "[/CIEBasedABC <<\n/WhitePoint [0.9505 1 1.089]\n>>]";

/// An ink of one component in four others, and its texts.
constexpr const char* kInk = "<< /FunctionType 2 /Domain [0 1] /C0 [0 0 0 0] /C1 [0 1 1 0.5] /N 1 >>";
constexpr const char* kInkDictionary =
    "<</FunctionType 2\n/Domain [0 1 ]\n/C0 [0 0 0 0 ]\n/C1 [0 1 1 0.5 ]\n/N 1\n>>\n";
constexpr const char* kInkProcedure =
    "[7 dict begin\n/Domain [0 1 ] def\n/C0 [0 0 0 0 ] def\n/C1 [0 1 1 0.5 ] def\n/N 1 def\n"
    "/DimOut 4 def\ncurrentdict end {begin domainClip applyInterpFunc end} bind aload pop] cvx readonly\n";

/// Black and white of three components, and their digits of base 85: 000000FF and FFFF.
inline const std::string kTable("\0\0\0\xFF\xFF\xFF", 6);
constexpr const char* kTableText = "<~!!!$!s8N~>";

}  // namespace zorvan::test
