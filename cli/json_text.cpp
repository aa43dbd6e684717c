// Quotes, escapes and mends text for JSON.
#include "cli/json_text.h"

#include <cstddef>

namespace zorvan::cli {
namespace {

// The least code point that needs so many bytes; shorter ones written longer are not UTF-8 (RFC 3629).
constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};

std::size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC0 || lead > 0xF7) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// The length of the UTF-8 sequence at the front of `text`, 0 when it is none.
std::size_t Utf8Length(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = SequenceLength(lead);
    if (length < 2 || length > text.size()) {
        return length > text.size() ? 0 : length;
    }
    char32_t point = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80) {
            return 0;
        }
        point = (point << 6U) | (byte & 0x3FU);
    }
    const bool isSurrogate = point >= 0xD800 && point <= 0xDFFF;
    return point < kLeast[length] || point > 0x10FFFF || isSurrogate ? 0 : length;
}

std::string EscapedAscii(char character) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    if (character == '"' || character == '\\') {
        return {'\\', character};
    }
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20) {
        return {'\\', 'u', '0', '0', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
    return {character};
}

}  // namespace

std::string JsonString(std::string_view text) {
    std::string json = "\"";
    while (!text.empty()) {
        const std::size_t length = Utf8Length(text);
        if (length == 0) {
            json += "\\ufffd";
        } else if (length == 1) {
            json += EscapedAscii(text.front());
        } else {
            json += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return json + '"';
}

}  // namespace zorvan::cli
