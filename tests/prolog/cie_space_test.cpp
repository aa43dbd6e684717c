// The CIE-based spaces of PDF, beside what the interpreter's own reader of PDF makes of them.
#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using Colors = std::vector<std::string>;  // as operands

/// A square of 5 points for each colour.
std::string Squares(const Colors& colors) {
    std::ostringstream content;
    for (std::size_t index = 0; index < colors.size(); ++index) {
        content << colors[index] << " sc " << index % 20 * 5 << ' ' << index / 20 * 5 << " 5 5 re f\n";
    }
    return content.str();
}

Color Square(const Picture& page, std::size_t index) {
    return page.At(static_cast<int>(index % 20) * 5 + 2, static_cast<int>(index / 20) * 5 + 2);
}

/// A PDF file of one page with a colour space C.
std::string Pdf(const std::string& space, const std::string& content) {
    const std::array<std::string, 4> objects{
        "<</Type /Catalog /Pages 2 0 R>>", "<</Type /Pages /Kids [3 0 R] /Count 1>>",
        "<</Type /Page /Parent 2 0 R /MediaBox [0 0 100 100] /Contents 4 0 R /Resources <</ColorSpace <</C " +
            space + ">>>>>>",
        "<</Length " + std::to_string(content.size()) + ">>\nstream\n" + content + "\nendstream"};
    std::string text = "%PDF-1.4\n";
    std::string table = "xref\n0 5\n0000000000 65535 f \n";
    for (std::size_t index = 0; index < objects.size(); ++index) {
        const std::string offset = std::to_string(text.size());
        table += std::string(10 - offset.size(), '0') + offset + " 00000 n \n";
        text += std::to_string(index + 1) + " 0 obj\n" + objects[index] + "\nendobj\n";
    }
    return text + table + "trailer\n<</Size 5 /Root 1 0 R>>\nstartxref\n" + std::to_string(text.size()) +
           "\n%%EOF\n";
}

Picture PaintedPdf(const std::string& space, const Colors& colors) {
    const std::string path = ScratchFolder() + "/pdf_page";
    const Outcome outcome =
        Interpret("-sDEVICE=ppmraw -r72 -sOutputFile=" + path, Pdf(space, "/C cs\n" + Squares(colors)));
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    return Picture(path);
}

Picture PaintedSpace(const std::string& space, const Colors& colors) {
    return Painted("/N12 " + space + " /ColorSpace defineRes pop\n/N12 /ColorSpace findRes  cs\n" +
                   Squares(colors));
}

void ExpectAlike(const std::string& pdf, const std::string& postScript, const Colors& colors) {
    const Picture expected = PaintedPdf(pdf, colors);
    const Picture page = PaintedSpace(postScript, colors);
    for (std::size_t index = 0; index < colors.size(); ++index) {
        EXPECT_THAT(Square(page, index), testing::Pointwise(testing::DoubleNear(1), Square(expected, index)))
            << pdf << colors[index];
    }
}

Colors Levels() {
    Colors colors;
    for (int level = 0; level <= 20; ++level) {
        colors.push_back(std::to_string(level / 20.0));
    }
    return colors;
}

TEST(CalGray, LooksAsThePdfSpaceDoes) {
    for (const std::string gamma : {"", "1.8", "2.2"}) {
        for (const std::string x : {"0.9505", "0.9642"}) {
            const std::string z = x == "0.9505" ? "1.089" : "0.8249";
            const std::string white = x + " 1 " + z;
            ExpectAlike(
                "[/CalGray <</WhitePoint [" + white + "]" + (gamma.empty() ? "" : " /Gamma " + gamma) + ">>]",
                "[/CIEBasedA <<\n/MatrixA [" + white + "]\n/RangeLMN [0 " + x + " 0 1 0 " + z +
                    "]\n/WhitePoint [" + white + "]\n" +
                    (gamma.empty() ? "" : "/DecodeA {" + gamma + " exp}bind\n") + ">>]",
                Levels());
        }
    }
}

TEST(CalRgb, LooksAsThePdfSpaceDoes) {
    Colors colors;
    for (const std::string red : {"0", "0.2", "0.6", "1"}) {
        for (const std::string green : {"0", "0.4", "0.8", "1"}) {
            for (const std::string blue : {"0", "0.3", "0.7", "1"}) {
                colors.push_back(red + " " + green + " " + blue);
            }
        }
    }
    const std::string white = "/WhitePoint [0.9505 1 1.089]\n";
    const std::string matrix = "[0.4124 0.2126 0.0193 0.3576 0.7152 0.1192 0.1805 0.0722 0.9505]";
    ExpectAlike("[/CalRGB <<" + white + "/Gamma [2.2 2.2 2.2] /Matrix " + matrix + ">>]",
                "[/CIEBasedABC <<\n" + white +
                    "/DecodeLMN  [{2.2 exp}bind {2.2 exp}bind {2.2 exp}bind ]\n/MatrixLMN  " + matrix +
                    "\n>>]",
                colors);
    ExpectAlike("[/CalRGB <<" + white + "/Matrix " + matrix + ">>]",
                "[/CIEBasedABC <<\n" + white + "/MatrixLMN  " + matrix + "\n>>]", colors);
}

