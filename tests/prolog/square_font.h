// A font whose glyphs are known to the unit, for tests that look at where text lands.
#pragma once

#include <string>

namespace zorvan::test {

/// The entries of a Type 1 font: A is a square of 600 units above and to the right of the origin, 1,000 units
/// wide; the blank and .notdef are empty, 500 and 1,000 units wide. Every other name of its encoding is
/// missing.
inline const std::string kSquareEntries =
    "/FontType 1 def /PaintType 0 def /FontMatrix [.001 0 0 .001 0 0] def /FontBBox [0 0 600 600] def\n"
    "/Encoding StandardEncoding def\n"
    "/Private 3 dict dup begin /lenIV -1 def /BlueValues [] def /password 5839 def end def\n"
    "/CharStrings 3 dict dup begin\n"
    "/.notdef <8BFA7C0D0E> def /space <8BF8880D0E> def\n"
    "/A <8BFA7C0D8B16F8EC06F8EC07FCEC06090E> def\nend def\n";

/// The PostScript that makes this font known as /Squares.
inline const std::string kSquares =
    "/Squares 12 dict dup begin /FontName /Squares def\n" + kSquareEntries + "end definefont pop\n";

}  // namespace zorvan::test
