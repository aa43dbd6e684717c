// The emitters of text. Strings go out in the very form in which they stand in the content: the procset keeps
// the text state, and the fonts' encodings reach the device with the fonts.
#include "api/current_job.h"
#include "api/error_record.h"
#include "content/interpreter.h"
#include "ps/device_parameters.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

void AppendTextElement(OutputPiece& piece, PdfObject element) {
    switch (TypeOf(element)) {
        case ObjectType::kInteger:
        case ObjectType::kReal:
            piece.AppendOperand(element).Append(" ");
            break;
        case ObjectType::kString:
            AppendStringObject(piece, element);
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
        if (CurrentRegistry().IsBeingWritten(ResourceCategory::kFont, font->Key())) {
            RecordError(Status::kIllegalFont, MakeReference(font->Key().number, font->Key().generation));
        }
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
    AppendStringObject(line, string.Get());
    return line.Append(row.text).Write();
}

Status ContentInterpreter::ShowSpacedString(const OperatorRow& row) {
    const OwnedObject string = operands_.Pop();
    OutputPiece& line = Line();
    AppendOperands(operands_.Top(2));
    operands_.Drop(2);
    AppendStringObject(line, string.Get());
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
