// Compact font programs (CFF, Adobe TN 5176), written for the device's FontSetInit procset.
#pragma once

#include <string>

#include "api/status.h"
#include "pdf/byte_scan.h"
#include "pdf/object.h"

namespace zorvan {

/// Names of a font set that are this long or longer are not taken.
constexpr std::size_t kCompactNameCapacity = 127;

/// The last name of the Name INDEX that is shorter than the capacity. Empty when there is none, or when the
/// header or the INDEX reaches beyond the program.
std::string ReadCompactFontName(Bytes program);

/// Writes the program of a font, `value` being its descriptor's `FontFile3` and `font` its reference, and
/// sets `name` to the name that the program declares, unless no PostScript name can hold it.
Status WriteCompactProgram(PdfObject value, PdfObject font, std::string& name);

}  // namespace zorvan
