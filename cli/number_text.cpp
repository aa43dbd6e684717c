// Rounds to thousandths: finer than any device, and short.
#include "cli/number_text.h"

#include <array>
#include <charconv>

namespace zorvan::cli {

std::string NumberText(double value) {
    // The longest finite double has 309 digits before the point.
    std::array<char, 320> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 3);
    std::string text(buffer.data(), error == std::errc() ? end : buffer.data());
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text == "-0" ? "0" : text;
}

}  // namespace zorvan::cli
