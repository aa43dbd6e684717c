// Escapes what a terminal would act upon.
#include "cli/printable_text.h"

namespace zorvan::cli {
namespace {

std::string Escape(unsigned char byte) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    switch (byte) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return {'\\', 'x', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
}

bool IsControl(unsigned char byte) {
    return byte < 0x20 || byte == 0x7F;
}

}  // namespace

std::string OneLine(std::string_view text) {
    std::string line;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        line += IsControl(byte) ? Escape(byte) : std::string(1, character);
    }
    return line;
}

std::string QuotedBytes(std::string_view bytes) {
    std::string text = "\"";
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            text += '\\';
        }
        text += IsControl(byte) || byte >= 0x80 ? Escape(byte) : std::string(1, character);
    }
    return text + '"';
}

}  // namespace zorvan::cli