/// A Lab space in the words of its writer, for the white point of D50.
std::string Lab(const std::string& range) {
    std::string text = "[/CIEBasedABC <<\n/RangeABC [0 100 " + range +
                       "]\n/DecodeABC [{16 add 116 div} bind {500 div} bind {200 div} bind]\n"
                       "/MatrixABC [1 1 1 1 0 0 0 0 -1]\n/DecodeLMN [\n";
    for (const std::string end : {"0.9642 mul} bind\n", "1 mul} bind\n", "0.8249 mul} bind]\n"}) {
        text += "{dup 6 29 div ge {dup dup mul mul}\n{4 29 div sub 108 841 div mul} ifelse " + end;
    }
    return text + "/WhitePoint [0.9642 1 0.8249]\n>>]";
}

TEST(Lab, KeepsWhatLiesBeyondNoughtAndOne) {
    const std::string range = " /ColorSpace defineRes 1 get /RangeLMN get {1000 mul round cvi =} forall";
    EXPECT_EQ(Printed("/N12 " + Lab("-100 100 -100 100 ") + range), "-62\n1200\n138\n1000\n-362\n1500\n");
    EXPECT_EQ(Printed("/N12 " + Lab("-50 60 -40 30 ") + range), "38\n1120\n138\n1000\n-12\n1200\n");
}

/// sRGB by the formulas of CIE 15 and IEC 61966-2-1, the white point being adapted after Bradford.
std::vector<double> Srgb(double lightness, double a, double b) {
    const auto decoded = [](double t) { return t >= 6.0 / 29 ? t * t * t : 108.0 / 841 * (t - 4.0 / 29); };
    const double m = (lightness + 16) / 116;
    const double x = 0.9642 * decoded(m + a / 500);
    const double y = decoded(m);
    const double z = 0.8249 * decoded(m - b / 200);
    const std::array linear{3.1338561 * x - 1.6168667 * y - 0.4906146 * z,
                            -0.9787684 * x + 1.9161415 * y + 0.0334540 * z,
                            0.0719453 * x - 0.2289914 * y + 1.4052427 * z};
    std::vector<double> color;
    for (const double value : linear) {
        color.push_back(255 *
                        (value <= 0.0031308 ? 12.92 * value : 1.055 * std::pow(value, 1 / 2.4) - 0.055));
    }
    return color;
}

// The interpreter puts such a space in a table of its own, between whose entries it is some steps off.
TEST(Lab, ComesNearToItsColors) {
    Colors colors;
    std::vector<std::vector<double>> expected;
    for (const auto& [lightness, a, b] : std::vector<std::array<double, 3>>{{50, 0, 0},
                                                                            {80, 0, 0},
                                                                            {20, 0, 0},
                                                                            {100, 0, 0},
                                                                            {60, 40, 20},
                                                                            {60, -30, 30},
                                                                            {40, 20, -40},
                                                                            {90, -10, 60},
                                                                            {85, 5, -10},
                                                                            {70, 30, 60}}) {
        std::ostringstream operands;
        operands << lightness << ' ' << a << ' ' << b;
        colors.push_back(operands.str());
        expected.push_back(Srgb(lightness, a, b));
    }
    const Picture page = PaintedSpace(Lab("-100 100 -100 100 "), colors);
    for (std::size_t index = 0; index < colors.size(); ++index) {
        EXPECT_THAT(Square(page, index), testing::Pointwise(testing::DoubleNear(8), expected[index]))
            << colors[index];
    }
}

TEST(CieSpace, ThatTheDeviceRefusesLeavesTheColorItHas) {
    for (const std::string space :
         {"[/CIEBasedABC <<\n/MatrixLMN  [1 0 0 0 1 0 0 0 1]\n>>]", "[/CIEBasedA <<\n/WhitePoint []\n>>]",
          "[/CIEBasedABC <<\n/RangeABC [0 100 ]\n/DecodeABC [{stop} bind {pop pop} bind]\n>>]",
          "[/CIEBasedABC 5]", "[/CIEBasedABC]"}) {
        EXPECT_EQ(
            Painted(
                "1 0 0 rg 0 0 5 5 re f /N12 " + space +
                " /ColorSpace defineRes pop q /N12 /ColorSpace findRes  cs 0.5 0.5 0.5 sc 40 40 5 5 re f Q "
                "10 10 20 20 re f")
                .At(20, 20),
            kRed)
            << space;
    }
}

}  // namespace
}  // namespace zorvan::test
