// The predefined encodings of the text procset.
#include <string>

#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

/// The names that an encoding has at these codes.
std::string NamesAt(int encoding, const std::string& codes) {
    return Printed("[" + codes + "] {PDFText /Encodings get " + std::to_string(encoding) +
                   " get exch get =only ( ) print} forall");
}

TEST(Encodings, HaveAllTheirCodes) {
    for (const std::string encoding : {"0", "1"}) {
        EXPECT_EQ(Printed("PDFText /Encodings get " + encoding +
                          " get dup length = {type /nametype ne {(not a name) =} if} forall"),
                  "256\n");
    }
}

TEST(Encodings, HaveMacRomanUnderZero) {
    EXPECT_EQ(
        NamesAt(0, "32 39 65 96 128 143 160 173 176 181 182 183 184 185 186 202 207 208 219 222 240 245 255"),
        "space quotesingle A grave Adieresis egrave dagger .notdef .notdef mu .notdef .notdef .notdef "
        ".notdef .notdef "
        "space oe endash currency fi .notdef dotlessi caron ");
}

TEST(Encodings, HaveWinAnsiUnderOneWithBulletsAtItsEmptyCodes) {
    EXPECT_EQ(
        NamesAt(
            1, "1 2 32 39 65 96 127 128 129 130 141 142 143 144 145 149 157 158 159 160 173 183 214 215 255"),
        "dotlessi caron space quotesingle A grave bullet Euro bullet quotesinglbase bullet Zcaron bullet "
        "bullet quoteleft "
        "bullet bullet zcaron Ydieresis space hyphen periodcentered Odieresis multiply ydieresis ");
}

TEST(Encodings, AgreeWithTheDevicesOwnLatinEncoding) {
    EXPECT_EQ(Printed("161 1 255 {dup 173 eq {pop} {dup PDFText /Encodings get 1 get exch get exch "
                      "ISOLatin1Encoding exch get "
                      "2 copy eq {pop pop} {=only ( ) print =} ifelse} ifelse} for"),
              "");
}

TEST(Encodings, MayNotBeChangedOnceTheDocumentHasBegun) {
    EXPECT_EQ(Printed("PDFText /Encodings get {wcheck =} forall"), "false\nfalse\n");
}

}  // namespace
}  // namespace zorvan::test
