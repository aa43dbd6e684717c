// Writing calibrated and Lab spaces. Black points have no use on a device and are not written.
#include "content/cie_spaces.h"

#include "api/error_record.h"
#include "content/color_state.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"

namespace zorvan {
namespace {

/// So many numbers with blanks between them.
void AppendSpaced(OutputPiece& text, PdfObject array, std::uint32_t count) {
    const Resolved numbers(array);
    for (std::uint32_t i = 0; i < count; ++i) {
        text.Append(i == 0 ? "" : " ").AppendOperand(Resolved(ArrayGet(numbers.Get(), i)).Get());
    }
}

bool IsThere(PdfObject value) {
    return !IsNull(Resolved(value).Get());
}

/// From a component of Lab to the share of a white point's component: CIE 1976, inverse.
void AppendLabStage(OutputPiece& text, PdfObject white) {
    text.Append("{dup 6 29 div ge {dup dup mul mul}\n{4 29 div sub 108 841 div mul} ifelse ")
        .AppendOperand(white)
        .Append(" mul} bind");
}

}  // namespace

CieSpace::CieSpace(ResourceKey key, std::uint32_t family, PdfObject array)
    : ColorSpace(key, family), dictionary_(CloneObject(Resolved(ArrayGet(array, 1)).Get())) {}

void CieSpace::AppendWhitePoint(OutputPiece& text) const {
    AppendSpaced(text.Append("/WhitePoint ["), Entry(names::kWhitePoint), 3);
    text.Append("]\n");
}

CalGraySpace::CalGraySpace(ResourceKey key, PdfObject array) : CieSpace(key, family::kCalGray, array) {}

Status CalGraySpace::AppendDefinition(OutputPiece& text) {
    const Resolved white(Entry(names::kWhitePoint));
    AppendSpaced(text.Append("[/CIEBasedA <<\n/MatrixA ["), white.Get(), 3);
    text.Append("]\n/RangeLMN [");
    for (std::uint32_t i = 0; i < 3; ++i) {
        text.Append(i == 0 ? "0 " : " 0 ").AppendOperand(Resolved(ArrayGet(white.Get(), i)).Get());
    }
    text.Append("]\n");
    AppendWhitePoint(text);
    const Resolved gamma(Entry(names::kGamma));
    if (!IsNull(gamma.Get())) {
        text.Append("/DecodeA {").AppendOperand(gamma.Get()).Append(" exp}bind\n");
    }
    text.Append(">>]");
    return Status::kOk;
}

CalRgbSpace::CalRgbSpace(ResourceKey key, PdfObject array) : CieSpace(key, family::kCalRgb, array) {}

Status CalRgbSpace::AppendDefinition(OutputPiece& text) {
    text.Append("[/CIEBasedABC <<\n");
    if (!Is(Resolved(Entry(names::kWhitePoint)).Get(), ObjectType::kArray)) {
        RecordError(Status::kInvalidDataType, Reference());
    }
    AppendWhitePoint(text);
    const Resolved gamma(Entry(names::kGamma));
    if (!IsNull(gamma.Get())) {
        text.Append("/DecodeLMN  [");
        for (std::uint32_t i = 0; i < 3; ++i) {
            text.Append("{").AppendOperand(Resolved(ArrayGet(gamma.Get(), i)).Get()).Append(" exp}bind ");
        }
        text.Append("]\n");
    }
    if (IsThere(Entry(names::kMatrix))) {
        AppendSpaced(text.Append("/MatrixLMN  ["), Entry(names::kMatrix), 9);
        text.Append("]\n");
    }
    text.Append(">>]");
    return Status::kOk;
}

LabSpace::LabSpace(ResourceKey key, PdfObject array) : CieSpace(key, family::kLab, array) {}

std::array<PdfObject, 4> LabSpace::LabRange() const {
    const Resolved range(Entry(names::kRange));
    if (!Is(range.Get(), ObjectType::kArray)) {
        return CieSpace::LabRange();
    }
    std::array<PdfObject, 4> numbers;
    for (std::uint32_t i = 0; i < numbers.size(); ++i) {
        const Resolved number(ArrayGet(range.Get(), i));
        numbers[i] = IsNumber(number.Get()) ? number.Get() : MakeInteger(0);
    }
    return numbers;
}

Status LabSpace::AppendDefinition(OutputPiece& text) {
    text.Append("[/CIEBasedABC <<\n/RangeABC [0 100 ");
    for (const PdfObject number : LabRange()) {
        text.AppendOperand(number).Append(" ");
    }
    text.Append("]\n/DecodeABC [{16 add 116 div} bind {500 div} bind {200 div} bind]\n")
        .Append("/MatrixABC [1 1 1 1 0 0 0 0 -1]\n/DecodeLMN [\n");
    const Resolved white(Entry(names::kWhitePoint));
    for (std::uint32_t i = 0; i < 3; ++i) {
        AppendLabStage(text, Resolved(ArrayGet(white.Get(), i)).Get());
        text.Append(i < 2 ? "\n" : "]\n");
    }
    AppendWhitePoint(text);
    text.Append(">>]");
    return Status::kOk;
}

}  // namespace zorvan
