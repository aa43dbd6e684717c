// Operator keywords as numbers: the first four bytes at most, the first one most significant.
#pragma once

#include <cstdint>
#include <string_view>

namespace zorvan {

/// Packs a keyword. Bytes count as signed, as in `code * 256 + byte`. Keywords that agree in their first four
/// bytes are one operator, deliberately: "false" and "falsehood" are the same.
constexpr std::uint32_t OperatorCode(std::string_view word) {
    std::uint32_t code = 0;
    for (const char letter : word.substr(0, 4)) {
        code = code * 256 +
               static_cast<std::uint32_t>(static_cast<std::int32_t>(static_cast<signed char>(letter)));
    }
    return code;
}

static_assert(OperatorCode("false") == OperatorCode("fals"));
static_assert(OperatorCode("startxref") == 0x73746172);

}  // namespace zorvan
