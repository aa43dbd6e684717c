// The emitters of text. Strings go out in the very form in which they stand in the content: the procset keeps
// the text state, and the fonts' encodings reach the device with the fonts.
#include <algorithm>
#include <string_view>

#include "content/interpreter.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

bool BelongsIntoHexadecimal(std::uint8_t byte) {
    constexpr std::string_view kAllowed("0123456789abcdefABCDEF \t\r\n\f\0", 28);
    return kAllowed.find(static_cast<char>(byte)) != std::string_view::npos;
}

std::string_view AsText(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// What is neither digit nor white space means nothing in a hexadecimal string, but would end the job on the
/// device ("<~" begins a string of another kind there). It is left out.
void AppendHexadecimal(OutputPiece& piece, Bytes text) {
    while (!text.empty()) {
        const auto stray = std::ranges::find_if_not(text, BelongsIntoHexadecimal);
        const auto count = static_cast<std::size_t>(stray - text.begin());
        piece.Append(AsText(text.first(count)));
        text = text.subspan(std::min(count + 1, text.size()));
    }
}

/// A string between its delimiters; of anything else, empty parentheses.
void AppendString(OutputPiece& piece, PdfObject string) {
    const Bytes text = StringBytes(string);
    if (StringKindOf(string) == StringKind::kHexadecimal) {
        piece.Append("<");
        AppendHexadecimal(piece, text);
        piece.Append(">");
    } else {
        piece.Append("(").Append(AsText(text)).Append(")");
    }
}

void AppendTextElement(OutputPiece& piece, PdfObject element) {
    switch (TypeOf(element)) {
        case ObjectType::kInteger:
        case ObjectType::kReal:
            piece.AppendOperand(element).Append(" ");
            break;
        case ObjectType::kString:
            AppendString(piece, element);
            break;
        default:
            break;
    }
}

}  // namespace

Status ContentInterpreter::SetRenderMode(const OperatorRow& row) {
    const OwnedObject mode = operands_.Pop();
    return Line().AppendInteger(IntegerOf(mode.Get())).Append(row.text).Write();
}

Status ContentInterpreter::SelectFont(const OperatorRow& row) {
    const OwnedObject size = operands_.Pop();
    const OwnedObject name = operands_.Pop();
    OutputPiece& line = Line();
    const Resource* font = FindAnyResource(ResourceCategory::kFont, NameOf(name.Get()));
    if (font != nullptr) {
        font->AppendUse(line);
    }
    return line.Append(" ").AppendOperand(size.Get()).Append(row.text).Write();
}

Status ContentInterpreter::ShowString(const OperatorRow& row) {
    if (!Is(operands_.Top(1)[0], ObjectType::kString)) {
        return Status::kInvalidDataType;
    }
    return WriteString(row);
}

Status ContentInterpreter::WriteString(const OperatorRow& row) {
    const OwnedObject string = operands_.Pop();
    OutputPiece& line = Line();
    AppendString(line, string.Get());
    return line.Append(row.text).Write();
}

Status ContentInterpreter::ShowSpacedString(const OperatorRow& row) {
    const OwnedObject string = operands_.Pop();
    OutputPiece& line = Line();
    AppendOperands(operands_.Top(2));
    operands_.Drop(2);
    AppendString(line, string.Get());
    return line.Append(row.text).Write();
}

Status ContentInterpreter::ShowArray(const OperatorRow& row) {
    if (!Is(operands_.Top(1)[0], ObjectType::kArray)) {
        return Status::kInvalidDataType;
    }
    const OwnedObject array = operands_.Pop();
    OutputPiece& line = Line();
    line.Append("[");
    for (std::uint32_t i = 0; i < ArrayCount(array.Get()); ++i) {
        AppendTextElement(line, ArrayGet(array.Get(), i));
    }
    return line.Append(row.text).Write();
}

}  // namespace zorvan
