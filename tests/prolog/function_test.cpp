// The procedures that functions are evaluated with, and the predefined spot functions.
#include <cmath>
#include <functional>
#include <map>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

std::vector<double> Numbers(const std::string& text) {
    std::istringstream stream(text);
    std::vector<double> numbers;
    for (double number = 0; stream >> number;) {
        numbers.push_back(number);
    }
    return numbers;
}

/// What is left on the stack, the deepest first.
std::vector<double> Results(const std::string& content) {
    return Numbers(Printed("[" + content + "] {=} forall"));
}

testing::Matcher<std::vector<double>> Are(const std::vector<double>& values) {
    return testing::Pointwise(testing::DoubleNear(1e-5), values);
}

TEST(FunctionHelpers, HoldANumberBetweenTwoOthers) {
    EXPECT_THAT(Results("-1 0 1 3 2 roll limit 2 0 1 3 2 roll limit 0.25 0 1 3 2 roll limit"),
                Are({0, 1, 0.25}));
    EXPECT_THAT(
        Results(
            "1 << /Domain [-1 0.5] >> begin domainClip end -3 << /Domain [-1 0.5] >> begin domainClip end"),
        Are({0.5, -1}));
    EXPECT_THAT(Results("-1 0.5 7 << /Range [0 1 0 1 2 5] >> begin rangeClip end"), Are({0, 0.5, 5}));
}

TEST(FunctionHelpers, FindTheValueBetweenTwoSamples) {
    EXPECT_THAT(Results("10 30 2.25 2 3 5 3 roll int"), Are({15}));
    EXPECT_THAT(Results("10 30 2 2 2 5 3 roll int"), Are({10}));
}

/// A function of type 2 as a procedure, in the words of its writer.
std::string Exponential(const std::string& entries, int outputs) {
    return "[7 dict begin\n/Domain [0 1 ] def\n" + entries + "/DimOut " + std::to_string(outputs) +
           " def\ncurrentdict end {begin domainClip applyInterpFunc end} bind aload pop] cvx readonly\n";
}

TEST(ExponentialFunction, InterpolatesBetweenC0AndC1) {
    const std::string square = Exponential("/C0 [0 1 0.5 ] def\n/C1 [1 0 0.5 ] def\n/N 2 def\n", 3);
    EXPECT_THAT(Results("0.5 " + square + " exec"), Are({0.25, 0.75, 0.5}));
    EXPECT_THAT(Results("7 " + square + " exec"), Are({1, 0, 0.5}));
    EXPECT_THAT(Results("-7 " + square + " exec"), Are({0, 1, 0.5}));
}

TEST(ExponentialFunction, HoldsItsResultsWhereTheirLimitsAreKnown) {
    const std::string limits = "/Range_lo [0.2 0 ] def\n/Range_hi [0.4 0.3 ] def\n";
    EXPECT_THAT(
        Results("1 9 dict begin /Domain [0 1] def /C0 [0 0] def /C1 [1 0.1] def /N 1 def /DimOut 2 def " +
                limits + " domainClip applyInterpFunc end"),
        Are({0.4, 0.1}));
    EXPECT_THAT(Results("1 " + Exponential("/Range [0 0.5 ] def\n/C0 [0 ] def\n/C1 [1 ] def\n/N 1 def\n", 1) +
                        " exec"),
                Are({1}));
}

TEST(ExponentialFunction, LeavesStacksAsTheyWere) {
    EXPECT_EQ(Printed("1 2 0.5 " + Exponential("/C0 [0 ] def\n/C1 [1 ] def\n/N 1 def\n", 1) +
                      " exec pop count = countdictstack ="),
              "2\n8\n");
}

TEST(StitchingFunction, SendsEachPartToItsOwnFunction) {
    const std::string stitched =
        " << /Domain [0 10] /Bounds [2 5] /Encode [0 1 1 0 0 1] /Functions [{100 add} {200 add} {300 add}] "
        ">> begin "
        "domainClip applyStitchFunc end ";
    EXPECT_THAT(Results("0" + stitched + "1" + stitched + "2" + stitched + "3.5" + stitched + "5" + stitched +
                        "99" + stitched),
                Are({100, 100.5, 201, 200.5, 300, 301}));
}

TEST(StitchingFunction, MayHaveOnePartOrAnEmptyOne) {
    EXPECT_THAT(
        Results(
            "0.5 << /Domain [0 1] /Bounds [] /Encode [0 10] /Functions [{}] >> begin applyStitchFunc end"),
        Are({5}));
    EXPECT_THAT(Results("1 << /Domain [0 1] /Bounds [1] /Encode [0 10 3 9] /Functions [{} {}] >> begin "
                        "applyStitchFunc end"),
                Are({3}));
}

