// What overprinting leaves of the plates underneath, on a device that has plates.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "prolog/plates.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using Inks = std::vector<int>;  // cyan, magenta, yellow, black, spot

const std::string kSpot = "[/Separation (Spot) DefaultCMYK {0 exch 0 0}] ";
const std::string kBoth = "[/DeviceN [(Cyan) (Spot)] DefaultCMYK {0 0}] ";
const std::string kFill = " 0 0 9 9 re f\n";
const std::string kStroke = " 9 w 0 5 m 9 5 l S\n";

// Two layers, of the process inks and of the spot colour.
const std::string kUnderneath = "0.2 0.4 0.6 0.8 k 0 0 100 100 re f\n<</op true>> gs true setoverprint " +
                                kSpot + "cs 0.4 sc 0 0 100 100 re f\n";
const Inks kAll{51, 102, 153, 204, 102};

/// The writer's two lines for a graphics state.
std::string State(const std::string& strokes, const std::string& fills, int mode) {
    return "/N1 <<\n/OP " + strokes + "\n/op " + fills + "\n/OPM " + std::to_string(mode) +
           "\n>> /ExtGState defineRes pop\n/N1 /ExtGState findRes  gs\n" + fills + " setoverprint\n";
}
std::string Overprint(int mode) {
    return State("true", "true", mode);
}

/// Something painted over the two layers, and the inks that are there then.
struct Painted {
    std::string content;
    Inks inks;
};

/// Paints each in a square of its own.
void ExpectInks(const std::vector<Painted>& all) {
    std::string content = kUnderneath;
    for (std::size_t index = 0; index < all.size(); ++index) {
        content += "q 1 0 0 1 0 " + std::to_string(10 * index) + " cm " + all[index].content + "Q\n";
    }
    const Plates plates(content);
    for (std::size_t index = 0; index < all.size(); ++index) {
        EXPECT_EQ(plates.At(5, static_cast<int>(10 * index) + 5), all[index].inks) << all[index].content;
    }
    EXPECT_EQ(plates.At(50, 50), kAll);
}

TEST(OverprintPlates, AreAllKnockedOutWithoutIt) {
    const std::string none = State("false", "false", 0);
    const std::string modeOne = State("false", "false", 1);
    ExpectInks({{none + "0 1 0 0 k" + kFill, {0, 255, 0, 0, 0}},
                {modeOne + "0 1 0 0 k" + kFill, {0, 255, 0, 0, 0}},
                {modeOne + kSpot + "cs 1 sc" + kFill, {0, 0, 0, 0, 255}},
                {modeOne + "0 1 0 0 K" + kStroke, {0, 255, 0, 0, 0}},
                {none + kBoth + "CS 1 0.2 SC" + kStroke, {255, 0, 0, 0, 51}}});
}

TEST(OverprintPlates, OfInksThatASpaceHasNotAreLeft) {
    std::vector<Painted> all;
    for (const int mode : {0, 1}) {
        all.push_back({Overprint(mode) + kSpot + "cs 1 sc" + kFill, {51, 102, 153, 204, 255}});
        all.push_back({Overprint(mode) + kBoth + "cs 1 0 sc" + kFill, {255, 102, 153, 204, 0}});
        all.push_back({Overprint(mode) + kSpot + "CS 1 SC" + kStroke, {51, 102, 153, 204, 255}});
        all.push_back({Overprint(mode) + kBoth + "CS 1 0 SC" + kStroke, {255, 102, 153, 204, 0}});
    }
    ExpectInks(all);
}

TEST(OverprintPlates, OfTheProcessInksAreKnockedOutInModeZero) {
    ExpectInks({{Overprint(0) + "0 1 0 0 k" + kFill, {0, 255, 0, 0, 102}},
                {Overprint(0) + "0 1 0 0 K" + kStroke, {0, 255, 0, 0, 102}}});
}

TEST(OverprintPlates, OfInksThatAColorHasNotAreLeftInModeOne) {
    ExpectInks({{Overprint(1) + "0 1 0 0 k" + kFill, {51, 255, 153, 204, 102}},
                {Overprint(1) + "0.4 0 0 1 k" + kFill, {102, 102, 153, 255, 102}},
                {Overprint(1) + "0 0 0 0 k" + kFill, kAll},
                {Overprint(1) + "0.4 0.2 0.4 0.2 k" + kFill, {102, 51, 102, 51, 102}},
                {Overprint(1) + "0 1 0 0 K" + kStroke, {51, 255, 153, 204, 102}},
                {Overprint(1) + "0 0 0 0 K" + kStroke, kAll}});
}

TEST(OverprintPlates, OfAnotherDefaultSpaceAreKnockedOutInModeOne) {
    const std::string other =
        "/DefaultCMYK [/DeviceN [(Cyan) (Magenta) (Yellow) (Black)] [/DeviceCMYK] {}] dd ";
    ExpectInks({{other + Overprint(1) + "0 1 0 0 k" + kFill, {0, 255, 0, 0, 102}}});
}

TEST(OverprintPlates, FollowTheFillAndTheStrokeApart) {
    ExpectInks({{State("true", "false", 1) + "0 1 0 0 k" + kFill, {0, 255, 0, 0, 0}},
                {State("true", "false", 1) + "0 1 0 0 K" + kStroke, {51, 255, 153, 204, 102}},
                {State("false", "true", 1) + "0 1 0 0 k" + kFill, {51, 255, 153, 204, 102}},
                {State("false", "true", 1) + "0 1 0 0 K" + kStroke, {0, 255, 0, 0, 0}}});
}

TEST(OverprintPlates, UnderTextAreLeftToo) {
    const std::string text = "/N2 /Helvetica findfont definefont pop BT /N2 60 Tf -4 -10 Td (I) Tj ET ";
    ExpectInks({{Overprint(1) + "0 1 0 0 k 0 0 9 9 re W n " + text, {51, 255, 153, 204, 102}}});
}

}  // namespace
}  // namespace zorvan::test
