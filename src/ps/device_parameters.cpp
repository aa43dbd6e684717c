// Writing values of the file for the device.
#include "ps/device_parameters.h"

#include <algorithm>
#include <string_view>

#include "api/current_job.h"
#include "pdf/byte_buffer.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"

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

/// "<~" in front, for one, would begin a string of another kind on the device.
void AppendHexadecimal(OutputPiece& piece, Bytes text) {
    while (!text.empty()) {
        const auto stray = std::ranges::find_if_not(text, BelongsIntoHexadecimal);
        const auto count = static_cast<std::size_t>(stray - text.begin());
        piece.Append(text.first(count));
        text = text.subspan(std::min(count + 1, text.size()));
    }
}

/// True for what is, between parentheses, one string: each inner parenthesis has its partner, and no
/// backslash takes the closing one away.
bool IsCompleteString(std::string_view text) {
    int depth = 0;
    bool escaped = false;
    for (const char letter : text) {
        if (!escaped) {
            depth += letter == '(' ? 1 : letter == ')' ? -1 : 0;
        }
        escaped = !escaped && letter == '\\';
        if (depth < 0) {
            return false;
        }
    }
    return depth == 0 && !escaped;
}

}  // namespace

bool BelongsIntoHexadecimal(std::uint8_t byte) {
    constexpr std::string_view kAllowed("0123456789abcdefABCDEF \t\r\n\f\0", 28);
    return kAllowed.find(static_cast<char>(byte)) != std::string_view::npos;
}

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

std::string TextOfString(PdfObject string) {
    ByteBuffer decoded;
    Bytes text = StringBytes(string);
    if (StringKindOf(string) == StringKind::kHexadecimal) {
        DecodeHexadecimalString(text, decoded);
        text = decoded.Bytes();
    }
    return {text.begin(), text.end()};
}

void AppendStringText(OutputPiece& piece, std::string_view text) {
    piece.Append("(");
    if (IsCompleteString(text)) {
        piece.Append(text).Append(")");
        return;
    }
    for (const char letter : text) {
        const bool special = letter == '\\' || letter == '(' || letter == ')';
        piece.Append(special ? "\\" : "").Append(std::string_view(&letter, 1));
    }
    piece.Append(")");
}

OutputPiece& AppendKey(OutputPiece& piece, std::uint32_t key) {
    return piece.Append("/").Append(CurrentNames().PlainText(key)).Append(" ");
}

std::string OnOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char letter) { return letter == '\r' || letter == '\n'; }, ' ');
    return text;
}

}  // namespace zorvan
