// The texts, and their forms.
#include "injection/hostile_texts.h"

#include <array>

namespace zorvan::test {
namespace {

using namespace std::string_literals;

std::array<char, 2> DigitsOf(char byte) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {kDigits[value >> 4U], kDigits[value & 15U]};
}

std::string AllFrom(unsigned first, unsigned last) {
    std::string bytes;
    for (unsigned byte = first; byte <= last; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

template <class Form>
std::vector<std::string> InForm(const Form& form) {
    std::vector<std::string> tokens;
    for (const std::string& text : HostileTexts()) {
        tokens.push_back(form(text));
    }
    return tokens;
}

}  // namespace

const std::vector<std::string>& HostileTexts() {
    static const std::vector<std::string> texts{
        // white space and comments
        "A ZRUN ", "A\nZRUN\n", "A\rZRUN\r", "A\r\nZRUN\r\n", "A\fZRUN\f", "A\tZRUN\t", "A\0ZRUN "s,
        "A% ZRUN", "%\nZRUN\n", "A\n%%EOF\nZRUN\n", "\n%%EndData\nZRUN\n", "A\n%%EndResource\nZRUN\n",
        "A%%EndResource ZRUN ", "A\n%%BeginResource: font x\nZRUN ", "A\n%%Page: 666 666\nZRUN\n",
        "A\r%%Page: 666 666\rZRUN\r", "A\n%%EndObject\nrestore ZRUN\n",
        // strings
        ") ZRUN (", "A) ZRUN", ")", "(", "A( ZRUN", "\\", "A\\", "A\\) ZRUN (", "\\\\\\", "A\\\n) ZRUN (",
        "\\10", "\\101) ZRUN (", "~> ZRUN", "~", "<~ ZRUN", "A> ZRUN <41", "A<41> ZRUN", "A>> ZRUN <<",
        // arrays, procedures, names
        "A] ZRUN [", "A[ZRUN]", "A} ZRUN {", "A{ZRUN}", "A/ZRUN", "/ZRUN", "", "quit", "def", "end", "12",
        "-1.5", "16#FF", "1e5", "null", ".notdef",
        // binary tokens: the number 65, a string of one byte, a name of the device, and a word behind each
        "A\x88\x41ZRUN ", "A\x8E\x01xZRUN ", "A\x91\x50ZRUN ", "A\x92\x3EZRUN ", "\x84\x41\x41\x41\x41ZRUN ",
        AllFrom(1, 0x7F).substr(0, 126), AllFrom(0x80, 0xFF).substr(0, 126),
        // what ends a job on a channel, and the longest name
        "\x04ZRUN\n", std::string(126, 'x'), std::string(125, 'x') + "\\", std::string(125, 'x') + ")"};
    return texts;
}

std::string AsName(std::string_view text) {
    std::string token = "/";
    for (const char byte : text) {
        const auto digits = DigitsOf(byte);
        token.append("#").append(digits.data(), digits.size());
    }
    return token;
}

std::string AsLiteral(std::string_view text) {
    std::string token = "(";
    for (const char byte : text) {
        token += std::string_view("()\\").find(byte) == std::string_view::npos ? "" : "\\";
        token += byte;
    }
    return token + ")";
}

std::string AsDigits(std::string_view text) {
    std::string token = "<";
    for (const char byte : text) {
        const auto digits = DigitsOf(byte);
        token.append(digits.data(), digits.size());
    }
    return token + ">";
}

std::vector<std::string> HostileNames() {
    return InForm(AsName);
}

std::vector<std::string> HostileStrings() {
    std::vector<std::string> tokens = InForm(AsLiteral);
    const std::vector<std::string> digits = InForm(AsDigits);
    tokens.insert(tokens.end(), digits.begin(), digits.end());
    return tokens;
}

std::vector<std::string> HostileContentStrings() {
    std::vector<std::string> tokens = HostileStrings();
    for (const std::string token :
         {"<~>", "(~> ZRUN)", "<~ ZRUN", "<41) ZRUN (42>", "<(ZRUN)>", "<\n%%EOF\n41>", "<41% ZRUN\n42>",
          "(A\\) ZRUN \\()", "(A(B)\\\\)", "(\\\n\\\r\\8)", "(\\1)", "(\x88\x41ZRUN )"}) {
        tokens.push_back(token.starts_with('<') && !token.ends_with('>') ? token + ">" : token);
    }
    return tokens;
}

std::string Shown(std::string_view bytes) {
    std::string shown;
    for (const char byte : bytes) {
        const auto digits = DigitsOf(byte);
        shown += byte >= 0x20 && byte < 0x7F ? std::string(1, byte)
                                             : "\\x" + std::string(digits.data(), digits.size());
    }
    return shown;
}

}  // namespace zorvan::test
