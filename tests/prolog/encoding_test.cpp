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

/// A name in a row, that many times.
std::string Repeated(const std::string& name, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) {
        text += name + " ";
    }
    return text;
}

/// All names of an encoding.
std::string AllNames(int encoding) {
    return Printed("PDFText /Encodings get " + std::to_string(encoding) + " get {=only ( ) print} forall");
}

const std::string kFrom32To126 =
    "space exclam quotedbl numbersign dollar percent ampersand quotesingle parenleft parenright asterisk "
    "plus comma hyphen period slash zero one two three four five six seven eight nine colon semicolon less "
    "equal greater question at A B C D E F G H I J K L M N O P Q R S T U V W X Y Z bracketleft backslash "
    "bracketright asciicircum underscore grave a b c d e f g h i j k l m n o p q r s t u v w x y z "
    "braceleft bar braceright asciitilde ";

const std::string kMacRomanFrom128 =
    "Adieresis Aring Ccedilla Eacute Ntilde Odieresis Udieresis aacute agrave acircumflex adieresis atilde "
    "aring ccedilla eacute egrave ecircumflex edieresis iacute igrave icircumflex idieresis ntilde oacute "
    "ograve ocircumflex odieresis otilde uacute ugrave ucircumflex udieresis dagger degree cent sterling "
    "section bullet paragraph germandbls registered copyright trademark acute dieresis .notdef AE Oslash "
    ".notdef plusminus .notdef .notdef yen mu .notdef .notdef .notdef .notdef .notdef ordfeminine "
    "ordmasculine .notdef ae oslash questiondown exclamdown logicalnot .notdef florin .notdef .notdef "
    "guillemotleft guillemotright ellipsis space Agrave Atilde Otilde OE oe endash emdash quotedblleft "
    "quotedblright quoteleft quoteright divide .notdef ydieresis Ydieresis fraction currency guilsinglleft "
    "guilsinglright fi fl daggerdbl periodcentered quotesinglbase quotedblbase perthousand Acircumflex "
    "Ecircumflex Aacute Edieresis Egrave Iacute Icircumflex Idieresis Igrave Oacute Ocircumflex .notdef "
    "Ograve Uacute Ucircumflex Ugrave dotlessi circumflex tilde macron breve dotaccent ring cedilla "
    "hungarumlaut ogonek caron ";

const std::string kWinAnsiFrom128 =
    "Euro bullet quotesinglbase florin quotedblbase ellipsis dagger daggerdbl circumflex perthousand Scaron "
    "guilsinglleft OE bullet Zcaron bullet bullet quoteleft quoteright quotedblleft quotedblright bullet "
    "endash emdash tilde trademark scaron guilsinglright oe bullet zcaron Ydieresis space exclamdown cent "
    "sterling currency yen brokenbar section dieresis copyright ordfeminine guillemotleft logicalnot hyphen "
    "registered macron degree plusminus twosuperior threesuperior acute mu paragraph periodcentered cedilla "
    "onesuperior ordmasculine guillemotright onequarter onehalf threequarters questiondown Agrave Aacute "
    "Acircumflex Atilde Adieresis Aring AE Ccedilla Egrave Eacute Ecircumflex Edieresis Igrave Iacute "
    "Icircumflex Idieresis Eth Ntilde Ograve Oacute Ocircumflex Otilde Odieresis multiply Oslash Ugrave "
    "Uacute Ucircumflex Udieresis Yacute Thorn germandbls agrave aacute acircumflex atilde adieresis aring "
    "ae ccedilla egrave eacute ecircumflex edieresis igrave iacute icircumflex idieresis eth ntilde ograve "
    "oacute ocircumflex otilde odieresis divide oslash ugrave uacute ucircumflex udieresis yacute thorn "
    "ydieresis ";

TEST(Encodings, HaveEveryNameOfMacRoman) {
    EXPECT_EQ(AllNames(0), Repeated(".notdef", 32) + kFrom32To126 + ".notdef " + kMacRomanFrom128);
}

TEST(Encodings, HaveEveryNameOfWinAnsi) {
    EXPECT_EQ(AllNames(1), ".notdef dotlessi caron " + Repeated(".notdef", 29) + kFrom32To126 + "bullet " +
                               kWinAnsiFrom128);
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
