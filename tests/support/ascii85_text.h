// Reading ASCII85 text back, independently of the library's codec.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zorvan::test {

/// The bytes that the digits up to "~>" stand for; white space between them counts for nothing.
inline std::string FromAscii85(std::string_view text) {
    std::string bytes;
    std::uint64_t value = 0;
    unsigned count = 0;
    const auto take = [&](unsigned digit) { value = value * 85 + digit, ++count; };
    const auto give = [&](unsigned wanted) {
        for (unsigned i = 0; i < wanted; ++i) {
            bytes += static_cast<char>(value >> (24U - 8U * i));
        }
        value = count = 0;
    };
    for (const char letter : text.substr(0, text.find("~>"))) {
        if (letter == 'z' && count == 0) {
            bytes.append(4, '\0');
        } else if (letter >= '!' && letter <= 'u') {
            take(static_cast<unsigned>(letter - '!'));
        }
        if (count == 5) {
            give(4);
        }
    }
    const unsigned left = count == 0 ? 0 : count - 1;
    while (left > 0 && count < 5) {
        take(84);
    }
    give(left);
    return bytes;
}

/// The text without its line feeds.
inline std::string Unfolded(std::string_view text) {
    std::string unfolded;
    for (const char letter : text) {
        unfolded += letter == '\n' ? "" : std::string(1, letter);
    }
    return unfolded;
}

}  // namespace zorvan::test
