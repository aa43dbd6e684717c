// Halftones: their functions, their components, and those that the device refuses.
#include <string>

#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

const std::string kHalf = "<</FunctionType 2 /Domain [0 1] /C0 [0] /C1 [0.5] /N 1>> ";
// x - y, in 16 samples.
const std::string kRaster =
    "<</FunctionType 0 /Domain [-1 1 -1 1] /Range [-1 1] /Size [2 2] /BitsPerSample 8 /DataSource "
    "<80ff0080>>> ";

std::string Screen(const std::string& name, const std::string& entries) {
    return name + " <</HalftoneType 1\n/Frequency 60\n/Angle 45\n" + entries + ">> /Halftone defineRes pop\n";
}
std::string Used(const std::string& name) {
    return "/N1 <<\n/OP false\n/op false\n/HT " + name +
           " /Halftone findRes \n/LW 3\n>> /ExtGState defineRes pop\n/N1 /ExtGState findRes  gs\nfalse "
           "setoverprint\n";
}

/// Prints the given entry of the halftone that the device has, what is left, and a setting made with it.
std::string Told(const std::string& entry) {
    return "currenthalftone " + entry + " currentlinewidth = count =";
}

TEST(Halftone, TakesItsFunctionsAsDictionaries) {
    const std::string entries = "/SpotFunction " + kRaster + "/TransferFunction " + kHalf;
    EXPECT_EQ(
        Printed(Screen("/N9", entries) + Used("/N9") +
                Told("dup /TransferFunction get 1 exch exec = /SpotFunction get 1 -1 3 -1 roll exec =")),
        "0.5\n1.0\n3.0\n0\n");
    EXPECT_EQ(Printed("<< /LW 3 /HT <</HalftoneType 1 /Frequency 60 /Angle 45 " + entries + ">> >> gs " +
                      Told("/TransferFunction get 1 exch exec =")),
              "0.5\n3.0\n0\n");
}

TEST(Halftone, MayLackItsTransferFunction) {
    EXPECT_EQ(
        Printed(Screen("/N9",
                       "/SpotFunction /Round /Function findRes\n/TransferFunction /N8 /Function findRes\n") +
                Used("/N9") + Told("/TransferFunction known =")),
        "false\n3.0\n0\n");
}

const std::string kRound = "/SpotFunction /Round /Function findRes\n";

TEST(Halftone, OfComponentsHasThemUnderTheirNames) {
    EXPECT_EQ(Printed(Screen("/N6", kRound) + Screen("/N7", "/SpotFunction " + kRaster) +
                      "/N9 <</HalftoneType 5\n(Default) /N6 /Halftone findRes \n(Cyan) /N7 /Halftone findRes "
                      "\n(Magenta) "
                      "/N5 /Halftone findRes \n>> /Halftone defineRes pop\n" +
                      Used("/N9") +
                      Told("dup /Magenta known = dup /Cyan get /SpotFunction get 1 -1 3 -1 roll exec = "
                           "/Default get /HalftoneType get =")),
              "false\n1.0\n1\n3.0\n0\n");
}

// Of threshold halftones only the size is there.
TEST(Halftone, ThatTheDeviceRefusesLeavesItsScreen) {
    const std::string refused[] = {
        "/N9 <</HalftoneType 6\n/Width 8\n/Height 8\n>> /Halftone defineRes pop\n",
        "/N9 <</HalftoneType 10\n/Xsquare 4\n/Ysquare 3\n>> /Halftone defineRes pop\n",
        "/N9 <</HalftoneType 16\n/Width 4\n/Height 3\n/Width2 2\n/Height2 2\n>> /Halftone defineRes pop\n",
        "/N9 <</HalftoneType 5\n>> /Halftone defineRes pop\n",
        "/N9 <</HalftoneType 5\n(Default) /N8 /Halftone findRes \n>> /Halftone defineRes pop\n",
        Screen("/N7", kRound) +
            "/N9 <</HalftoneType 5\n(Cyan) /N7 /Halftone findRes \n>> /Halftone defineRes pop\n",
        Screen("/N9", "/SpotFunction /NoSuch /Function findRes\n"),
        Screen("/N9", "/SpotFunction 5\n"),
        Screen("/N9", ""),
        "/N9  /Halftone defineRes pop\n",
    };
    const std::string own = "<< /HT <</HalftoneType 1 /Frequency 77 /Angle 45 /SpotFunction {pop}>> >> gs ";
    for (const std::string& halftone : refused) {
        EXPECT_EQ(Printed(own + halftone + Used("/N9") + "20 20 60 60 re f " + Told("/Frequency get =")),
                  "77\n3.0\n0\n")
            << halftone;
    }
}

// Some devices look into a halftone when it is defined.
TEST(Halftone, ThatTheDeviceRefusesToDefineIsNull) {
    const std::string strict =
        "/defineresource {dup /Halftone eq {pop pop pop stop} {systemdict /defineresource get exec} ifelse} "
        "def\n";
    EXPECT_EQ(PrologJob()
                  .Before(strict)
                  .Page("/N9 <</HalftoneType 6\n/Width 8\n/Height 8\n>> /Halftone defineRes pop\n" +
                        Used("/N9") + "/N9 /Halftone findRes == currentlinewidth = count =")
                  .Run()
                  .text,
              "null\n3.0\n0\n");
}

TEST(Halftone, OfTheDeviceComesBack) {
    EXPECT_EQ(Printed("currenthalftone " + Screen("/N9", kRound) + Used("/N9") +
                      "<< /HT /_defaulthalftone load >> gs currenthalftone /HalftoneType get exch "
                      "/HalftoneType get eq = "
                      "count ="),
              "true\n0\n");
}

}  // namespace
}  // namespace zorvan::test
