// Arrays of numbers from the file, as they go into matrices, boxes and the like.
#pragma once

#include <cstdint>

#include "pdf/object.h"
#include "ps/output.h"

namespace zorvan {

/// Appends so many elements of an array (its value or a reference), each resolved and followed by a blank.
/// What is missing or no number counts as 0.
void AppendNumbers(OutputPiece& piece, PdfObject array, std::uint32_t count);

/// The same of all its elements, as far as a device has room for them.
void AppendNumbers(OutputPiece& piece, PdfObject array);

/// Appends "/Matrix [", the six numbers of a matrix and "]\n"; those of the identity for what is no array.
void AppendMatrix(OutputPiece& piece, PdfObject matrix);

/// A number of such an array.
float NumberAt(PdfObject array, std::uint32_t index);

}  // namespace zorvan
