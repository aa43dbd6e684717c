// Values of the file that the device reads as they are: filter parameters and strings.
#pragma once

#include <string>
#include <string_view>

#include "pdf/object.h"
#include "ps/output.h"

namespace zorvan {

/// True for a digit or white space.
bool BelongsIntoHexadecimal(std::uint8_t byte);

/// Appends a filter's parameters as a dictionary, the keys as the file spells them; null for anything else.
void AppendFilterParameters(OutputPiece& piece, PdfObject dictionary);

/// Appends a string between its delimiters, in the very form in which it stands in the file; only what
/// looks like a comment in it gets a backslash. What is neither digit nor white space in a hexadecimal string
/// is left out: it would end the job on the device. Empty parentheses for anything else.
void AppendStringObject(OutputPiece& piece, PdfObject string);

/// The text of a string as it stands in the file, escapes and all; hexadecimal digits as the bytes that they
/// stand for.
std::string TextOfString(PdfObject string);

/// Such a text as it goes between parentheses: as it is when it makes one complete PostScript string, else
/// with a backslash before every backslash and parenthesis.
std::string AsStringText(std::string_view text);

/// Appends it, parentheses and all. What looks like a comment in it gets a backslash.
void AppendStringText(OutputPiece& piece, std::string_view text);

/// Appends a key that the library knows, as a name with a blank behind it.
OutputPiece& AppendKey(OutputPiece& piece, std::uint32_t key);

/// Text of the file that goes into a comment: it must stay on its line, so that what ends one becomes a
/// blank.
std::string OnOneLine(std::string text);

}  // namespace zorvan
