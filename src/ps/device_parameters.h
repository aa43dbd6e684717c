// Values of the file that the device reads as they are: filter parameters and strings.
#pragma once

#include <string>

#include "pdf/object.h"
#include "ps/output.h"

namespace zorvan {

/// Appends a filter's parameters as a dictionary, the keys as the file spells them; null for anything else.
void AppendFilterParameters(OutputPiece& piece, PdfObject dictionary);

/// Appends a string between its delimiters, in the very form in which it stands in the file. What is neither
/// digit nor white space in a hexadecimal string is left out: it would end the job on the device. Empty
/// parentheses for anything else.
void AppendStringObject(OutputPiece& piece, PdfObject string);

/// Appends so many bytes of a string in parentheses: as they stand in the file when they make one complete
/// PostScript string, else with a backslash before every backslash and parenthesis.
void AppendStringText(OutputPiece& piece, PdfObject string, std::size_t limit);

/// Text of the file that goes into a comment: it must stay on its line, so that line ends become blanks.
std::string OnOneLine(std::string text);

}  // namespace zorvan
