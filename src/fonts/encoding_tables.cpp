// The difference tables of the predefined encodings.
#include "fonts/font_encoding.h"

namespace zorvan {
namespace {

// Written as in the prolog: a number is a code, and the names behind it stand at that code and the ones that
// follow.

// MacRomanEncoding, PDF Reference 1.4, appendix D. Codes 182 to 186 stay as the font has them: Mac fonts
// carry mathematical signs there.
constexpr std::string_view kMacRoman =
    "39/quotesingle 96/grave 128/Adieresis/Aring/Ccedilla/Eacute/Ntilde/Odieresis/Udieresis/aacute"
    "/agrave/acircumflex/adieresis/atilde/aring/ccedilla/eacute/egrave/ecircumflex/edieresis/iacute"
    "/igrave/icircumflex/idieresis/ntilde/oacute/ograve/ocircumflex/odieresis/otilde/uacute/ugrave"
    "/ucircumflex/udieresis/dagger/degree/cent/sterling/section/bullet/paragraph/germandbls"
    "/registered/copyright/trademark/acute/dieresis/.notdef/AE/Oslash/.notdef/plusminus/.notdef"
    "/.notdef/yen/mu 187/ordfeminine/ordmasculine/.notdef/ae/oslash/questiondown/exclamdown"
    "/logicalnot/.notdef/florin/.notdef/.notdef/guillemotleft/guillemotright/ellipsis/space/Agrave"
    "/Atilde/Otilde/OE/oe/endash/emdash/quotedblleft/quotedblright/quoteleft/quoteright/divide"
    "/.notdef/ydieresis/Ydieresis/fraction/currency/guilsinglleft/guilsinglright/fi/fl/daggerdbl"
    "/periodcentered/quotesinglbase/quotedblbase/perthousand/Acircumflex/Ecircumflex/Aacute/Edieresis"
    "/Egrave/Iacute/Icircumflex/Idieresis/Igrave/Oacute/Ocircumflex/.notdef/Ograve/Uacute/Ucircumflex"
    "/Ugrave/dotlessi/circumflex/tilde/macron/breve/dotaccent/ring/cedilla/hungarumlaut/ogonek/caron";

// WinAnsiEncoding of the same appendix, with a bullet at the codes that it leaves empty, and the dotless i
// and the caron, which it lacks, at 1 and 2.
constexpr std::string_view kWinAnsi =
    "1/dotlessi/caron 39/quotesingle 96/grave 127/bullet/Euro/bullet/quotesinglbase/florin"
    "/quotedblbase/ellipsis/dagger/daggerdbl/circumflex/perthousand/Scaron/guilsinglleft/OE/bullet"
    "/Zcaron/bullet/bullet/quoteleft/quoteright/quotedblleft/quotedblright/bullet/endash/emdash/tilde"
    "/trademark/scaron/guilsinglright/oe/bullet/zcaron/Ydieresis/space/exclamdown/cent/sterling"
    "/currency/yen/brokenbar/section/dieresis/copyright/ordfeminine/guillemotleft/logicalnot/hyphen"
    "/registered/macron/degree/plusminus/twosuperior/threesuperior/acute/mu/paragraph/periodcentered"
    "/cedilla/onesuperior/ordmasculine/guillemotright/onequarter/onehalf/threequarters/questiondown"
    "/Agrave/Aacute/Acircumflex/Atilde/Adieresis/Aring/AE/Ccedilla/Egrave/Eacute/Ecircumflex"
    "/Edieresis/Igrave/Iacute/Icircumflex/Idieresis/Eth/Ntilde/Ograve/Oacute/Ocircumflex/Otilde"
    "/Odieresis/multiply/Oslash/Ugrave/Uacute/Ucircumflex/Udieresis/Yacute/Thorn/germandbls/agrave"
    "/aacute/acircumflex/atilde/adieresis/aring/ae/ccedilla/egrave/eacute/ecircumflex/edieresis"
    "/igrave/iacute/icircumflex/idieresis/eth/ntilde/ograve/oacute/ocircumflex/otilde/odieresis"
    "/divide/oslash/ugrave/uacute/ucircumflex/udieresis/yacute/thorn/ydieresis";

// MacExpertEncoding of the same appendix, told relative to the encoding that expert fonts carry.
constexpr std::string_view kMacExpert =
    "35/centoldstyle 60/.notdef 62/.notdef 65/.notdef/.notdef/.notdef/Ethsmall/.notdef 71/onequarter"
    "/onehalf/threequarters/oneeighth/threeeighths/fiveeighths/seveneighths/onethird/twothirds "
    "82/.notdef/.notdef/.notdef 95/hypheninferior 129/asuperior/centsuperior 135/Aacutesmall"
    "/Agravesmall/Acircumflexsmall/Adieresissmall/Atildesmall/Aringsmall/Ccedillasmall/Eacutesmall"
    "/Egravesmall/Ecircumflexsmall/Edieresissmall/Iacutesmall/Igravesmall/Icircumflexsmall"
    "/Idieresissmall/Ntildesmall/Oacutesmall/Ogravesmall/Ocircumflexsmall/Odieresissmall/Otildesmall"
    "/Uacutesmall/Ugravesmall/Ucircumflexsmall/Udieresissmall 161/eightsuperior/fourinferior"
    "/threeinferior/sixinferior/eightinferior/seveninferior/Scaronsmall/.notdef/centinferior"
    "/twoinferior 172/Dieresissmall 174/Caronsmall/osuperior/fiveinferior 178/commainferior"
    "/periodinferior/Yacutesmall 182/dollarinferior/.notdef/.notdef/Thornsmall 187/nineinferior"
    "/zeroinferior/Zcaronsmall/AEsmall/Oslashsmall/questiondownsmall/oneinferior/Lslashsmall/.notdef"
    "/.notdef/.notdef 200/.notdef/Cedillasmall 207/OEsmall/figuredash/hyphensuperior/.notdef/.notdef"
    "/.notdef/.notdef/exclamdownsmall/.notdef/Ydieresissmall/.notdef/onesuperior/twosuperior"
    "/threesuperior/foursuperior/fivesuperior/sixsuperior/sevensuperior/ninesuperior/zerosuperior"
    "/.notdef/esuperior/rsuperior/tsuperior/.notdef/.notdef/isuperior/ssuperior/dsuperior "
    "241/lsuperior/Ogoneksmall/Brevesmall/Macronsmall/bsuperior/nsuperior/msuperior/commasuperior"
    "/periodsuperior/Dotaccentsmall/Ringsmall";

constexpr bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

constexpr DifferenceTable TableOf(std::string_view list) {
    DifferenceTable table{};
    table.fill(kSameName);
    std::size_t code = 0;
    while (!list.empty()) {
        std::size_t length = 1;
        if (IsDigit(list[0])) {
            code = 0;
            for (length = 0; IsDigit(list[length]); ++length) {
                code = code * 10 + static_cast<std::size_t>(list[length] - '0');
            }
        } else if (list[0] == '/') {
            length = list.find_first_of("/ ", 1);
            length = length == std::string_view::npos ? list.size() : length;
            table[code++] = list.substr(1, length - 1);
        }
        list.remove_prefix(length);
    }
    return table;
}

constexpr DifferenceTable kMacRomanTable = TableOf(kMacRoman);
constexpr DifferenceTable kWinAnsiTable = TableOf(kWinAnsi);
constexpr DifferenceTable kMacExpertTable = TableOf(kMacExpert);

}  // namespace

const DifferenceTable& DifferencesOf(BaseEncoding base) {
    switch (base) {
        case BaseEncoding::kMacRoman:
            return kMacRomanTable;
        case BaseEncoding::kWinAnsi:
            return kWinAnsiTable;
        case BaseEncoding::kMacExpert:
            return kMacExpertTable;
        case BaseEncoding::kFontOwn:
            break;
    }
    static constexpr DifferenceTable kNone = TableOf("");
    return kNone;
}

}  // namespace zorvan
