// The emitters that need no resource: fixed texts, numbers, dash, intent, and what is passed over.
#include <vector>

#include "api/current_job.h"
#include "api/error_record.h"
#include "content/inline_image.h"
#include "content/interpreter.h"
#include "pdf/name_table.h"

namespace zorvan {
namespace {

/// Pairs are taken from the last to the first: an odd entry is the one behind the mark, and of a key that is
/// met twice the first value stays.
PdfObject MakeImageDictionary(std::span<const PdfObject> keysAndValues) {
    std::vector<PdfObject> pairs;
    pairs.reserve(keysAndValues.size());
    for (std::size_t i = keysAndValues.size(); i >= 2; i -= 2) {
        pairs.push_back(keysAndValues[i - 2]);
        pairs.push_back(keysAndValues[i - 1]);
    }
    if (keysAndValues.size() % 2 != 0) {
        FreeObject(keysAndValues.front());
    }
    return MakeDictionary(pairs);
}

}  // namespace

void ContentInterpreter::AppendOperands(std::span<const PdfObject> operands) {
    for (const PdfObject operand : operands) {
        line_.AppendOperand(operand).Append(" ");
    }
}

Status ContentInterpreter::WriteText(const OperatorRow& row) {
    return WriteOutput(row.text);
}

Status ContentInterpreter::WriteNumbers(const OperatorRow& row) {
    OutputPiece& line = Line();
    AppendOperands(operands_.Top(row.operands));
    operands_.Drop(row.operands);
    return line.Append(row.text).Write();
}

Status ContentInterpreter::TakeOperands(const OperatorRow& row) {
    operands_.Drop(row.operands);
    return Status::kOk;
}

Status ContentInterpreter::SaveState(const OperatorRow& row) {
    colorStates_.Push();
    return WriteText(row);
}

Status ContentInterpreter::RestoreState(const OperatorRow& row) {
    colorStates_.Pop();
    return WriteText(row);
}

Status ContentInterpreter::ConcatMatrix(const OperatorRow& row) {
    // Read from the bottom of the stack but dropped from its top, unlike everywhere else. Kept: operands that
    // an unknown operator left behind come out here, and hosts compare outputs byte by byte.
    OutputPiece& line = Line();
    for (std::uint32_t i = 0; i < row.operands; ++i) {
        line.AppendOperand(operands_.At(i)).Append(" ");
    }
    operands_.Drop(row.operands);
    return line.Append(row.text).Write();
}

Status ContentInterpreter::SetDash(const OperatorRow& row) {
    const OwnedObject phase = operands_.Pop();
    const OwnedObject array = operands_.Pop();
    OutputPiece& line = Line();
    line.Append("[");
    for (std::uint32_t i = 0; i < ArrayCount(array.Get()); ++i) {
        line.AppendOperand(ArrayGet(array.Get(), i)).Append(" ");
    }
    return line.Append("] ").AppendOperand(phase.Get()).Append(" ").Append(row.text).Write();
}

Status ContentInterpreter::SetIntent(const OperatorRow& row) {
    const OwnedObject intent = operands_.Pop();
    OutputPiece& line = Line();
    line.Append("/").Append(CurrentNames().NameText(NameOf(intent.Get()), NameTextMode::kToken));
    return line.Append(row.text).Write();
}

Status ContentInterpreter::BeginInlineImage(const OperatorRow& row) {
    operands_.PushMark();
    return WriteText(row);
}

Status ContentInterpreter::WriteInlineImage(const OperatorRow& /*row*/) {
    if (!operands_.Close(MakeImageDictionary)) {
        operands_.Clear();
        rest_ = rest_.subspan(imageEnds_.Find(rest_, 0));
        return Status::kOk;
    }
    const OwnedObject dictionary = operands_.Pop();
    InlineImage image(dictionary.Get(), scope_);
    rest_ = rest_.subspan(image.TakeData(rest_, imageEnds_));
    const Status status = image.Write();
    if (status != Status::kDecodeError) {
        return status;
    }
    RecordError(status, stream_);  // what could be decoded is written
    return Status::kOk;
}

}  // namespace zorvan
