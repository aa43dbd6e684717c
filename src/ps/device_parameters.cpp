// Writing values of the file for the device.
#include "ps/device_parameters.h"

#include <algorithm>
#include <string_view>

#include "api/current_job.h"
#include "pdf/byte_scan.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"

namespace zorvan {
namespace {

void AppendParameter(OutputPiece& piece, PdfObject value) {
    switch (TypeOf(value)) {
        case ObjectType::kBoolean:
            piece.Append(BooleanOf(value) ? "true" : "false");
            break;
        case ObjectType::kName:
            piece.Append("/").Append(CurrentNames().NameText(value.payload, NameTextMode::kToken));
            break;
        case ObjectType::kInteger:
        case ObjectType::kReal:
            piece.AppendOperand(value);
            break;
        default:
            piece.Append("null");
            break;
    }
}

bool BelongsIntoHexadecimal(std::uint8_t byte) {
    constexpr std::string_view kAllowed("0123456789abcdefABCDEF \t\r\n\f\0", 28);
    return kAllowed.find(static_cast<char>(byte)) != std::string_view::npos;
}

/// "<~" in front, for one, would begin a string of another kind on the device.
void AppendHexadecimal(OutputPiece& piece, Bytes text) {
    while (!text.empty()) {
        const auto stray = std::ranges::find_if_not(text, BelongsIntoHexadecimal);
        const auto count = static_cast<std::size_t>(stray - text.begin());
        piece.Append(text.first(count));
        text = text.subspan(std::min(count + 1, text.size()));
    }
}

}  // namespace

void AppendFilterParameters(OutputPiece& piece, PdfObject dictionary) {
    if (!Is(dictionary, ObjectType::kDictionary)) {
        piece.Append("null");
        return;
    }
    piece.Append("<< ");
    for (std::uint32_t i = 0; i < DictSlotCount(dictionary); ++i) {
        const DictionarySlot slot = DictSlot(dictionary, i);
        if (slot.key != 0) {
            piece.Append("/").Append(CurrentNames().NameText(slot.key, NameTextMode::kToken)).Append(" ");
            AppendParameter(piece, Resolved(slot.value).Get());
            piece.Append(" ");
        }
    }
    piece.Append(">>");
}

void AppendStringObject(OutputPiece& piece, PdfObject string) {
    const Bytes text = StringBytes(string);
    if (StringKindOf(string) == StringKind::kHexadecimal) {
        piece.Append("<");
        AppendHexadecimal(piece, text);
        piece.Append(">");
    } else {
        piece.Append("(").Append(text).Append(")");
    }
}

std::string OnOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char letter) { return letter == '\r' || letter == '\n'; }, ' ');
    return text;
}

}  // namespace zorvan
