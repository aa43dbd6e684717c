// Writing arrays of numbers.
#include "ps/number_array.h"

#include "pdf/object_parser.h"

namespace zorvan {

void AppendNumbers(OutputPiece& piece, PdfObject array, std::uint32_t count) {
    const Resolved elements(array);
    for (std::uint32_t i = 0; i < count; ++i) {
        piece.AppendOperand(Resolved(ArrayGet(elements.Get(), i)).Get()).Append(" ");
    }
}

void AppendNumbers(OutputPiece& piece, PdfObject array) {
    const Resolved elements(array);
    AppendNumbers(piece, elements.Get(), ArrayCount(elements.Get()));
}

float NumberAt(PdfObject array, std::uint32_t index) {
    return NumberOf(Resolved(ArrayGet(array, index)).Get());
}

}  // namespace zorvan
