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

/// True for a parameter that no PDF filter has: at its end a filter would close what it reads from, and with
/// it what keeps the rest of the data from running (PLRM 3.13.3).
bool ClosesSource(std::uint32_t key) {
    return CurrentNames().PlainText(key) == "CloseSource";
}

/// The digits. Behind "<", a "~" would begin a string of another kind on the device: a blank stands there
/// instead.
void AppendHexadecimal(OutputPiece& piece, Bytes text) {
    if (!text.empty() && text.front() == '~') {
        piece.Append(" ");
    }
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

/// True for a "%" by which a string could be cut, so that what is behind it would run: at the beginning of a
/// line programs look for comments, and the prolog ends a CMap at this one, wherever it stands.
bool LooksLikeComment(std::string_view text, std::size_t percent) {
    const bool begins = percent > 0 && (text[percent - 1] == '\n' || text[percent - 1] == '\r');
    const bool second = percent > 0 && text[percent - 1] == '%';
    return begins || (second && text.substr(percent).starts_with("%EndResource"));
}

/// Appends what stands between parentheses, with a backslash, which the device drops, in front of what looks
/// like a comment.
void AppendBetweenParentheses(OutputPiece& piece, std::string_view text) {
    std::size_t written = 0;
    for (std::size_t percent = text.find('%'); percent != std::string_view::npos;
         percent = text.find('%', percent + 1)) {
        if (LooksLikeComment(text, percent)) {
            piece.Append(text.substr(written, percent - written)).Append("\\");
            written = percent;
        }
    }
    piece.Append(text.substr(written));
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
        if (slot.key != 0 && !ClosesSource(slot.key)) {
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
        piece.Append("(");
        AppendBetweenParentheses(piece, {reinterpret_cast<const char*>(text.data()), text.size()});
        piece.Append(")");
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

std::string AsStringText(std::string_view text) {
    return IsCompleteString(text) ? std::string(text) : EscapedText(text);
}

void AppendStringText(OutputPiece& piece, std::string_view text) {
    piece.Append("(");
    AppendBetweenParentheses(piece, AsStringText(text));
    piece.Append(")");
}

OutputPiece& AppendKey(OutputPiece& piece, std::uint32_t key) {
    return piece.Append("/").Append(CurrentNames().PlainText(key)).Append(" ");
}

std::string OnOneLine(std::string text) {
    // A form feed ends a comment, too (PLRM 3.2.2).
    std::ranges::replace_if(
        text, [](char letter) { return letter == '\r' || letter == '\n' || letter == '\f'; }, ' ');
    return text;
}

}  // namespace zorvan
