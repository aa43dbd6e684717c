// Writing arrays of numbers.
#include "ps/number_array.h"

#include <algorithm>

#include "pdf/object_parser.h"
#include "platform/limits.h"

namespace zorvan {

void AppendNumbers(OutputPiece& piece, PdfObject array, std::uint32_t count) {
    const Resolved elements(array);
    for (std::uint32_t i = 0; i < count; ++i) {
        piece.AppendOperand(Resolved(ArrayGet(elements.Get(), i)).Get()).Append(" ");
    }
}

void AppendNumbers(OutputPiece& piece, PdfObject array) {
    const Resolved elements(array);
    AppendNumbers(piece, elements.Get(), std::min(ArrayCount(elements.Get()), limits::kNumbers));
}

void AppendMatrix(OutputPiece& piece, PdfObject matrix) {
    const Resolved numbers(matrix);
    if (!Is(numbers.Get(), ObjectType::kArray)) {
        piece.Append("/Matrix [1 0 0 1 0 0]\n");
        return;
    }
    AppendNumbers(piece.Append("/Matrix ["), numbers.Get(), 6);
    piece.Append("]\n");
}

float NumberAt(PdfObject array, std::uint32_t index) {
    return NumberOf(Resolved(ArrayGet(array, index)).Get());
}

}  // namespace zorvan
