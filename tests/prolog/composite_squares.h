// A CID-keyed font of squares whose glyphs are known to the unit, and the text that composite fonts of it are
// made with.
#pragma once

#include <string>

#include "prolog/prolog_job.h"

namespace zorvan::test {

/// The dictionary of a collection of Adobe's.
std::string SystemInfo(const std::string& ordering);

/// The squares as a CID-keyed font, as the library writes it.
std::string CIDFont(const std::string& name = "Squares", const std::string& map = "<000000010002>\n",
                    const std::string& ordering = "Identity");

/// The program of a CMap with these lines between its head and its end.
std::string CMapProgram(const std::string& name, const std::string& lines, int mode = 0);

/// What a composing line says.
struct Line {
    std::string name = "/N5";
    std::string font = "Squares";
    std::string cmap = "/Identity-H ";
    std::string collection = "/Adobe-Identity";
    std::string style = "Serif";
    int mode = 0;
};

std::string Composing(const Line& line);

/// A page with this text at a place, in /N5 at 20: the large square is 12 wide, the small one 6.
Picture Shown(const std::string& setup, const std::string& content, const std::string& place = "10 10");

/// Is there a square of so many pixels with its lower left corner there, and nothing right around it?
bool IsSquare(const Picture& page, int x, int y, int size);

/// What the page prints after this setup.
std::string PrintedBy(const std::string& setup, const std::string& content);

}  // namespace zorvan::test