double Degrees(double angle) {
    return angle * std::numbers::pi / 180;
}
double Sine(double x) {
    return std::sin(Degrees(360 * x)) / 2;
}
double Disk(double x, double y) {
    return 1 - (x * x + y * y);
}
double Opposite(double x, double y) {
    return (std::abs(x) - 1) * (std::abs(x) - 1) + (std::abs(y) - 1) * (std::abs(y) - 1) - 1;
}

double Ellipse(double x, double y) {
    const double ax = std::abs(x);
    const double ay = std::abs(y);
    const double w = 3 * ax + 4 * ay - 3;
    if (w < 0) {
        return 1 - (ax * ax + (ay / 0.75) * (ay / 0.75)) / 4;
    }
    if (w > 1) {
        return ((1 - ax) * (1 - ax) + ((1 - ay) / 0.75) * ((1 - ay) / 0.75)) / 4 - 1;
    }
    return 0.5 - w;
}

double Diamond(double x, double y) {
    const double sum = std::abs(x) + std::abs(y);
    if (sum <= 0.75) {
        return Disk(x, y);
    }
    return sum <= 1.23 ? 1 - (0.85 * std::abs(x) + std::abs(y)) : Opposite(x, y);
}

// The mathematical definitions of the PDF Reference.
const std::map<std::string, std::function<double(double, double)>>& SpotFunctions() {
    static const std::map<std::string, std::function<double(double, double)>> table{
        {"CosineDot",
         [](double x, double y) { return (std::cos(Degrees(180 * x)) + std::cos(Degrees(180 * y))) / 2; }},
        {"Cross", [](double x, double y) { return -std::min(std::abs(x), std::abs(y)); }},
        {"Diamond", Diamond},
        {"Double", [](double x, double y) { return Sine(x / 2) + Sine(y); }},
        {"DoubleDot", [](double x, double y) { return Sine(x) + Sine(y); }},
        {"Ellipse", Ellipse},
        {"EllipseA", [](double x, double y) { return 1 - (x * x + 0.9 * y * y); }},
        {"EllipseB", [](double x, double y) { return 1 - std::sqrt(x * x + 0.625 * y * y); }},
        {"EllipseC", [](double x, double y) { return 1 - (0.9 * x * x + y * y); }},
        {"InvertedDouble", [](double x, double y) { return -(Sine(x / 2) + Sine(y)); }},
        {"InvertedDoubleDot", [](double x, double y) { return -(Sine(x) + Sine(y)); }},
        {"InvertedEllipseA", [](double x, double y) { return x * x + 0.9 * y * y - 1; }},
        {"InvertedEllipseC", [](double x, double y) { return 0.9 * x * x + y * y - 1; }},
        {"InvertedSimpleDot", [](double x, double y) { return -Disk(x, y); }},
        {"Line", [](double /*x*/, double y) { return -std::abs(y); }},
        {"LineX", [](double x, double /*y*/) { return x; }},
        {"LineY", [](double /*x*/, double y) { return y; }},
        {"Rhomboid", [](double x, double y) { return (0.9 * std::abs(x) + std::abs(y)) / 2; }},
        {"Round",
         [](double x, double y) { return std::abs(x) + std::abs(y) <= 1 ? Disk(x, y) : Opposite(x, y); }},
        {"SimpleDot", Disk},
        {"Square", [](double x, double y) { return -std::max(std::abs(x), std::abs(y)); }},
    };
    return table;
}

/// Prints a function's values on a grid of 33 by 33 points, the edges among them.
std::string ValuesOf(const std::string& name) {
    return "/f /" + name +
           " /Function findRes def -16 1 16 {16 div /x exch def -16 1 16 {16 div x exch f =} for} for\n";
}

TEST(SpotFunctions, AreTheTwentyOnePublishedOnes) {
    ASSERT_EQ(SpotFunctions().size(), 21U);
    std::string content;
    for (const auto& [name, formula] : SpotFunctions()) {
        content += ValuesOf(name);
    }
    const std::vector<double> values = Numbers(Printed(content));
    ASSERT_EQ(values.size(), 21U * 1089U);
    std::size_t at = 0;
    for (const auto& [name, formula] : SpotFunctions()) {
        for (int point = 0; point < 1089; ++point) {
            const int row = point / 33;
            const double x = row / 16.0 - 1;
            const double y = (point % 33) / 16.0 - 1;
            EXPECT_NEAR(values[at++], formula(x, y), 2e-6) << name << " at " << x << ' ' << y;
        }
    }
}

TEST(SpotFunctions, ScreenATint) {
    std::string content;
    std::string expected;
    for (const auto& [name, formula] : SpotFunctions()) {
        content += "<< /HalftoneType 1 /Frequency 60 /Angle 45.5 /SpotFunction /" + name +
                   " /Function findRes >> sethalftone currenthalftone /HalftoneType get =\n";
        expected += "1\n";
    }
    EXPECT_EQ(Printed(content), expected);
}

}  // namespace
}  // namespace zorvan::test
